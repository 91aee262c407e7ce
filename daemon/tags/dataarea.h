// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_DATAAREA_H
#define CONNUI_DAEMON_TAGS_DATAAREA_H

#include <set>

/** The bytes of a Type 2 tag that blocks of data stand in, without those that are reserved for other things.
 */
class DataArea
{
public:
    /** The addresses from \a begin on, up to \a end, which is the first behind. */
    DataArea(int begin, int end);

    /** Takes \a length bytes from \a address on out of it, as far as they are in it. */
    void reserve(int address, int length);

    /** The first address at or behind \a address that holds data; end() when there is none. */
    int from(int address) const;

    /** The address that lies \a count bytes of data behind \a address; end() when there are not so many. */
    int behind(int address, int count) const;

    /** The number of bytes of data from \a address on. */
    int room(int address) const;

    int begin() const;
    int end() const;

private:
    int first;
    int last;
    std::set<int> reserved;
};

#endif
