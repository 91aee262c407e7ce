// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MLINEARLAYOUTPOLICY_H
#define MLINEARLAYOUTPOLICY_H

#include <QtCore/qnamespace.h>
#include <quenzotouchcore_export.h>

class MLayout;
class QGraphicsLayoutItem;

/** Puts the items of a layout in a row or in a column. */
class QUENZOTOUCHCORE_EXPORT MLinearLayoutPolicy
{
public:
    /** Makes the policy of \a layout, which owns it from then on and deletes the policy that it had before.
     */
    MLinearLayoutPolicy(MLayout *layout, Qt::Orientation orientation);

    /**
     * Appends \a item. It fills its cell as far as its greatest size allows and stands in the rest as
     * \a alignment says.
     */
    void addItem(QGraphicsLayoutItem *item, Qt::Alignment alignment = {});

    /** Appends empty space that grows with the factor \a factor. */
    void addStretch(int factor = 1);

    /** Sets the space between items, in pixels; unless set, the theme's. */
    void setSpacing(qreal spacing);

private:
    MLayout *const layout;
};

#endif
