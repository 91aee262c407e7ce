// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcsharingpermissiondialog.h"

#include <QImage>
#include <QString>

#include <MImageWidget>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MWidget>

#include "ui/nfcsharingpermissiondialog_p.h"
#include "ui/querywidgets.h"

namespace ConnUi {

NfcSharingPermissionDialog::NfcSharingPermissionDialog(const QStringList &resources)
    : MMessageBox(QString(), M::YesButton | M::NoButton)
    , d(new NfcSharingPermissionDialogPrivate)
{
    d->resources = resources;
    NfcSharingPermissionDialog::createContent();
}

NfcSharingPermissionDialog::~NfcSharingPermissionDialog()
{
    delete d;
}

// Programs connect to it with its arguments as they are.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void NfcSharingPermissionDialog::thumbnail(QUrl, QUrl thumbnail)
{
    // Qt warns when it is to read a file without a name.
    const QImage image = thumbnail.isLocalFile() ? QImage(thumbnail.toLocalFile()) : QImage();
    if (image.isNull()) {
        qWarning("NfcSharingPermissionDialog: No picture in thumbnail %s",
                 qUtf8Printable(thumbnail.toString()));
        return;
    }
    if (d->imageWidget)
        d->imageWidget->setImage(image);
}

void NfcSharingPermissionDialog::createContent()
{
    QString text;
    if (d->resources.size() > 1) {
        d->imageWidget = new MImageWidget(QStringLiteral("icon-m-content-nfc-inverse"));
        text = d->listText();
    } else {
        const QString resource = d->resources.value(0);
        text = resource.startsWith(QLatin1String("contact:")) ? d->contactText(resource)
                                                              : d->fileText(this, resource);
    }

    auto *central = new MWidget;
    auto *layout = new MLayout(central);
    auto *policy = new MLinearLayoutPolicy(layout, Qt::Vertical);
    if (d->imageWidget) {
        d->imageWidget->setStyleName(QStringLiteral("CommonThumbnail"));
        policy->addItem(d->imageWidget, Qt::AlignCenter);
    }
    auto *spacer = new MWidgetController;
    spacer->setStyleName(QStringLiteral("CommonXLargeSpacer"));
    policy->addItem(spacer);
    policy->addItem(newTitleLabel(qtTrId("qtn_nfc_share_tit")), Qt::AlignCenter);
    policy->addItem(newWrappedLabel(text, QStringLiteral("CommonQueryText")), Qt::AlignCenter);
    setCentralWidget(central);
}

} // namespace ConnUi
