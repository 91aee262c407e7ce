// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_MESSAGETEXT_H
#define CONNUI_CLIENT_MESSAGETEXT_H

#include <QByteArray>
#include <QString>

/** Describes the NDEF message \a data in one line; empty when there is nothing in it. */
QString messageText(const QByteArray &data);

#endif
