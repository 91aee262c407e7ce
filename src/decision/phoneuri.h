// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_PHONEURI_H
#define CONNUI_PHONEURI_H

#include <QString>

namespace ConnUi {

/** Returns whether \a uri ("tel:", RFC 3966, or "callto:") is a number that a call cannot turn into anything
 * else. */
bool isPlainNumber(const QString &uri);

/** Returns whether calling \a uri would switch something in the phone or the network: it holds a star or a
 * hash. */
bool isServiceCode(const QString &uri);

/** Returns how many receivers the message of \a uri ("sms:", RFC 5724) goes to. */
qsizetype receivers(const QString &uri);

/** Returns whether the question about the message of \a uri shows all of what is sent. */
bool isShownWhole(const QString &uri);

} // namespace ConnUi

#endif
