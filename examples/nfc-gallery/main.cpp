// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// nfc-gallery --screenshots DIR: writes pictures of the settings, of the sheet for a file that arrives, of
// the banner and of the questions about tags, in light and dark. Needs no display and no daemon.

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTranslator>

#include <MTheme>

#include "pictures.h"
#include "tagpictures.h"

namespace {

bool takePictures(const QDir &folder, MTheme::Variant variant)
{
    MTheme::instance()->setVariant(variant);
    const QString look = variant == MTheme::Dark ? QStringLiteral("dark") : QStringLiteral("light");
    const QList<Picture> all = pictures() + tagPictures();
    for (const Picture &picture : all) {
        const QString file = folder.filePath(QStringLiteral("%1-%2.png").arg(picture.name, look));
        if (!picture.take().save(file)) {
            qWarning("nfc-gallery: cannot write %s", qUtf8Printable(file));
            return false;
        }
    }
    return true;
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
    parser.addOption(screenshots);
    parser.process(application);
    if (!parser.isSet(screenshots))
        parser.showHelp(64);

    const QDir folder(parser.value(screenshots));
    const bool written = folder.mkpath(QStringLiteral(".")) && takePictures(folder, MTheme::Light) &&
                         takePictures(folder, MTheme::Dark);
    return written ? 0 : 1;
}
