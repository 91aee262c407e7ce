// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MIMAGEWIDGET_H
#define MIMAGEWIDGET_H

#include <memory>

#include <QImage>
#include <QPixmap>

#include <MWidgetController>

class MImageWidgetPrivate;

/**
 * A picture, scaled into the size that the style gives and never distorted. A style without a size shows the
 * picture at its natural size.
 */
class QUENZOTOUCHCORE_EXPORT MImageWidget : public MWidgetController
{
    Q_OBJECT
public:
    /** Makes an empty picture inside \a parent, which then owns it. */
    explicit MImageWidget(QGraphicsItem *parent = nullptr);
    /** Makes a picture that shows the theme's image \a id inside \a parent, which then owns it. */
    explicit MImageWidget(const QString &id, QGraphicsItem *parent = nullptr);
    ~MImageWidget() override;

    /**
     * Shows the theme's image \a id, or the file when \a id is an absolute path. When there is none, a
     * neutral placeholder is drawn and a warning logged once for that id. An empty id shows nothing.
     */
    void setImage(const QString &id);
    /** Shows \a image; a null image shows nothing. */
    void setImage(const QImage &image);
    /** Returns the id given to setImage(), empty when a picture was set. */
    QString imageId() const;

    /** Shows \a pixmap; a null pixmap shows nothing. */
    void setPixmap(const QPixmap &pixmap);
    /** Returns the picture that was set, null when an id was. */
    QPixmap pixmap() const;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

protected:
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    const std::unique_ptr<MImageWidgetPrivate> d;
};

#endif
