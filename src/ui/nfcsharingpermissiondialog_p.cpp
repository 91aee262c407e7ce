// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/nfcsharingpermissiondialog_p.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QList>
#include <QObject>
#include <QPixmap>
#include <QUrl>

#include <ContactExporter>
#include <MImageWidget>
#include <MimeTypeResolver>

#include "nfcsharingpermissiondialog.h"

namespace ConnUi {

QString NfcSharingPermissionDialogPrivate::contactText(const QString &contact)
{
    QString first;
    QString second;
    const std::unique_ptr<QFile> card(ContactExporter::createContactCardFile(contact));
    if (card)
        ContactExporter::resolveContactInfo(QFileInfo(card->fileName()), first, second);

    QImage avatar;
    if (ContactExporter::resolveContactAvatar(contact, avatar)) {
        imageWidget = new MImageWidget;
        imageWidget->setImage(avatar);
    } else {
        qWarning("Avatar picture not found for %s", contact.toLatin1().constData());
    }
    return qtTrId("qtn_nfc_share_contact").arg(first, second);
}

QString NfcSharingPermissionDialogPrivate::fileText(NfcSharingPermissionDialog *dialog, const QString &file)
{
    const QString mimeType = MimeTypeResolver::mimeTypeForFilePath(QUrl(file).path());
    if (mimeType.startsWith(QLatin1String("image"), Qt::CaseInsensitive) ||
        mimeType.startsWith(QLatin1String("video"), Qt::CaseInsensitive))
        requestThumbnail(dialog, file, mimeType);
    return qtTrId("qtn_nfc_share_img").arg(QFileInfo(file).fileName());
}

QString NfcSharingPermissionDialogPrivate::listText() const
{
    return qtTrId("qtn_nfc_share_multi", int(resources.size())).arg(resources.size());
}

void NfcSharingPermissionDialogPrivate::requestThumbnail(NfcSharingPermissionDialog *dialog,
                                                         const QString &file, const QString &mimeType)
{
    imageWidget = new MImageWidget;
    thumbnailer = std::make_unique<Thumbnails::Thumbnailer>(QUrl(), QPixmap());
    QObject::connect(thumbnailer.get(), &Thumbnails::Thumbnailer::thumbnail, dialog,
                     &NfcSharingPermissionDialog::thumbnail);
    QList<QUrl> uris{QUrl(file)};
    QStringList mimeTypes{mimeType};
    thumbnailer->request(uris, mimeTypes, false, QString(), QString(), false, true);
}

} // namespace ConnUi
