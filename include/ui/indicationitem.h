// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_INDICATIONITEM_H
#define CONNUI_INDICATIONITEM_H

#include <connui_nfc_export.h>

#include <QGraphicsPixmapItem>
#include <QObject>
#include <QPixmap>

#include <mtypes.h>

namespace ConnUi {

/**
 * The banner of NfcOverlay: a picture that slides along the edge that is on top for the user.
 *
 * Its pictures are the theme's "quenzotouch-nfc-banner-landscape" and "quenzotouch-nfc-banner-portrait", in
 * their natural size.
 */
class CONNUI_NFC_EXPORT IndicationItem : public QObject, public QGraphicsPixmapItem
{
    Q_OBJECT
    /** The visible part of the banner: 0 for none, 1 for all of it; below 0 it lies farther out. */
    Q_PROPERTY(float visibilityFactor READ visibilityFactor WRITE setVisibilityFactor)

public:
    /** Makes a banner with the pictures of the theme. */
    explicit IndicationItem(QGraphicsItem *parent = nullptr);

    /** Releases the pictures. */
    ~IndicationItem() override;

    /** Returns the visible part of the banner. */
    float visibilityFactor() const;

    /**
     * Moves the banner so that \a factor of it is in view.
     *
     * The item must be in a scene that an MWindow with a scene manager shows; otherwise it keeps its place,
     * with the warning "IndicationItem: setting orientation when not yet in view!" or "IndicationItem: Unble
     * to resolve sceneManager()".
     */
    void setVisibilityFactor(float factor);

    /** Turns the banner for a screen that is held at \a angle. */
    void setOrientationAngle(M::OrientationAngle angle);

private:
    float factor = 0.0F;
    const QPixmap *landscape;
    const QPixmap *portrait;
    M::OrientationAngle angle = M::Angle0;
};

} // namespace ConnUi

#endif
