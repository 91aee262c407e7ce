// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "promptpictures.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QUrl>

#include <NfcEnableDialog>
#include <NfcFileSendDialog>
#include <NfcFileSendPendingDialog>
#include <NfcPairingDialog>
#include <NfcSharingPermissionDialog>
#include <NfcSharingSelectionDialog>
#include <NfcTagNotSupportedDialog>

using namespace ConnUi;

namespace {

using Make = std::function<MDialog *()>;

template <typename Dialog, typename... Content>
Make prompt(Content... content)
{
    return [=] { return new Dialog(content...); };
}

QImage sunset()
{
    QImage image(128, 96, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.fillRect(image.rect(), QColor(0xf4, 0xa2, 0x61));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xff, 0xe8, 0xa3));
    painter.drawEllipse(QPointF(64, 58), 22, 22);
    painter.fillRect(0, 62, 128, 34, QColor(0x26, 0x46, 0x53));
    return image;
}

QImage face()
{
    QImage image(96, 96, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.fillRect(image.rect(), QColor(0x2a, 0x9d, 0x8f));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xf2, 0xd0, 0xb0));
    painter.drawEllipse(QPointF(48, 40), 20, 24);
    painter.setBrush(QColor(0x26, 0x46, 0x53));
    painter.drawEllipse(QPointF(48, 102), 38, 36);
    return image;
}

MDialog *newContact()
{
    // Not among the contacts of whoever takes the pictures.
    const QTemporaryDir data;
    const QByteArray usual = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", QFile::encodeName(data.path()));
    QDir(data.path()).mkdir(QStringLiteral("contacts"));
    QFile card(data.filePath(QStringLiteral("contacts/anna.vcf")));
    QBuffer photo;
    face().save(&photo, "PNG");
    if (card.open(QIODevice::WriteOnly))
        card.write("BEGIN:VCARD\r\nVERSION:3.0\r\nN:Virtanen;Anna;;;\r\nPHOTO;ENCODING=b;TYPE=PNG:" +
                   photo.data().toBase64() + "\r\nEND:VCARD\r\n");
    card.close();
    auto *dialog = new NfcSharingPermissionDialog({QStringLiteral("contact:anna")});
    qputenv("XDG_DATA_HOME", usual);
    return dialog;
}

// As after the thumbnail service has answered.
Make withThumbnail(const QString &name)
{
    return [=] {
        QTemporaryFile thumbnail;
        if (thumbnail.open())
            sunset().save(&thumbnail, "PNG");
        thumbnail.close();
        auto *dialog = new NfcSharingPermissionDialog({name});
        dialog->thumbnail(QUrl::fromLocalFile(name), QUrl::fromLocalFile(thumbnail.fileName()));
        return dialog;
    };
}

Make sharing(const QStringList &resources)
{
    return prompt<NfcSharingPermissionDialog>(resources);
}

} // namespace

QList<Dialog> promptDialogs()
{
    constexpr unsigned int headset = 0x240404;
    constexpr unsigned int smartphone = 0x5a020c;
    constexpr unsigned int uncategorized = 0x1f00;
    const QString picture = QStringLiteral("/home/user/Sunset.jpeg");
    const QString letters = QStringLiteral("a-name-that-nobody-wanted-to-shorten-");
    return {
        {QStringLiteral("pair-headset"), prompt<NfcPairingDialog>(headset)},
        {QStringLiteral("pair-phone"), prompt<NfcPairingDialog>(smartphone)},
        {QStringLiteral("pair-something"), prompt<NfcPairingDialog>(uncategorized)},
        {QStringLiteral("select-picture"),
         prompt<NfcSharingSelectionDialog>(NfcSharingSelectionDialog::ImageSelection)},
        {QStringLiteral("select-contact"),
         prompt<NfcSharingSelectionDialog>(NfcSharingSelectionDialog::ContactSelection)},
        {QStringLiteral("unsupported"),
         prompt<NfcTagNotSupportedDialog>(NfcTagNotSupportedDialog::UnsupportedTagError)},
        {QStringLiteral("empty"), prompt<NfcTagNotSupportedDialog>(NfcTagNotSupportedDialog::EmptyTagError)},
        {QStringLiteral("send"), prompt<NfcFileSendDialog>()},
        {QStringLiteral("send-pending"), prompt<NfcFileSendPendingDialog>()},
        {QStringLiteral("enable"), prompt<NfcEnableDialog>()},
        {QStringLiteral("share-contact"), newContact},
        {QStringLiteral("share-picture"), withThumbnail(picture)},
        {QStringLiteral("share-film"), withThumbnail(QStringLiteral("/home/user/Birthday.mp4"))},
        {QStringLiteral("share-file"), sharing({QStringLiteral("/home/user/minutes.pdf")})},
        {QStringLiteral("share-long"), sharing({QLatin1Char('/') + letters.repeated(8)})},
        {QStringLiteral("share-several"), sharing({picture, picture, picture})},
        {QStringLiteral("share-nothing"), sharing({})},
    };
}

QList<Picture> promptPictures()
{
    return dialogPictures(promptDialogs());
}
