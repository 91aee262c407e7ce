// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "simplesheet.h"

#include <utility>

#include <QGraphicsScene>
#include <QKeyEvent>

#include <MButton>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MScrollView>

#include "simplesheet_p.h"

namespace ConnUi {

SimpleSheetPrivate::SimpleSheetPrivate(SimpleSheet *sheet)
    : title(new MLabel)
    , rejectButton(new MButton)
    , content(new MScrollView)
{
    auto *header = new MWidgetController;
    header->setStyleName(QStringLiteral("SimpleSheetHeader"));
    title->setStyleName(QStringLiteral("SimpleSheetTitle"));
    rejectButton->setStyleName(QStringLiteral("SimpleSheetButton"));
    rejectButton->hide();

    auto *row = new MLayout(header);
    auto *rowPolicy = new MLinearLayoutPolicy(row, Qt::Horizontal);
    rowPolicy->addItem(title, Qt::AlignVCenter);
    rowPolicy->addItem(rejectButton, Qt::AlignVCenter);
    row->setStretchFactor(title, 1);

    auto *policy = new MLinearLayoutPolicy(new MLayout(sheet), Qt::Vertical);
    policy->setSpacing(0);
    policy->addItem(header);
    policy->addItem(content);
    policy->addStretch();
}

SimpleSheet::SimpleSheet() : d(std::make_unique<SimpleSheetPrivate>(this))
{
    connect(d->rejectButton, &MButton::clicked, this, &SimpleSheet::dismiss);
}

SimpleSheet::~SimpleSheet() = default;

QString SimpleSheet::title() const
{
    return d->title->text();
}

void SimpleSheet::setTitle(const QString &title)
{
    d->title->setText(title);
    setAccessibleName(title);
}

QString SimpleSheet::rejectButtonText() const
{
    return d->rejectButton->text();
}

void SimpleSheet::setRejectButtonText(const QString &text)
{
    d->rejectButton->setText(text);
    d->rejectButton->setVisible(!text.isEmpty());
}

QGraphicsWidget *SimpleSheet::centralWidget() const
{
    return d->content->widget();
}

void SimpleSheet::setCentralWidget(QGraphicsWidget *widget)
{
    d->content->setWidget(widget);
}

void SimpleSheet::ensureContent()
{
    if (!std::exchange(d->contentMade, true))
        createContent();
}

void SimpleSheet::createContent() {}

void SimpleSheet::aboutToAppear()
{
    ensureContent();
}

void SimpleSheet::keyPressEvent(QKeyEvent *event)
{
    MSceneWindow::keyPressEvent(event);
    // The page keys move the content also while something else has the focus.
    if (!event->isAccepted() && scene())
        scene()->sendEvent(d->content, event);
}

} // namespace ConnUi
