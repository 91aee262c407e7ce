// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "questionpictures.h"

#include <memory>

#include <QCoreApplication>

#include <MWindow>
#include <NfcFileSendDialog>
#include <NfcFileSendPendingDialog>
#include <NfcPairingDialog>
#include <NfcSharingPermissionDialog>
#include <NfcSharingSelectionDialog>
#include <NfcTagNotSupportedDialog>

using namespace ConnUi;

namespace {

using Make = std::function<MDialog *()>;

QPixmap pictureOf(const Make &make)
{
    MWindow window;
    const std::unique_ptr<MDialog> dialog(make());
    dialog->appear(&window);
    window.show();
    QCoreApplication::processEvents();
    return window.grab();
}

MDialog *newPairing()
{
    constexpr uint headset = 0x240404;
    auto *dialog = new NfcPairingDialog(headset);
    dialog->setTitle(QStringLiteral("Anna's headset"));
    return dialog;
}

MDialog *newPermission()
{
    return new NfcSharingPermissionDialog(
        {QStringLiteral("/tmp/beach.jpeg"), QStringLiteral("/tmp/sunset.jpeg")});
}

Picture picture(const QString &name, const Make &make)
{
    return {name, [make] { return pictureOf(make); }};
}

} // namespace

QList<Picture> questionPictures()
{
    return {
        picture(QStringLiteral("pairing"), newPairing),
        picture(QStringLiteral("share-permission"), newPermission),
        picture(QStringLiteral("share-selection"),
                [] { return new NfcSharingSelectionDialog(NfcSharingSelectionDialog::ImageSelection); }),
        picture(QStringLiteral("tag-unsupported"),
                [] { return new NfcTagNotSupportedDialog(NfcTagNotSupportedDialog::UnsupportedTagError); }),
        picture(QStringLiteral("send"), [] { return new NfcFileSendDialog; }),
        picture(QStringLiteral("send-pending"), [] { return new NfcFileSendPendingDialog; }),
    };
}
