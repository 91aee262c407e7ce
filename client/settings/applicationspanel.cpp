// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "settings/applicationspanel.h"

#include <QImage>

#include <MImageWidget>
#include <MLabel>
#include <MLayout>
#include <MTheme>

namespace {

MLabel *newLabel(const QString &text, const QString &style)
{
    auto *label = new MLabel(text);
    label->setStyleName(style);
    label->setWordWrap(true);
    return label;
}

// The icon is the application's: drawing it may take long.
MImageWidget *newIcon(const QString &id)
{
    auto *icon = new MImageWidget;
    icon->setStyleName(QStringLiteral("CommonMainIcon"));
    MTheme::drawForeignImage(id, icon, [icon](const QImage &image) {
        if (image.isNull())
            icon->setImage(QStringLiteral("icon-m-placeholder"));
        else
            icon->setImage(image);
    });
    return icon;
}

MWidget *newRow(const DefaultApplication &application)
{
    auto *texts = new MWidget;
    auto *lines = new MLayout(texts);
    auto *policy = new MLinearLayoutPolicy(lines, Qt::Vertical);
    lines->setSpacing(0);
    policy->addItem(newLabel(qtTrId(application.kind), QStringLiteral("CommonSubTitle")));
    policy->addItem(newLabel(application.name, QStringLiteral("MLabel")));

    auto *row = new MWidget;
    auto *layout = new MLayout(row);
    auto *parts = new MLinearLayoutPolicy(layout, Qt::Horizontal);
    parts->addItem(newIcon(application.icon), Qt::AlignVCenter);
    parts->addItem(texts, Qt::AlignVCenter);
    layout->setStretchFactor(texts, 1);
    return row;
}

} // namespace

ApplicationsPanel::ApplicationsPanel() : policy(new MLinearLayoutPolicy(new MLayout(this), Qt::Vertical))
{
    setStyleName(QStringLiteral("CommonPanel"));
    policy->addItem(newLabel(qtTrId("qtn_nfc_sett_apps"), QStringLiteral("MLabel")));
    hide();
}

void ApplicationsPanel::list(const QList<DefaultApplication> &applications)
{
    delete rows;
    rows = new MWidget;
    auto *newRows = new MLinearLayoutPolicy(new MLayout(rows), Qt::Vertical);
    for (const DefaultApplication &application : applications)
        newRows->addItem(newRow(application));
    policy->addItem(rows);
    setVisible(!applications.isEmpty());
}
