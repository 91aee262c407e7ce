// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MTHEME_P_H
#define MTHEME_P_H

#include <map>
#include <MTheme>
#include <QSet>
#include <QStringList>

#include "mstyle_p.h"
#include "mthemefile_p.h"

class MThemePrivate
{
public:
    static MThemePrivate *instance() { return MTheme::instance()->d.get(); }

    MThemePrivate();

    /** Returns the style called @p name, or null. */
    const MStyle *style(const QString &name) const;

    /** Returns the style of this toolkit's own called @p name; every theme has it. */
    static const MStyle &named(const char *name);

    /** Logs, once for each name, that there is no style called @p name. */
    void warnAboutStyle(const QString &name);

    /** Returns the icon with the theme id or absolute path @p id, or a neutral one in its place. */
    static QIcon icon(const QString &id);

    /** Logs, once for each id, that there is no picture with the theme id or absolute path @p id, if so. */
    void warnIfMissing(const QString &id);

    /**
     * Returns the size that @p icon, known as @p id, is shown at by itself: that of the style that carries
     * the id's name, or of its greatest bitmap. A drawing has none of its own and takes that of the style
     * MPicture.
     */
    QSize naturalSize(const QIcon &icon, const QString &id) const;

    struct SharedPixmap
    {
        QPixmap pixmap;
        int users = 0;
    };

    MThemeFile file;
    MTheme::Variant variant = MTheme::Light;
    std::map<QString, SharedPixmap> pixmaps;

private:
    void loadFile();
    static QString path();

    QSet<QString> missingStyles;
    QSet<QString> missingIcons;
};

#endif
