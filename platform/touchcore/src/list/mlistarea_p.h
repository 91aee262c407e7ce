// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MLISTAREA_P_H
#define MLISTAREA_P_H

#include "widgets/mscrollarea_p.h"

class MListRows;

/** Scrolls the rows of a list, which move their cells themselves. */
class MListArea : public MScrollArea
{
    Q_OBJECT
public:
    explicit MListArea(MListRows *rows, QGraphicsItem *parent = nullptr);

protected:
    qreal contentLength() const override;
    void resizeContent() override;
    void moveContent(qreal up) override;

private:
    MListRows *const rows;
};

#endif
