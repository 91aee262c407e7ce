// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// quenzotouchcore-draw-icon ID THEME FALLBACK-THEME THEME-FOLDERS OTHER-FOLDERS
//
// Reads the icon with the theme id or absolute path ID and writes its picture, as large as the toolkit shows
// it at most, and the sizes that there are bitmaps in. Folders are a line each. The library starts it for
// icons of others: it ends by itself when an icon takes too much.

#include <sys/resource.h>

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QIcon>
#include <QImage>

#include "theme/mforeignicon_p.h"

namespace {

constexpr rlim_t seconds = 1;
[[maybe_unused]] constexpr rlim_t bytes = rlim_t(512) << 20;

void limit(__rlimit_resource resource, rlim_t value)
{
    const rlimit both{value, value};
    setrlimit(resource, &both);
}

} // namespace

int main(int argc, char *argv[])
{
    limit(RLIMIT_CPU, seconds);
    limit(RLIMIT_CORE, 0);
#ifndef __SANITIZE_ADDRESS__
    limit(RLIMIT_AS, bytes);
#endif
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 6)
        return 64;
    const QString &id = arguments.at(1);
    QIcon::setThemeSearchPaths(arguments.at(4).split(QLatin1Char('\n')));
    QIcon::setFallbackSearchPaths(arguments.at(5).split(QLatin1Char('\n')));
    QIcon::setFallbackThemeName(arguments.at(3));
    QIcon::setThemeName(arguments.at(2));
    const QIcon icon = QDir::isAbsolutePath(id) ? QIcon(id) : QIcon::fromTheme(id);

    QFile output;
    if (!output.open(stdout, QIODevice::WriteOnly))
        return 1;
    QDataStream stream(&output);
    stream << icon.pixmap(foreignIconSize, 1).toImage() << icon.availableSizes();
    return stream.status() == QDataStream::Ok && output.flush() ? 0 : 1;
}
