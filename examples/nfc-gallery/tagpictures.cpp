// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tagpictures.h"

#include <memory>

#include <QApplication>
#include <QTemporaryFile>
#include <QTranslator>

#include <MWindow>
#include <NfcApplicationSelectionDialog>
#include <NfcTagReadPermissionDialog>
#include <URINDEFRecord>

using ConnUi::NfcApplicationSelectionDialog;
using ConnUi::NfcTagReadPermissionDialog;

namespace {

using Make = std::function<MDialog *()>;

struct Kind
{
    QString name;
    Make make;
};

// The texts of a language, and its direction, while it lives.
class Language
{
public:
    explicit Language(const QString &language)
    {
        if (m_texts.load(QCoreApplication::applicationDirPath() +
                         QStringLiteral("/../share/connui-nfc/translations/connui-nfc_") + language))
            QCoreApplication::installTranslator(&m_texts);
        QApplication::setLayoutDirection(QLocale(language).textDirection());
    }
    ~Language() { QApplication::setLayoutDirection(Qt::LeftToRight); }

private:
    QTranslator m_texts;
};

QPixmap pictureOf(const Make &make, const QString &language, M::Orientation orientation)
{
    const Language texts(language);
    MWindow window;
    if (orientation == M::Landscape)
        window.resize(window.sizeHint().transposed());
    const std::unique_ptr<MDialog> dialog(make());
    dialog->appear(&window);
    window.show();
    QCoreApplication::processEvents();
    return window.grab();
}

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

QList<Kind> kinds()
{
    const QString menu = QStringLiteral("Menu of the day");
    const QString opening = QStringLiteral("Welcome to the library.\nOpen from 9 to 18.");
    const QStringList several{QStringLiteral("viewer"), QStringLiteral("notes"), QStringLiteral("browser")};
    return {
        {QStringLiteral("text"), text(opening)},
        {QStringLiteral("text-long"), text(QStringLiteral("A tag may hold a whole story. ").repeated(60))},
        {QStringLiteral("link"), uri("https://www.example.com/menu?table=12", menu)},
        {QStringLiteral("link-long"), uri("https://www.example.com/" + QByteArray("a1b2").repeated(500))},
        {QStringLiteral("number"), uri("tel:+358501234567")},
        {QStringLiteral("message"), uri("sms:+358501234567?body=Parking%20zone%20A,%20two%20hours")},
        {QStringLiteral("store"),
         [] { return new NfcTagReadPermissionDialog(QStringLiteral("ruvostore:link"), QString()); }},
        {QStringLiteral("card"), newContactCard},
        {QStringLiteral("application"), choice({QStringLiteral("viewer")})},
        {QStringLiteral("applications"), choice(several)},
        {QStringLiteral("nobodys"), choice({QStringLiteral("nobody")})},
        {QStringLiteral("selection"), selection(several)},
        {QStringLiteral("selection-empty"), selection({})},
    };
}

} // namespace

QList<Picture> tagPictures()
{
    QList<Picture> pictures;
    const QList<Kind> all = kinds();
    for (const Kind &kind : all) {
        for (const char *language : {"en", "de", "ar"}) {
            const QString code = QLatin1String(language);
            const QString name = QStringLiteral("tag-%1-%2").arg(kind.name, code);
            pictures.append({name, [=] { return pictureOf(kind.make, code, M::Portrait); }});
            pictures.append({name + QStringLiteral("-landscape"),
                             [=] { return pictureOf(kind.make, code, M::Landscape); }});
        }
    }
    return pictures;
}
