// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcreplyorder.h"

#include <utility>

#include <QHash>
#include <QList>

namespace ConnUi {

class NfcReplyOrderPrivate
{
public:
    struct Place
    {
        quint64 number;
        NfcReplyOrder::Reply reply;
    };

    QHash<QString, QList<Place>> lines; // by target, the oldest first
    quint64 next = 0;
};

NfcReplyOrder::NfcReplyOrder() : d(std::make_unique<NfcReplyOrderPrivate>()) {}

NfcReplyOrder::~NfcReplyOrder() = default;

quint64 NfcReplyOrder::takePlace(const QString &target)
{
    d->lines[target].append(NfcReplyOrderPrivate::Place{d->next, {}});
    return d->next++;
}

void NfcReplyOrder::reply(const QString &target, quint64 place, const Reply &reply)
{
    const auto line = d->lines.find(target);
    if (line == d->lines.end())
        return;
    for (NfcReplyOrderPrivate::Place &candidate : *line)
        if (candidate.number == place)
            candidate.reply = reply;
    QList<Reply> due;
    while (!line->isEmpty() && line->constFirst().reply)
        due.append(line->takeFirst().reply);
    if (line->isEmpty())
        d->lines.remove(target);
    // A reply may take a place, or delete the order.
    for (const Reply &send : std::as_const(due))
        send();
}

} // namespace ConnUi
