// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfctagcontent.h"

#include <QSharedData>

#include "decision/nfctagrecord_p.h"
#include "ndefrecord.h"

namespace ConnUi {

class NfcTagContentPrivate : public QSharedData
{
public:
    bool isWellFormed = true;
    QList<NfcTagRecord> records;
};

NfcTagContent::NfcTagContent() : d(new NfcTagContentPrivate) {}

NfcTagContent::NfcTagContent(const QByteArray &message) : NfcTagContent()
{
    const QList<NdefRecord> all = NdefRecord::fromMessage(message);
    d->isWellFormed = message.isEmpty() || !all.isEmpty();
    for (const NdefRecord &record : all)
        if (record.typeNameFormat() != NdefRecord::Empty)
            d->records.append(NfcTagRecordPrivate::from(record));
}

NfcTagContent::NfcTagContent(const NfcTagContent &other) = default;

NfcTagContent &NfcTagContent::operator=(const NfcTagContent &other) = default;

NfcTagContent::~NfcTagContent() = default;

bool NfcTagContent::isWellFormed() const
{
    return d->isWellFormed;
}

QList<NfcTagRecord> NfcTagContent::records() const
{
    return d->records;
}

} // namespace ConnUi
