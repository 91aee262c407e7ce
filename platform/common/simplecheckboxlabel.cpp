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
    , m_label(new MLabel(text))
    , m_indicator(new MProgressIndicator(nullptr, MProgressIndicator::spinnerType))
{
    setStyleName(QStringLiteral("SimpleCheckBoxLabel"));
    m_label->setStyleName(QStringLiteral("SimpleCheckBoxLabelTitle"));
    m_indicator->hide();
    button->setViewType(viewType);

    auto *layout = new MLayout(this);
    auto *policy = new MLinearLayoutPolicy(layout, Qt::Horizontal);
    policy->addItem(m_label, Qt::AlignVCenter);
    policy->addItem(m_indicator, Qt::AlignVCenter);
    policy->addItem(button, Qt::AlignVCenter);
    layout->setStretchFactor(m_label, 1);
}

QString SimpleCheckBoxLabel::text() const
{
    return m_label->text();
}

bool SimpleCheckBoxLabel::showProgressIndicator() const
{
    return m_indicator->isVisibleTo(this);
}

void SimpleCheckBoxLabel::setShowProgressIndicator(bool show)
{
    m_indicator->setVisible(show);
}

} // namespace ConnUi
