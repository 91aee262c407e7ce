// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "simplecheckboxlabel.h"

#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MProgressIndicator>

namespace ConnUi {

SimpleCheckBoxLabel::SimpleCheckBoxLabel(MButton *button, const QString &text, MButton::ViewType viewType,
                                         QGraphicsItem *parent)
    : MWidgetController(parent)
    , label(new MLabel(text))
    , indicator(new MProgressIndicator(nullptr, MProgressIndicator::spinnerType))
{
    setStyleName(QStringLiteral("SimpleCheckBoxLabel"));
    label->setStyleName(QStringLiteral("SimpleCheckBoxLabelTitle"));
    indicator->hide();
    button->setViewType(viewType);
    button->setAccessibleName(label->text());
    indicator->setAccessibleName(label->text());

    auto *layout = new MLayout(this);
    auto *policy = new MLinearLayoutPolicy(layout, Qt::Horizontal);
    policy->addItem(label, Qt::AlignVCenter);
    policy->addItem(indicator, Qt::AlignVCenter);
    policy->addItem(button, Qt::AlignVCenter);
    layout->setStretchFactor(label, 1);
}

QString SimpleCheckBoxLabel::text() const
{
    return label->text();
}

bool SimpleCheckBoxLabel::showProgressIndicator() const
{
    return indicator->isVisibleTo(this);
}

void SimpleCheckBoxLabel::setShowProgressIndicator(bool show)
{
    indicator->setVisible(show);
}

} // namespace ConnUi
