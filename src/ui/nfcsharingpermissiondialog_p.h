// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCSHARINGPERMISSIONDIALOG_P_H
#define CONNUI_NFCSHARINGPERMISSIONDIALOG_P_H

#include <memory>

#include <QString>
#include <QStringList>

#include <Thumbnailer>

class MImageWidget;

namespace ConnUi {

class NfcSharingPermissionDialog;

class NfcSharingPermissionDialogPrivate
{
public:
    QString contactText(const QString &contact);
    QString fileText(NfcSharingPermissionDialog *dialog, const QString &file);
    QString listText() const;
    void requestThumbnail(NfcSharingPermissionDialog *dialog, const QString &file, const QString &mimeType);

    QStringList resources;
    std::unique_ptr<Thumbnails::Thumbnailer> thumbnailer;
    MImageWidget *imageWidget = nullptr;
};

} // namespace ConnUi

#endif
