// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mtheme.h"

#include <algorithm>
#include <array>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStandardPaths>

#include "support/smallfile.h"
#include "theme/mbesidelibrary_p.h"
#include "theme/mforeignicon_p.h"
#include "theme/mtheme_p.h"

namespace {

constexpr QLatin1String builtInFile(":/quenzotouchcore/theme.ini");
constexpr QLatin1String builtInIcons(":/quenzotouchcore/icons");
constexpr QLatin1String placeholder("icon-m-placeholder");
constexpr QSize probe(16, 16);

MTheme *theInstance = nullptr;

// Icons of installed applications are found on every platform plugin, and the toolkit's own come last.
void setIconPaths()
{
    QStringList themes = QIcon::themeSearchPaths();
    QStringList flat = QIcon::fallbackSearchPaths();
    const QStringList data = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const QString &folder : data) {
        themes.append(folder + QStringLiteral("/icons"));
        flat.append(folder + QStringLiteral("/pixmaps"));
    }
    themes.append(QDir::homePath() + QStringLiteral("/.icons"));
    flat.append(builtInIcons);
    themes.removeDuplicates();
    flat.removeDuplicates();
    QIcon::setThemeSearchPaths(themes);
    QIcon::setFallbackSearchPaths(flat);
    if (QIcon::themeName().isEmpty())
        QIcon::setThemeName(QStringLiteral("hicolor"));
}

} // namespace

MThemePrivate::MThemePrivate()
{
    setIconPaths();
    loadFile();
    wishedVariant = variantOfEnvironment();
    wishedReducedMotion = reducedMotionOfEnvironment();
    follow(MLook());
}

std::optional<MTheme::Variant> MThemePrivate::variantOfEnvironment()
{
    constexpr std::array names{"light", "dark", "light-contrast", "dark-contrast"};
    const QByteArray wanted = qgetenv("QUENZO_TOUCH_VARIANT");
    const auto found = std::find(names.cbegin(), names.cend(), wanted);
    if (found == names.cend())
        return std::nullopt;
    return MTheme::Variant(found - names.cbegin());
}

std::optional<bool> MThemePrivate::reducedMotionOfEnvironment()
{
    const QByteArray wanted = qgetenv("QUENZO_TOUCH_MOTION");
    if (wanted == "full" || wanted == "reduced")
        return wanted == "reduced";
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return true;
    return std::nullopt;
}

MTheme::Variant MThemePrivate::variantFor(const MLook &look) const
{
    if (wishedVariant)
        return *wishedVariant;
    const bool dark =
        file.preferredVariant().value_or(look.dark ? MTheme::Dark : MTheme::Light) == MTheme::Dark;
    if (look.highContrast)
        return dark ? MTheme::DarkContrast : MTheme::LightContrast;
    return dark ? MTheme::Dark : MTheme::Light;
}

bool MThemePrivate::follow(const MLook &look)
{
    const MTheme::Variant newVariant = variantFor(look);
    const qreal newTextScale = wishedTextScale.value_or(look.textScale);
    const bool differs = newVariant != variant || newTextScale != textScale;
    if (newTextScale != textScale)
        file.setTextScale(newTextScale);
    variant = newVariant;
    textScale = newTextScale;
    // Nothing looks different for it while it rests.
    reducedMotion = wishedReducedMotion.value_or(look.reducedMotion);
    return differs;
}

QString MThemePrivate::path()
{
    const QString given = qEnvironmentVariable("QUENZO_TOUCH_THEME");
    if (!given.isEmpty())
        return given;
    const QString name = QStringLiteral("quenzotouchcore/theme.ini");
    const QString users = QStandardPaths::locate(QStandardPaths::GenericDataLocation, name);
    if (!users.isEmpty())
        return users;
    // A library under a prefix that the session does not know brings its theme along.
    const QString own = pathBesideLibrary(QStringLiteral(DATA_FROM_LIBRARIES "/") + name);
    return QFileInfo::exists(own) ? own : QString();
}

void MThemePrivate::loadFile()
{
    QString error;
    [[maybe_unused]] const bool correct = file.read(Support::readSmallFile(builtInFile), &error);
    Q_ASSERT_X(correct, "MTheme", qPrintable(error));

    const QString theme = path();
    if (theme.isEmpty())
        return;
    MThemeFile found;
    const QByteArray data = Support::readSmallFile(theme);
    if (data.isEmpty()) {
        error = QStringLiteral("it cannot be read");
    } else if (found.read(data, &error)) {
        const QStringList doubts = found.doubts(file);
        for (const QString &doubt : doubts)
            qWarning("MTheme: theme file %s: %s", qUtf8Printable(theme), qUtf8Printable(doubt));
        found.complete(file);
        file = found;
        return;
    }
    qWarning("MTheme: cannot use theme file %s: %s", qUtf8Printable(theme), qUtf8Printable(error));
}

const MStyle *MThemePrivate::style(const QString &name) const
{
    const auto &styles = file.styles(variant);
    const auto found = styles.constFind(name);
    return found == styles.cend() ? nullptr : &*found;
}

const MStyle &MThemePrivate::ownStyle(const char *name)
{
    static const MStyle plain;
    const MStyle *found = instance()->style(QLatin1String(name));
    Q_ASSERT_X(found, "MTheme", name);
    return found ? *found : plain;
}

void MThemePrivate::warnAboutStyle(const QString &name)
{
    if (missingStyles.contains(name))
        return;
    missingStyles.insert(name);
    qWarning("MTheme: no style is called '%s'", qUtf8Printable(name));
}

QIcon MThemePrivate::findForeignIcon(const QString &id)
{
    const QFileInfo file(id);
    // Opening a pipe would wait for its writer.
    if (file.isAbsolute() ? !file.isFile() : QIcon::fromTheme(id).isNull())
        return {};
    const QString key =
        file.isAbsolute() ? QStringLiteral("%1/%2").arg(id).arg(file.lastModified().toMSecsSinceEpoch()) : id;
    if (const QIcon *known = foreignIcons.object(key))
        return *known;
    const std::optional<QIcon> icon = foreignIcon(id);
    if (!icon)
        return {};
    foreignIcons.insert(key, new QIcon(*icon));
    return *icon;
}

QIcon MThemePrivate::findIcon(const QString &id)
{
    if (!QFile::exists(QStringLiteral("%1/%2.svg").arg(builtInIcons, id)))
        return findForeignIcon(id);
    const QIcon icon = QIcon::fromTheme(id);
    // A file may be there and still hold no picture.
    return icon.pixmap(probe).isNull() ? QIcon() : icon;
}

QIcon MThemePrivate::icon(const QString &id)
{
    const QIcon found = findIcon(id);
    return found.isNull() ? QIcon::fromTheme(placeholder) : found;
}

void MThemePrivate::warnIfMissing(const QString &id)
{
    if (missingIcons.contains(id) || !findIcon(id).isNull())
        return;
    missingIcons.insert(id);
    qWarning("MTheme: no picture is called '%s'", qUtf8Printable(id));
}

QSize MThemePrivate::naturalSize(const QIcon &icon, const QString &id) const
{
    const MStyle *own = style(id);
    // Qt reads all of an icon's files to find out.
    const QList<QSize> sizes = own ? QList<QSize>() : icon.availableSizes();
    if (!sizes.isEmpty()) {
        return *std::max_element(
            sizes.cbegin(), sizes.cend(),
            [](const QSize &one, const QSize &other) { return one.width() < other.width(); });
    }
    const MStyle &size = own ? *own : ownStyle("MPicture");
    return icon.pixmap(QSizeF(size.width, size.height).toSize()).deviceIndependentSize().toSize();
}

MTheme::MTheme() : d(std::make_unique<MThemePrivate>())
{
    d->system = new MSystemLook(this);
    connect(d->system, &MSystemLook::changed, this, &MTheme::follow);
    qAddPostRoutine([] {
        delete theInstance;
        theInstance = nullptr;
    });
}

MTheme::~MTheme() = default;

MTheme *MTheme::instance()
{
    if (!theInstance)
        theInstance = new MTheme;
    return theInstance;
}

MTheme::Variant MTheme::variant() const
{
    return d->variant;
}

void MTheme::follow()
{
    if (d->follow(d->system->look()))
        Q_EMIT changed();
}

void MTheme::setVariant(Variant variant)
{
    d->wishedVariant = variant;
    follow();
}

qreal MTheme::textScale() const
{
    return d->textScale;
}

void MTheme::setTextScale(qreal scale)
{
    d->wishedTextScale = MSystemLook::legible(scale);
    follow();
}

bool MTheme::isMotionReduced() const
{
    return d->reducedMotion;
}

const QPixmap *MTheme::pixmap(const QString &id)
{
    MThemePrivate *d = MThemePrivate::instance();
    MThemePrivate::SharedPixmap &shared = d->pixmaps[id];
    if (shared.users++ == 0) {
        const QIcon icon = d->icon(id);
        d->warnIfMissing(id);
        shared.pixmap = icon.pixmap(d->naturalSize(icon, id), qGuiApp->devicePixelRatio());
    }
    return &shared.pixmap;
}

void MTheme::releasePixmap(const QPixmap *pixmap)
{
    // Handed back by an object that outlived the theme.
    if (!theInstance)
        return;
    auto &pixmaps = theInstance->d->pixmaps;
    for (auto shared = pixmaps.begin(); shared != pixmaps.end(); ++shared) {
        if (&shared->second.pixmap == pixmap && --shared->second.users == 0) {
            pixmaps.erase(shared);
            return;
        }
    }
}

QPixmap MTheme::foreignPixmap(const QString &path)
{
    return MThemePrivate::instance()->findForeignIcon(path).pixmap(foreignIconSize, 1);
}

void MTheme::drawForeignImage(const QString &id, QObject *context,
                              const std::function<void(const QImage &)> &then)
{
    // The places to look in belong to the theme.
    instance();
    ::drawForeignImage(id, context, then);
}
