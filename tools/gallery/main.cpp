// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Shows what the touch toolkit has: gallery [--dark] [--rtl] [--landscape], where Escape leads to the next
// page, or gallery --screenshots DIR, which writes a picture of every page in every look and needs no
// display.

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QPixmap>

#include <MSceneWindow>
#include <MTheme>
#include <MWindow>

#include "pages.h"

namespace {

struct Look
{
    MTheme::Variant variant;
    Qt::LayoutDirection direction;
    bool landscape;

    QString name() const
    {
        return QStringLiteral("%1-%2-%3")
            .arg(variant == MTheme::Dark ? QStringLiteral("dark") : QStringLiteral("light"),
                 landscape ? QStringLiteral("landscape") : QStringLiteral("portrait"),
                 direction == Qt::RightToLeft ? QStringLiteral("rtl") : QStringLiteral("ltr"));
    }
};

void applyLook(MWindow *window, const Look &look)
{
    MTheme::instance()->setVariant(look.variant);
    QGuiApplication::setLayoutDirection(look.direction);
    window->resize(look.landscape ? window->sizeHint().transposed() : window->sizeHint());
}

bool takePictures(const QDir &folder, const Look &look)
{
    MWindow window;
    applyLook(&window, look);
    window.show();
    const QList<Page> all = pages();
    for (const Page &page : all) {
        MSceneWindow *shown = page.make();
        shown->appear(&window, MSceneWindow::DestroyWhenDone);
        QCoreApplication::processEvents();
        const QString file = folder.filePath(QStringLiteral("%1-%2.png").arg(page.name, look.name()));
        const bool saved = window.grab().save(file);
        shown->disappear();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (!saved) {
            qWarning("gallery: cannot write %s", qUtf8Printable(file));
            return false;
        }
    }
    return true;
}

bool takeAllPictures(const QDir &folder)
{
    for (const MTheme::Variant variant : {MTheme::Light, MTheme::Dark}) {
        for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            for (const bool landscape : {false, true})
                if (!takePictures(folder, {variant, direction, landscape}))
                    return false;
        }
    }
    return true;
}

void showNext(MWindow *window, qsizetype number)
{
    const QList<Page> all = pages();
    MSceneWindow *page = all.at(number % all.size()).make();
    QObject::connect(page, &MSceneWindow::disappeared, window,
                     [window, number] { showNext(window, number + 1); });
    page->appear(window, MSceneWindow::DestroyWhenDone);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({QStringLiteral("dark"), QStringLiteral("Show the dark variant.")});
    parser.addOption({QStringLiteral("rtl"), QStringLiteral("Lay out from right to left.")});
    parser.addOption({QStringLiteral("landscape"), QStringLiteral("Show a window that is wider than high.")});
    parser.addOption({QStringLiteral("screenshots"),
                      QStringLiteral("Write pictures of all pages into <folder>."),
                      QStringLiteral("folder")});
    parser.process(application);

    if (parser.isSet(QStringLiteral("screenshots"))) {
        const QDir folder(parser.value(QStringLiteral("screenshots")));
        return folder.mkpath(QStringLiteral(".")) && takeAllPictures(folder) ? 0 : 1;
    }
    MWindow window;
    applyLook(&window, {parser.isSet(QStringLiteral("dark")) ? MTheme::Dark : MTheme::Light,
                        parser.isSet(QStringLiteral("rtl")) ? Qt::RightToLeft : Qt::LeftToRight,
                        parser.isSet(QStringLiteral("landscape"))});
    window.show();
    showNext(&window, 0);
    return QApplication::exec();
}
