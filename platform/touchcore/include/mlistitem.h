// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MLISTITEM_H
#define MLISTITEM_H

#include <MWidgetController>

/** A row of a list. */
class QUENZOTOUCHCORE_EXPORT MListItem : public MWidgetController
{
    Q_OBJECT
public:
    /** Makes an empty row inside \a parent, which then owns it. */
    explicit MListItem(QGraphicsItem *parent = nullptr);
    ~MListItem() override;
};

#endif
