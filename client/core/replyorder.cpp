// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/replyorder.h"

#include <algorithm>

quint64 ReplyOrder::takePlace(const QString &target)
{
    lines[target].append(Place{next, {}});
    return next++;
}

void ReplyOrder::reply(const QString &target, quint64 place, const Reply &reply)
{
    QList<Place> &line = lines[target];
    const auto found = std::find_if(line.begin(), line.end(),
                                    [place](const Place &candidate) { return candidate.number == place; });
    if (found == line.end())
        return;
    found->reply = reply;
    while (!line.isEmpty() && line.constFirst().reply)
        line.takeFirst().reply();
    if (line.isEmpty())
        lines.remove(target);
}
