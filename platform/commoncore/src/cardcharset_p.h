// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CARDCHARSET_P_H
#define CONNUI_CARDCHARSET_P_H

#include <QByteArray>

namespace ConnUi::CardCharset {

// Whether cards are written in a charset and it can be decoded. Others that the system has converters for
// stay out: some of these never return from wrong input.
bool isKnown(const QByteArray &charset);

// Returns a text in UTF-8: as its charset says, where that is known, else as it looks, which is UTF-8 or
// Windows-1252.
QByteArray toUtf8(const QByteArray &text, const QByteArray &charset = {});

} // namespace ConnUi::CardCharset

#endif
