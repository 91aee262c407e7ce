// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_PEERNAME_H
#define CONNUI_CLIENT_PEERNAME_H

#include <functional>

#include <QVariant>

class QObject;

/**
 * Finds a name for the peer of a handover and passes it to \a found, from the event loop.
 *
 * \a info is the handover's data. The name is the one that the phone's Bluetooth already knows, or else the
 * peer's address, else "unnamed device": nothing is sent to the peer. \a found is not called when \a context
 * is gone by then.
 */
void findPeerName(const QVariant &info, QObject *context, const std::function<void(const QString &)> &found);

#endif
