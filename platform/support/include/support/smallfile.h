// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SUPPORT_SMALLFILE_H
#define CONNUI_SUPPORT_SMALLFILE_H

#include <QByteArray>
#include <QString>

namespace Support {

/**
 * Reads a regular file of at most 1 MiB. Empty when there is none, when it is larger, or when it cannot be
 * read. Does not wait for the writer of a pipe.
 */
QByteArray readSmallFile(const QString &path);

} // namespace Support

#endif
