// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MSMALLFILE_P_H
#define MSMALLFILE_P_H

#include <QByteArray>
#include <QString>

/**
 * Reads a regular file of at most 1 MiB. Empty when there is none, when it is larger, or when it cannot be
 * read. Does not wait for the writer of a pipe.
 */
QByteArray readSmallFile(const QString &path);

#endif
