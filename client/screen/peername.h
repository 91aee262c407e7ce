// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_PEERNAME_H
#define CONNUI_PEERNAME_H

#include <QVariant>

class MDialog;

/**
 * Puts the Bluetooth name of the peer of a handover above a dialog, as soon as it is known.
 *
 * \a info is the handover's data. Returns at once; the name is asked for while the dialog is shown, and a
 * peer that cannot be reached leaves the title as it is.
 */
void titleWithPeerName(MDialog *dialog, const QVariant &info);

#endif
