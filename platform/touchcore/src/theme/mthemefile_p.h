// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MTHEMEFILE_P_H
#define MTHEMEFILE_P_H

#include <array>
#include <optional>

#include <QHash>
#include <QSet>
#include <QStringList>

#include <MTheme>

#include "theme/mstyle_p.h"

/** A theme file that has been read: every style in every variant. */
class MThemeFile
{
public:
    /**
     * Reads the theme in \a data, a key file. Returns whether it is without mistakes; otherwise \a error says
     * what is wrong in it, and the object is not to be used.
     */
    bool read(const QByteArray &data, QString *error);

    /**
     * Returns what looks like a mistake in a file that can be used: styles that \a other does not know and no
     * other style inherits, or no style at all.
     */
    QStringList doubts(const MThemeFile &other) const;

    /** Takes the styles that this file lacks from \a other. */
    void complete(const MThemeFile &other);

    /** Makes all texts larger by \a scale than the file says. */
    void setTextScale(qreal scale);

    /** Returns Light or Dark where the file says that it is made for that one only. */
    std::optional<MTheme::Variant> preferredVariant() const { return preferred; }
    const QHash<QString, MStyle> &styles(MTheme::Variant variant) const { return variants[variant]; }

private:
    QStringList families;
    QSet<QString> inherited;
    bool hasColors = false;
    std::optional<MTheme::Variant> preferred;
    std::array<QHash<QString, MStyle>, 4> variants;
};

#endif
