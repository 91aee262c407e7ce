// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <array>
#include <utility>
#include <variant>

#include "support/keyfile.h"
#include "theme/mthemefile_p.h"

namespace {

using Support::KeyFile;
using Palette = QHash<QString, QColor>;
using Field = std::variant<qreal MStyle::*, bool MStyle::*, QColor MStyle::*, QMarginsF MStyle::*>;

// The groups that are not styles, and the key that takes over another style.
constexpr auto themeGroup = "Theme";
// A high-contrast variant changes those colors of its base that are too quiet.
struct PaletteGroup
{
    const char *name;
    const char *base;
};
// In the order of the variants.
constexpr std::array<PaletteGroup, 4> paletteGroups{
    {{"Light", nullptr}, {"Dark", nullptr}, {"LightContrast", "Light"}, {"DarkContrast", "Dark"}}};
constexpr auto inheritsKey = "inherits";
// Deeper than any style needs; a circle of styles ends here.
constexpr int maximumInheritance = 16;
// Greater than any screen, and safe to calculate with.
constexpr qreal maximumNumber = 10000;

const QHash<QString, Field> &fields()
{
    static const QHash<QString, Field> fields{
        {QStringLiteral("font-size"), &MStyle::fontSize},
        {QStringLiteral("font-weight"), &MStyle::fontWeight},
        {QStringLiteral("line-height"), &MStyle::lineHeight},
        {QStringLiteral("word-wrap"), &MStyle::wordWrap},
        {QStringLiteral("elide"), &MStyle::elide},
        {QStringLiteral("margins"), &MStyle::margins},
        {QStringLiteral("spacing"), &MStyle::spacing},
        {QStringLiteral("width"), &MStyle::width},
        {QStringLiteral("height"), &MStyle::height},
        {QStringLiteral("minimum-width"), &MStyle::minimumWidth},
        {QStringLiteral("minimum-height"), &MStyle::minimumHeight},
        {QStringLiteral("maximum-width"), &MStyle::maximumWidth},
        {QStringLiteral("bottom"), &MStyle::bottom},
        {QStringLiteral("radius"), &MStyle::radius},
        {QStringLiteral("border-width"), &MStyle::borderWidth},
        {QStringLiteral("stroke-width"), &MStyle::strokeWidth},
        {QStringLiteral("glyph"), &MStyle::glyph},
        {QStringLiteral("focus-width"), &MStyle::focusWidth},
        {QStringLiteral("focus-gap"), &MStyle::focusGap},
        {QStringLiteral("duration"), &MStyle::duration},
        {QStringLiteral("color"), &MStyle::color},
        {QStringLiteral("background"), &MStyle::background},
        {QStringLiteral("border"), &MStyle::border},
        {QStringLiteral("focus"), &MStyle::focus},
        {QStringLiteral("disabled-color"), &MStyle::disabledColor},
        {QStringLiteral("disabled-background"), &MStyle::disabledBackground},
        {QStringLiteral("pressed-background"), &MStyle::pressedBackground},
        {QStringLiteral("checked-color"), &MStyle::checkedColor},
        {QStringLiteral("checked-background"), &MStyle::checkedBackground},
    };
    return fields;
}

bool readValue(const QString &text, const Palette &, qreal *number)
{
    bool ok = false;
    *number = text.toDouble(&ok);
    return ok && *number >= -1 && *number <= maximumNumber;
}

bool readValue(const QString &text, const Palette &, bool *flag)
{
    *flag = text == QLatin1String("true");
    return *flag || text == QLatin1String("false");
}

bool readValue(const QString &text, const Palette &palette, QColor *color)
{
    *color = palette.value(text);
    return palette.contains(text);
}

// Top, right, bottom and left, separated by blanks.
bool readValue(const QString &text, const Palette &palette, QMarginsF *margins)
{
    const QStringList parts = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    std::array<qreal, 4> sides{};
    if (parts.size() != int(sides.size()))
        return false;
    for (size_t i = 0; i < sides.size(); ++i)
        if (!readValue(parts.at(int(i)), palette, &sides[i]))
            return false;
    *margins = QMarginsF(sides[3], sides[0], sides[1], sides[2]);
    return true;
}

bool setField(MStyle *style, const Field &field, const QString &text, const Palette &palette)
{
    return std::visit([&](auto member) { return readValue(text, palette, &(style->*member)); }, field);
}

bool readPalette(const KeyFile &file, const QString &group, Palette *palette, QString *error)
{
    palette->insert(QStringLiteral("none"), QColor(Qt::transparent));
    const QStringList names = file.keys(group);
    for (const QString &name : names) {
        const QColor color(file.value(group, name));
        if (!color.isValid()) {
            *error = QStringLiteral("[%1] %2 is not a color").arg(group, name);
            return false;
        }
        palette->insert(name, color);
    }
    return true;
}

bool readStyle(const KeyFile &file, const QString &group, const Palette &palette, MStyle *style,
               QString *error, int depth = 0)
{
    const QStringList names = file.keys(group);
    const QString inherits = QLatin1String(inheritsKey);
    if (names.contains(inherits)) {
        const QString base = file.value(group, inherits);
        if (!file.hasGroup(base) || depth == maximumInheritance) {
            *error = QStringLiteral("[%1] inherits nothing from %2").arg(group, base);
            return false;
        }
        if (!readStyle(file, base, palette, style, error, depth + 1))
            return false;
    }
    for (const QString &name : names) {
        if (name == inherits)
            continue;
        const auto field = fields().constFind(name);
        // Lines that do not advance would stand on one another.
        if (field == fields().cend() || !setField(style, *field, file.value(group, name), palette) ||
            style->lineHeight <= 0) {
            *error = QStringLiteral("[%1] %2 is not understood").arg(group, name);
            return false;
        }
    }
    return true;
}

QFont fontOf(const MStyle &style, const QStringList &families)
{
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(qMax(1, qRound(style.fontSize)));
    font.setWeight(QFont::Weight(qBound(1, qRound(style.fontWeight), 1000)));
    return font;
}

} // namespace

bool MThemeFile::read(const QByteArray &data, QString *error)
{
    KeyFile file;
    *error = file.read(data);
    if (!error->isEmpty())
        return false;

    families = file.value(QLatin1String(themeGroup), QStringLiteral("font-families"))
                   .split(QLatin1Char(';'), Qt::SkipEmptyParts);
    const QString preferred = file.value(QLatin1String(themeGroup), QStringLiteral("variant"));
    this->preferred.reset();
    if (preferred == QLatin1String("light") || preferred == QLatin1String("dark"))
        this->preferred = preferred == QLatin1String("dark") ? MTheme::Dark : MTheme::Light;

    QStringList styles = file.groups();
    styles.removeAll(QLatin1String(themeGroup));
    for (const PaletteGroup &palette : paletteGroups)
        hasColors = styles.removeAll(QLatin1String(palette.name)) > 0 || hasColors;
    for (const QString &name : std::as_const(styles))
        inherited.insert(file.value(name, QLatin1String(inheritsKey)));
    for (size_t variant = 0; variant < variants.size(); ++variant) {
        const PaletteGroup &group = paletteGroups[variant];
        Palette palette;
        if (group.base && !readPalette(file, QLatin1String(group.base), &palette, error))
            return false;
        if (!readPalette(file, QLatin1String(group.name), &palette, error))
            return false;
        for (const QString &name : std::as_const(styles)) {
            MStyle style;
            if (!readStyle(file, name, palette, &style, error))
                return false;
            style.font = fontOf(style, families);
            variants[variant].insert(name, style);
        }
    }
    return true;
}

void MThemeFile::setTextScale(qreal scale)
{
    for (QHash<QString, MStyle> &styles : variants)
        for (MStyle &style : styles)
            style.font.setPixelSize(qMax(1, qRound(style.fontSize * scale)));
}

QStringList MThemeFile::doubts(const MThemeFile &other) const
{
    const QHash<QString, MStyle> &own = styles(MTheme::Light);
    if (own.isEmpty() && hasColors)
        return {QStringLiteral("it has no style that its colors could be seen in")};
    QStringList doubts;
    for (auto style = own.cbegin(); style != own.cend(); ++style)
        if (!other.styles(MTheme::Light).contains(style.key()) && !inherited.contains(style.key()))
            doubts.append(QStringLiteral("[%1] is not a known style").arg(style.key()));
    doubts.sort();
    return doubts;
}

void MThemeFile::complete(const MThemeFile &other)
{
    for (size_t variant = 0; variant < variants.size(); ++variant) {
        QHash<QString, MStyle> all = other.variants[variant];
        all.insert(variants[variant]);
        variants[variant] = all;
    }
}
