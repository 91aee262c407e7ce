// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// nfc-gallery --screenshots DIR [NAME...]: writes pictures of all that the library shows, in light and dark,
// or of those whose names begin like an argument; of each class one, in light, for the API reference with
// --reference DIR. Needs no display and no daemon.

#include <algorithm>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTranslator>

#include <MTheme>

#include "pictures.h"
#include "promptpictures.h"
#include "referencepictures.h"
#include "tagpictures.h"

namespace {

bool take(const QList<Picture> &pictures, const QDir &folder, const QString &suffix = QString())
{
    for (const Picture &picture : pictures) {
        const QString file = folder.filePath(picture.name + suffix + QStringLiteral(".png"));
        if (!picture.take().save(file)) {
            qWarning("nfc-gallery: cannot write %s", qUtf8Printable(file));
            return false;
        }
    }
    return true;
}

bool takeBothLooks(const QList<Picture> &pictures, const QDir &folder)
{
    MTheme::instance()->setVariant(MTheme::Light);
    if (!take(pictures, folder, QStringLiteral("-light")))
        return false;
    MTheme::instance()->setVariant(MTheme::Dark);
    return take(pictures, folder, QStringLiteral("-dark"));
}

QList<Picture> withNames(const QList<Picture> &pictures, const QStringList &beginnings)
{
    if (beginnings.isEmpty())
        return pictures;
    QList<Picture> wanted;
    std::copy_if(pictures.begin(), pictures.end(), std::back_inserter(wanted), [&](const Picture &picture) {
        return std::any_of(beginnings.begin(), beginnings.end(),
                           [&](const QString &beginning) { return picture.name.startsWith(beginning); });
    });
    return wanted;
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QTranslator texts;
    if (texts.load(QCoreApplication::applicationDirPath() +
                   QStringLiteral("/../share/connui-nfc/translations/connui-nfc_en")))
        QCoreApplication::installTranslator(&texts);

    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption screenshots(QStringLiteral("screenshots"),
                                         QStringLiteral("Write the pictures into <folder>."),
                                         QStringLiteral("folder"));
    const QCommandLineOption reference(QStringLiteral("reference"),
                                       QStringLiteral("Write those of the API reference into <folder>."),
                                       QStringLiteral("folder"));
    parser.addOptions({screenshots, reference});
    parser.addPositionalArgument(QStringLiteral("name"),
                                 QStringLiteral("Write only the pictures whose names begin like this."),
                                 QStringLiteral("[name...]"));
    parser.process(application);
    const bool forReference = parser.isSet(reference);
    if (!forReference && !parser.isSet(screenshots))
        parser.showHelp(64);

    const QDir folder(parser.value(forReference ? reference : screenshots));
    if (!folder.mkpath(QStringLiteral(".")))
        return 1;
    const QList<Picture> all = pictures() + promptPictures() + tagPictures();
    const bool written = forReference ? take(referencePictures(all), folder)
                                      : takeBothLooks(withNames(all, parser.positionalArguments()), folder);
    return written ? 0 : 1;
}
