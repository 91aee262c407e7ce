// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/devicename.h"

#include <NfcForeignText>

QString deviceName(const QString &name)
{
    return ConnUi::foreignName(name, qtTrId("qtn_nfc_unnamed_device"));
}
