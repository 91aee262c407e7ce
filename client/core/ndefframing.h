// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_NDEFFRAMING_H
#define CONNUI_CLIENT_NDEFFRAMING_H

#include <QByteArray>

/**
 * Returns whether \a data is exactly one NDEF message (NFC Forum NDEF 1.0): the records end where the message
 * and the bytes do, and the chunks of a record follow one another.
 *
 * Qt's decoder accepts bytes behind a message's end, and much that is not a message.
 */
bool isOneNdefMessage(const QByteArray &data);

#endif
