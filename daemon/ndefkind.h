// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_NDEFKIND_H
#define CONNUI_DAEMON_NDEFKIND_H

#include <QByteArray>
#include <QString>

/**
 * Names what the first record of an NDEF message holds, as announcement files do: "uri:" and the URI for a
 * URI or smart poster, "text/plain" for a text record, the MIME type of MIME data, "urn:nfc:ext:" and the
 * type of an external record, "empty" for nothing, "unknown" otherwise.
 */
QString ndefKind(const QByteArray &message);

#endif
