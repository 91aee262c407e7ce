// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MTHEME_P_H
#define MTHEME_P_H

#include <map>
#include <optional>

#include <QCache>
#include <QIcon>
#include <QSet>
#include <QStringList>

#include <MTheme>

#include "theme/mstyle_p.h"
#include "theme/msystemlook_p.h"
#include "theme/mthemefile_p.h"

class MThemePrivate
{
public:
    static MThemePrivate *instance() { return MTheme::instance()->d.get(); }

    MThemePrivate();

    /** Returns the style called \a name, or null. */
    const MStyle *style(const QString &name) const;

    /** Returns the style of this toolkit's own called \a name; every theme has it. */
    static const MStyle &ownStyle(const char *name);

    /** Logs, once for each name, that there is no style called \a name. */
    void warnAboutStyle(const QString &name);

    /** Returns the icon with the theme id or absolute path \a id, or a neutral one in its place. */
    QIcon icon(const QString &id);

    /** Returns the icon of somebody else with the theme id or absolute path \a id, or a null one. */
    QIcon findForeignIcon(const QString &id);

    /** Logs, once for each id, when the theme id or absolute path \a id does not lead to a picture. */
    void warnIfMissing(const QString &id);

    /**
     * Returns the size that \a icon, known as \a id, is shown at by itself: that of the style that carries
     * the id's name, or of its greatest bitmap. A drawing has none of its own and takes that of the style
     * MPicture.
     */
    QSize naturalSize(const QIcon &icon, const QString &id) const;

    struct SharedPixmap
    {
        QPixmap pixmap;
        int users = 0;
    };

    /** Looks as \a look wants, as far as nobody wished for something else. Returns whether anything looks
     * different. */
    bool follow(const MLook &look);

    MThemeFile file;
    MTheme::Variant variant = MTheme::Light;
    qreal textScale = 1;
    bool reducedMotion = false;
    std::optional<MTheme::Variant> wishedVariant;
    std::optional<qreal> wishedTextScale;
    std::optional<bool> wishedReducedMotion;
    MSystemLook *system = nullptr;
    std::map<QString, SharedPixmap> pixmaps;

private:
    static std::optional<MTheme::Variant> variantOfEnvironment();
    static std::optional<bool> reducedMotionOfEnvironment();
    MTheme::Variant variantFor(const MLook &look) const;
    void loadFile();
    static QString path();
    QIcon findIcon(const QString &id);

    // A list shows the same ones again and again, and each costs a process.
    QCache<QString, QIcon> foreignIcons;
    QSet<QString> missingStyles;
    QSet<QString> missingIcons;
};

#endif
