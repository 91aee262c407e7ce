// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tags/dataarea.h"

#include <algorithm>
#include <iterator>

DataArea::DataArea(int begin, int end) : first(begin), last(end) {}

void DataArea::reserve(int address, int length)
{
    for (int i = std::max(address, first); i < std::min(address + length, last); ++i)
        reserved.insert(i);
}

int DataArea::from(int address) const
{
    while (address < last && reserved.count(address))
        ++address;
    return address;
}

int DataArea::behind(int address, int count) const
{
    address = from(address);
    for (; count > 0 && address < last; --count)
        address = from(address + 1);
    return address;
}

int DataArea::room(int address) const
{
    const auto taken = std::distance(reserved.lower_bound(address), reserved.end());
    return std::max(0, last - address - int(taken));
}

int DataArea::begin() const
{
    return from(first);
}

int DataArea::end() const
{
    return last;
}
