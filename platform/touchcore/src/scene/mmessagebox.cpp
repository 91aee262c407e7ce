// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mmessagebox.h"

#include <MImageWidget>
#include <MLabel>

#include "scene/mdialog_p.h"
#include "scene/mmessagebox_p.h"

void MMessageBoxPrivate::show(MMessageBox *box)
{
    if (box->centralWidget() != label)
        return;
    if (!label) {
        label = new MLabel;
        label->setStyleName(QStringLiteral("CommonQueryText"));
        label->setWordWrap(true);
        label->setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        label->setAlignment(Qt::AlignCenter);
        box->setCentralWidget(label);
    }
    label->setText(text);
    MDialogPrivate::of(box)->beginAgain();
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
    return MDialogPrivate::of(this)->headIcon->imageId();
}

void MMessageBox::setIconId(const QString &id)
{
    MDialogPrivate::of(this)->setHeadIcon(id);
}
