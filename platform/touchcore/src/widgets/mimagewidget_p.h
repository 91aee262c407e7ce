// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MIMAGEWIDGET_P_H
#define MIMAGEWIDGET_P_H

#include <QIcon>
#include <QPixmap>
#include <QString>

class QPainter;
class QRectF;

class MImageWidgetPrivate
{
public:
    void show(const QString &newId, const QPixmap &newPixmap);
    QSize naturalSize();

    /** Draws a neutral picture that is \a extent wide and high into the middle of \a area. */
    static void paintPlaceholder(QPainter *painter, const QRectF &area, qreal extent, qreal ratio);

    /** Returns the picture as large as it goes into \a size at \a ratio device pixels for one, or null. */
    QPixmap scaled(const QSizeF &size, qreal ratio);

    QString id;
    QPixmap pixmap;

private:
    void loadIcon();

    QIcon icon; ///< Of the id, once it was needed
    QPixmap shown;
    QSize scaledFor;
};

#endif
