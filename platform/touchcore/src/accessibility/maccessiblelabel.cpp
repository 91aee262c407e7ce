// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <MTypes>

#include "accessibility/maccessiblelabel_p.h"
#include "support/foreigntext.h"

MAccessibleLabel::MAccessibleLabel(MLabel *label) : MAccessibleWidget(label, QAccessible::StaticText) {}

QString MAccessibleLabel::spoken(const MLabel *label)
{
    // Speech has room for the longest variant.
    return label->isForeignText() ? Support::drawableForeignText(label->text())
                                  : label->text().section(M::lengthVariantSeparator, 0, 0);
}

QString MAccessibleLabel::ownName() const
{
    return spoken(static_cast<const MLabel *>(object()));
}
