// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/nfctagreadpermissiondialog_p.h"

#include <QGraphicsScene>
#include <QList>

#include <MButtonModel>
#include <MDesktopEntry>
#include <MImageWidget>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MTypes>
#include <MWidget>
#include <MWindow>

#include "nfcapplication.h"
#include "nfcapplicationselectiondialog.h"
#include "nfctagreadpermissiondialog.h"
#include "ui/querywidgets.h"

namespace ConnUi {

namespace {

constexpr QChar leftToRightEmbedding{0x202a};
constexpr QChar popDirectionalFormatting{0x202c};

// The window that the dialog has appeared in, or null.
MWindow *windowOf(const MDialog *dialog)
{
    const QList<QGraphicsView *> views =
        dialog->scene() ? dialog->scene()->views() : QList<QGraphicsView *>();
    return views.isEmpty() ? nullptr : qobject_cast<MWindow *>(views.first());
}

} // namespace

NfcTagReadPermissionDialogPrivate::NfcTagReadPermissionDialogPrivate(NfcTagReadPermissionDialog *dialog)
    : q(dialog)
{}

void NfcTagReadPermissionDialogPrivate::createContent(const QString &icon, const QString &title,
                                                      const QString &description, const QString &detail)
{
    auto *central = new MWidget;
    auto *layout = new MLayout(central);
    auto *policy = new MLinearLayoutPolicy(layout, Qt::Vertical);

    MImageWidget *iconWidget = newIconWidget(icon);
    iconWidget->setStyleName(QStringLiteral("CommonQueryIcon"));
    policy->addItem(iconWidget, Qt::AlignCenter);
    policy->addItem(newTitleLabel(title), Qt::AlignCenter);
    const bool described = !description.trimmed().isEmpty();
    if (described) {
        MLabel *label = newWrappedLabel(description, QStringLiteral("CommonQueryText"));
        label->setForeignText(isDescriptionForeign);
        policy->addItem(label, Qt::AlignCenter);
    }
    if (!detail.isEmpty()) {
        const QString style =
            described ? QStringLiteral("CommonSubTitleInverted") : QStringLiteral("CommonQueryText");
        MLabel *label = newWrappedLabel(detail, style);
        label->setForeignText(true);
        // Strangers write what stands in front of the domain, and behind it.
        label->setEmphasis(link.domainPosition(), link.domainLength());
        policy->addItem(label, Qt::AlignCenter);
    }
    if (extraWidget)
        policy->addItem(extraWidget);

    q->setCentralWidget(central);
}

bool NfcTagReadPermissionDialogPrivate::getApplicationInfo(const QString &application, QString &name,
                                                           QString &icon) const
{
    const QString path = NfcApplication(application).desktopFile();
    if (path.isEmpty()) {
        qWarning("NfcTagReadPermissionDialog: No desktop file provided for application %s",
                 application.toUtf8().constData());
        return false;
    }
    const MDesktopEntry entry(path);
    const QString entryName = entry.name();
    const QString entryIcon = entry.icon();
    if (entryName.isEmpty() || entryIcon.isEmpty())
        return false;
    name = entryName.section(M::lengthVariantSeparator, 0, 0);
    icon = entryIcon;
    return true;
}

void NfcTagReadPermissionDialogPrivate::addLeftToRightMark(QString &text) const
{
    text.prepend(leftToRightEmbedding);
    text.append(popDirectionalFormatting);
}

void NfcTagReadPermissionDialogPrivate::setButtonTexts(const QString &yes)
{
    q->button(M::YesButton)->setText(yes);
    q->button(M::NoButton)->setText(qtTrId("qtn_nfc_tags_discard"));
}

void NfcTagReadPermissionDialogPrivate::addDirectAction(const QString &yes)
{
    q->button(M::YesButton)->setText(yes);
    q->addButton(qtTrId("qtn_nfc_tags_view"), M::ApplyRole);
    directActionSelected = true;
}

void NfcTagReadPermissionDialogPrivate::openSelection()
{
    const int current = int(applications.indexOf(selectedApplication));
    auto *selection = new NfcApplicationSelectionDialog(applications, current);
    // The second tap of two must not choose the row that has come below the finger.
    selection->setInputDelay(q->inputDelay());
    connect(selection, &MDialog::finished, this,
            &NfcTagReadPermissionDialogPrivate::applicationSelectionFinished);
    // A question that has been answered does not need a choice.
    connect(q, &MDialog::finished, selection, &MDialog::reject);
    connect(q, &QObject::destroyed, selection, &MDialog::reject);
    if (MWindow *window = windowOf(q))
        selection->appear(window, MSceneWindow::DestroyWhenDone);
    else
        selection->appear(MSceneWindow::DestroyWhenDone);
}

void NfcTagReadPermissionDialogPrivate::applicationSelectionFinished(int result)
{
    const auto *finished = qobject_cast<NfcApplicationSelectionDialog *>(sender());
    if (!finished) {
        qWarning("NfcTagReadPermissionDialog: Unable cast to NfcApplicationSelectionDialog");
        return;
    }
    if (result != M::OkButton)
        return;
    if (!finished->selectedApplication().isEmpty())
        selectedApplication = finished->selectedApplication();
    q->applicationSelected();
}

} // namespace ConnUi
