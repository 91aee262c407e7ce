// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_TAGMESSAGES_H
#define CONNUI_SIM_TAGMESSAGES_H

#include <QByteArray>
#include <QString>

/** NDEF messages of one record, as a shop's tags hold them. */
namespace TagMessages {

/** Returns nothing for what cannot be in a message; \a error then gets the reason. */
QByteArray uri(const QString &uri, QString *error = nullptr);
QByteArray mime(const QString &type, const QByteArray &data, QString *error = nullptr);

QByteArray text(const QString &text);

/** The message of a tag that has been formatted and never written. */
QByteArray empty();

} // namespace TagMessages

#endif
