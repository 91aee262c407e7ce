// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mlistitem.h"

MListItem::MListItem(QGraphicsItem *parent) : MWidgetController(parent)
{
    applyStyle();
}

MListItem::~MListItem() = default;
