// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mmessagebox.h"

#include <MImageWidget>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>

#include "mmessagebox_p.h"

void MMessageBoxPrivate::show(MMessageBox *box)
{
    if (box->centralWidget() != contents) {
        return;
    }
    auto widget = new MWidget;
    auto layout = new MLayout(widget);
    auto policy = new MLinearLayoutPolicy(layout, Qt::Vertical);
    if (!iconId.isEmpty()) {
        auto icon = new MImageWidget(iconId);
        icon->setStyleName(QStringLiteral("CommonQueryIcon"));
        policy->addItem(icon, Qt::AlignCenter);
    }
    if (!text.isEmpty()) {
        auto label = new MLabel(text);
        label->setStyleName(QStringLiteral("CommonQueryText"));
        label->setWordWrap(true);
        label->setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        label->setAlignment(Qt::AlignCenter);
        policy->addItem(label, Qt::AlignCenter);
    }
    contents = widget;
    box->setCentralWidget(widget);
}

MMessageBox::MMessageBox(const QString &title, const QString &text, M::StandardButtons buttons)
    : MMessageBox(title, buttons)
{
    setText(text);
}

MMessageBox::MMessageBox(const QString &title, M::StandardButtons buttons)
    : MDialog(title, buttons)
    , d(std::make_unique<MMessageBoxPrivate>())
{}

MMessageBox::~MMessageBox() = default;

QString MMessageBox::text() const
{
    return d->text;
}

void MMessageBox::setText(const QString &text)
{
    d->text = text;
    d->show(this);
}

QString MMessageBox::iconId() const
{
    return d->iconId;
}

void MMessageBox::setIconId(const QString &id)
{
    d->iconId = id;
    d->show(this);
}
