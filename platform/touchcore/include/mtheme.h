// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MTHEME_H
#define MTHEME_H

#include <functional>
#include <memory>

#include <QIcon>
#include <QImage>
#include <QObject>
#include <QPixmap>
#include <quenzotouchcore_export.h>

class MThemePrivate;
struct MStyle;

/**
 * The look of the touch interface: the styles of the theme file, and the pictures of the icon theme.
 *
 * The theme file is quenzotouchcore/theme.ini in the first of the XDG data folders that has it, or the file
 * that the environment variable QUENZO_TOUCH_THEME names. One that cannot be read or holds a mistake is
 * logged and the built-in theme used in its place. Pictures come from the freedesktop icon theme, then from
 * the toolkit's own set.
 */
class QUENZOTOUCHCORE_EXPORT MTheme : public QObject
{
    Q_OBJECT
public:
    /** The colors that a theme comes in. */
    enum Variant {
        Light,
        Dark,
        LightContrast, ///< Light, with high contrast
        DarkContrast,  ///< Dark, with high contrast
    };
    Q_ENUM(Variant)

    /** Returns the theme of this process. It lives until the application object goes. */
    static MTheme *instance();

    /**
     * Returns the variant in use: the one in QUENZO_TOUCH_VARIANT ("light", "dark", "light-contrast" or
     * "dark-contrast"), or else light or dark as the theme file says, if it does, and everything else as the
     * user's desktop says.
     */
    Variant variant() const;
    /** Shows everything in the colors of \a variant from now on, whatever the desktop says. */
    void setVariant(Variant variant);

    /** Returns by how much all texts are larger than the theme file says, from 0.5 to 3: the desktop's, or 1.
     */
    qreal textScale() const;
    /** Shows all texts larger by \a scale from now on, whatever the desktop says. */
    void setTextScale(qreal scale);

    /**
     * Returns whether nothing slides: as the environment variable QUENZO_TOUCH_MOTION ("full" or "reduced")
     * says, or else as the user's desktop does. On the platform "offscreen", where nobody looks, nothing
     * slides by itself.
     */
    bool isMotionReduced() const;

    /**
     * Returns the picture \a id at its natural size; its pixel ratio is the application's, so that
     * deviceIndependentSize() is its size in a scene. An id that is nowhere gives a neutral placeholder and
     * one warning. The picture is shared and stays until each caller has handed it back with releasePixmap().
     */
    static const QPixmap *pixmap(const QString &id);
    /** Hands back a picture that pixmap() gave; anything else is ignored. */
    static void releasePixmap(const QPixmap *pixmap);

    /**
     * Returns the picture in the file with the absolute path \a path, no more than 256 pixels each way, or a
     * null one when there is none.
     *
     * For files of others: a process of its own reads and draws it, which ends when that takes more than a
     * second of processor time or half a gigabyte of memory. Waits for it, five seconds at most. So is drawn
     * whatever pixmap() or an MImageWidget shows that is not the toolkit's own.
     */
    static QPixmap foreignPixmap(const QString &path);

    /**
     * Draws the icon of somebody else with the theme id or absolute path \a id like foreignPixmap(), without
     * waiting for it. Calls \a then with the picture from the event loop, with a null one when there is none,
     * and not at all when \a context has been deleted by then.
     */
    static void drawForeignImage(const QString &id, QObject *context,
                                 const std::function<void(const QImage &)> &then);

Q_SIGNALS:
    /** Colors or the size of texts have changed. */
    void changed();

private:
    friend class MThemePrivate;
    MTheme();
    ~MTheme() override;
    void follow();
    const std::unique_ptr<MThemePrivate> d;
};

#endif
