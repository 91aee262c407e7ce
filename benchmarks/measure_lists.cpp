// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// The choice among applications, with twenty of them and with ten thousand: how long until it is seen, and
// what a frame costs while it scrolls.
#include <QAbstractItemModel>
#include <QApplication>
#include <QGraphicsLayout>
#include <QWheelEvent>

#include <MList>
#include <MWindow>
#include <NfcApplicationSelectionDialog>

#include "applicationsfolder.h"
#include "catalogue.h"
#include "measurement.h"

using ConnUi::NfcApplicationSelectionDialog;
using namespace Measurement;

namespace {

constexpr int few = 20;
constexpr int many = 10000;
constexpr int frames = 40;

QStringList installed(const ApplicationsFolder &folder, int count)
{
    QStringList ids;
    for (int i = 0; i < count; ++i) {
        ids.append(QStringLiteral("application%1").arg(i));
        folder.install(ids.last(), QStringLiteral("Application %1").arg(i),
                       QStringLiteral("icon-m-service-nfc"));
    }
    return ids;
}

/** A phone's screen, which is painted when asked. */
class Screen : public MWindow
{
public:
    Screen()
    {
        resize(480, 854);
        show();
        QCoreApplication::processEvents();
    }

    void paint() { viewport()->repaint(); }

    void scroll(int pixels)
    {
        const QPoint middle = viewport()->rect().center();
        QWheelEvent event(middle, viewport()->mapToGlobal(middle), {}, QPoint(0, -pixels), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(viewport(), &event);
    }
};

std::unique_ptr<NfcApplicationSelectionDialog> open(Screen *screen, const QStringList &applications)
{
    auto dialog = std::make_unique<NfcApplicationSelectionDialog>(applications, 0);
    dialog->appear(screen);
    QCoreApplication::sendPostedEvents();
    screen->paint();
    return dialog;
}

double openingTime(Screen *screen, const QStringList &applications)
{
    std::unique_ptr<NfcApplicationSelectionDialog> dialog;
    return processorTime([&] { dialog = open(screen, applications); });
}

double frameTime(Screen *screen, const QStringList &applications)
{
    const auto dialog = open(screen, applications);
    const auto *list = dynamic_cast<MList *>(dialog->centralWidget()->layout()->itemAt(1));
    while (list->itemModel()->rowCount() < applications.size())
        QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    return processorTime([screen] {
               for (int i = 0; i < frames; ++i) {
                   screen->scroll(15);
                   screen->paint();
               }
           }) /
           frames;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    begin(argc, argv);
    const Catalogue catalogue;
    const ApplicationsFolder folder;
    const QStringList all = installed(folder, many);
    const QStringList some = all.mid(0, few);
    Screen screen;

    compare("Opening a list of applications", {"20", [&] { return openingTime(&screen, some); }},
            {"10,000", [&] { return openingTime(&screen, all); }}, {.atMost = 2}, 50);
    compare("A frame of scrolling applications", {"20", [&] { return frameTime(&screen, some); }},
            {"10,000", [&] { return frameTime(&screen, all); }}, {.atMost = 1.5}, 20);
}
