// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mlinearlayoutpolicy.h"

#include <MLayout>

#include "theme/mtheme_p.h"

MLinearLayoutPolicy::MLinearLayoutPolicy(MLayout *layout, Qt::Orientation orientation) : layout(layout)
{
    layout->policy.reset(this);
    layout->setOrientation(orientation);
    setSpacing(MThemePrivate::ownStyle("MLinearLayoutPolicy").spacing);
}

void MLinearLayoutPolicy::addItem(QGraphicsLayoutItem *item, Qt::Alignment alignment)
{
    layout->addItem(item);
    if (alignment)
        layout->setAlignment(item, alignment);
}

void MLinearLayoutPolicy::addStretch(int factor)
{
    layout->addStretch(factor);
}

void MLinearLayoutPolicy::setSpacing(qreal spacing)
{
    layout->setSpacing(spacing);
}
