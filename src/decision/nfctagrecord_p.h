// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCTAGRECORD_P_H
#define CONNUI_NFCTAGRECORD_P_H

#include <QByteArray>
#include <QSharedData>
#include <QString>

#include "nfctagrecord.h"

namespace ConnUi {

class NdefRecord;

class NfcTagRecordPrivate : public QSharedData
{
public:
    NfcTagRecord::Kind kind = NfcTagRecord::Other;
    QString type;
    QByteArray payload;
    QString text;
    NfcLink link;
    bool isUnderstood = true;

    /** Returns \a record as a question treats it. */
    static NfcTagRecord from(const NdefRecord &record);

private:
    static NfcTagRecord fromPoster(const NdefRecord &poster);
};

} // namespace ConnUi

#endif
