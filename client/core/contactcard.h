// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_CONTACTCARD_H
#define CONNUI_CLIENT_CONTACTCARD_H

#include <memory>

class QByteArray;
class QFileInfo;
class QString;
class QTemporaryFile;

/**
 * Writes the contact card \a card into a new file, which only the user can read and which goes with the
 * returned object. Where it cannot be written a warning says so.
 */
std::unique_ptr<QTemporaryFile> cardFile(const QByteArray &card);

/** Returns the name in the contact card \a file as the card has it; empty when it has none. */
QString nameOnCard(const QFileInfo &file);

#endif
