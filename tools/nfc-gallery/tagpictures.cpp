// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tagpictures.h"

#include <QTemporaryFile>

#include <NfcApplicationSelectionDialog>
#include <NfcTagReadPermissionDialog>
#include <URINDEFRecord>

using ConnUi::NfcApplicationSelectionDialog;
using ConnUi::NfcTagReadPermissionDialog;

namespace {

using Make = std::function<MDialog *()>;

Make text(const QString &content)
{
    return [=] { return new NfcTagReadPermissionDialog(content); };
}

Make uri(const QByteArray &uri, const QString &description = QString())
{
    return [=] {
        const URINDEFRecord record('\0' + uri);
        return new NfcTagReadPermissionDialog(&record, description);
    };
}

MDialog *newContactCard()
{
    QTemporaryFile card;
    if (card.open())
        card.write("BEGIN:VCARD\r\nVERSION:3.0\r\nN:Virtanen;Anna;;;\r\nEND:VCARD\r\n");
    card.close();
    return new NfcTagReadPermissionDialog(QStringLiteral("text/x-vcard"), QFileInfo(card.fileName()));
}

Make choice(const QStringList &applications)
{
    return [=] { return new NfcTagReadPermissionDialog(applications, QString()); };
}

Make selection(const QStringList &applications)
{
    return [=] { return new NfcApplicationSelectionDialog(applications, 0); };
}

} // namespace

QList<Dialog> tagDialogs()
{
    const QString menu = QStringLiteral("Menu of the day");
    const QString opening = QStringLiteral("Welcome to the library.\nOpen from 9 to 18.");
    const QStringList several{QStringLiteral("viewer"), QStringLiteral("notes"), QStringLiteral("browser")};
    return {
        {QStringLiteral("tag-text"), text(opening)},
        {QStringLiteral("tag-text-long"),
         text(QStringLiteral("A tag may hold a whole story. ").repeated(60))},
        {QStringLiteral("tag-link"), uri("https://www.example.com/menu?table=12", menu)},
        {QStringLiteral("tag-link-long"), uri("https://www.example.com/" + QByteArray("a1b2").repeated(500))},
        {QStringLiteral("tag-number"), uri("tel:+358501234567")},
        {QStringLiteral("tag-message"), uri("sms:+358501234567?body=Parking%20zone%20A,%20two%20hours")},
        {QStringLiteral("tag-store"),
         [] { return new NfcTagReadPermissionDialog(QStringLiteral("ruvostore:link"), QString()); }},
        {QStringLiteral("tag-card"), newContactCard},
        {QStringLiteral("tag-application"), choice({QStringLiteral("viewer")})},
        {QStringLiteral("tag-applications"), choice(several)},
        {QStringLiteral("tag-nobodys"), choice({QStringLiteral("nobody")})},
        {QStringLiteral("tag-selection"), selection(several)},
        {QStringLiteral("tag-selection-empty"), selection({})},
    };
}

QList<Picture> tagPictures()
{
    return dialogPictures(tagDialogs());
}
