// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_INTROSPECTION_H
#define CONNUI_INTROSPECTION_H

#include <QByteArray>
#include <QString>
#include <QStringList>

/** D-Bus introspection data, made comparable. */
namespace Introspection {

/**
 * The members of \a interface, in the order of the introspection \a data: lines such as
 * "method Name(in s carrier, out o path)". The arguments of signals go "out".
 */
QStringList members(const QByteArray &data, const QString &interface);

/** The members of \a interface in its file of the folder interfaces; none without such a file. */
QStringList publishedMembers(const QString &interface);

/** The members of \a interface that an object of the NFC daemon says it has. */
QStringList daemonMembers(const QString &path, const QString &interface);

} // namespace Introspection

#endif
