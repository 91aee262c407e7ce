// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TAGS_CARDCOMMAND_H
#define CONNUI_DAEMON_TAGS_CARDCOMMAND_H

#include <QByteArray>

/**
 * The commands that are sent, as the bytes of an APDU.
 *
 * Those for storage cards are answered by the reader (PC/SC part 3), the others by the card (ISO 7816-4).
 */
namespace CardCommand {

/** Storage card: the card's identifier. */
QByteArray uid();

/** Storage card: 16 bytes from \a page on, which is four bytes long. */
QByteArray readPages(int page);

/** Storage card: writes the four bytes of \a data to \a page. */
QByteArray writePage(int page, const QByteArray &data);

/** Selects the application \a name. */
QByteArray selectApplication(const QByteArray &name);

/** Selects the elementary file \a identifier of the selected application. */
QByteArray selectFile(quint16 identifier);

/** Reads \a length bytes, at most 255, of the selected file from \a offset on, which is below 0x8000. */
QByteArray readBinary(int offset, int length);

/** Writes \a data, at most 255 bytes, to the selected file from \a offset on, which is below 0x8000. */
QByteArray updateBinary(int offset, const QByteArray &data);

} // namespace CardCommand

#endif
