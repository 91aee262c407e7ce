// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MWIDGET_H
#define MWIDGET_H

#include <QGraphicsWidget>
#include <quenzotouchcore_export.h>

/** A plain item of the touch interface: it holds a layout or children and draws nothing. */
class QUENZOTOUCHCORE_EXPORT MWidget : public QGraphicsWidget
{
    Q_OBJECT
public:
    /** Makes a widget inside \a parent, which then owns it. */
    explicit MWidget(QGraphicsItem *parent = nullptr);
    ~MWidget() override;

protected:
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;
    void updateGeometry() override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
};

#endif
