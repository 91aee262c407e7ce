// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_PEERADDRESS_H
#define CONNUI_CLIENT_PEERADDRESS_H

#include <QString>
#include <QVariant>

/** The Bluetooth address in handover data, the D-Bus structure (os); empty when \a info is anything else. */
QString peerAddress(const QVariant &info);

#endif
