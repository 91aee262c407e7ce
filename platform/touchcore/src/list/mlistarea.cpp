// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "list/mlistarea_p.h"
#include "list/mlistrows_p.h"

MListArea::MListArea(MListRows *rows, QGraphicsItem *parent) : MScrollArea(rows, parent), rows(rows) {}

qreal MListArea::contentLength() const
{
    return rows->length();
}

void MListArea::resizeContent()
{
    rows->resize(size());
}

void MListArea::moveContent(qreal up)
{
    rows->scrollTo(up);
}
