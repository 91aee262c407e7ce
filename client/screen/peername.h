// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_PEERNAME_H
#define CONNUI_PEERNAME_H

#include <functional>

#include <QVariant>

class QObject;

/**
 * Finds the Bluetooth name of the peer of a handover and tells it to \a found.
 *
 * \a info is the handover's data. Returns at once; the peer is asked from the event loop. \a found is not
 * called when the peer cannot be reached or has no name, nor when \a context is gone by then.
 */
void findPeerName(const QVariant &info, QObject *context, const std::function<void(const QString &)> &found);

#endif
