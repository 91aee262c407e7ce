// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_NDEFRECORDTYPE_H
#define CONNUI_QML_NDEFRECORDTYPE_H

#include <QtQml/qqml.h>
#include <QtQml/qqmlregistration.h>

#include <NdefRecord>

/** Makes the library's record known to QML as the value type ndefRecord. */
struct NdefRecordType
{
    Q_GADGET
    QML_FOREIGN(ConnUi::NdefRecord)
    QML_VALUE_TYPE(ndefRecord)
};

#endif
