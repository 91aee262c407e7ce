// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_VIEWER_CONTACTSFOLDER_H
#define CONNUI_VIEWER_CONTACTSFOLDER_H

#include <QByteArray>
#include <QString>

/** The folder of the user's contacts, $XDG_DATA_HOME/contacts, where each is a file of its own. */
namespace ContactsFolder {

/**
 * Saves the vCard \a card of the contact called \a name as a new contact, and never in the place of another
 * one. Returns the file's path; empty, with a warning, when it could not be written.
 */
QString save(const QByteArray &card, const QString &name);

} // namespace ContactsFolder

#endif
