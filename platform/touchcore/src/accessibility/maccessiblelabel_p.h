// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MACCESSIBLELABEL_P_H
#define MACCESSIBLELABEL_P_H

#include <MLabel>

#include "accessibility/maccessiblewidget_p.h"

/** A text in the accessibility tree. */
class MAccessibleLabel : public MAccessibleWidget
{
public:
    explicit MAccessibleLabel(MLabel *label);

    /** Returns the whole text of \a label as it can be spoken. */
    static QString spoken(const MLabel *label);

protected:
    QString ownName() const override;
};

#endif
