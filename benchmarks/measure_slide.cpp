// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// A question that slides in: a frame of it against plain items of the same look, the longest frame against
// the time that a screen gives, and the frames of a whole slide. Then the same on a screen with many pixels.
#include <algorithm>

#include <QApplication>
#include <QElapsedTimer>
#include <QGraphicsPathItem>
#include <QGraphicsScene>
#include <QGraphicsTextItem>
#include <QGraphicsView>
#include <QPainterPath>
#include <QProcess>
#include <QTextDocument>

#include <MMessageBox>
#include <MWindow>

#include "measurement.h"

using namespace Measurement;

namespace {

constexpr int frames = 13;             // in 220 ms at 60 Hz
constexpr double frameTime = 1e9 / 60; // ns
constexpr int slideTime = 220;         // ms

/** A screen, what its lines are called, and the goal of a frame. */
struct Screen
{
    QRectF area;
    std::string name;
    Goal goal;
};

const Screen plain{{0, 0, 480, 854}, "", {.atMost = 1.25}};
// Qt blends the shade of the plain items on threads of its own, whose time is not counted.
const Screen dense{{0, 0, 360, 800}, ", 1080 by 2400 pixels at scale 3", {.atMost = 2}};

const auto title = QStringLiteral("Open web link?");
const auto text = QStringLiteral("The tag leads to the timetable of the bus that stops here. "
                                 "www.example.org/timetable/stop/4711");

/** A card of plain items. */
struct BareCard
{
    explicit BareCard(const QRectF &screen)
    {
        view.setScene(&scene);
        view.setSceneRect(screen);
        view.setFrameShape(QFrame::NoFrame);
        view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setRenderHint(QPainter::Antialiasing);
        view.resize(screen.size().toSize());
        scene.addRect(screen, Qt::NoPen, QColor(0x10, 0x17, 0x28, 0x73));
        const QRectF place(12, screen.bottom() - 334, screen.width() - 24, 322);
        const QRectF button(36, place.top() + 170, screen.width() - 72, 56);
        card = addPanel(nullptr, place, 32, Qt::white);
        addText(card, title, place.top() + 20);
        addText(card, text, place.top() + 60);
        addText(addPanel(card, button, 28, Qt::blue), QStringLiteral("Open"), button.top() + 10);
        addText(addPanel(card, button.translated(0, 68), 28, Qt::lightGray), QStringLiteral("Discard"),
                button.top() + 78);
    }

    QGraphicsItem *addPanel(QGraphicsItem *parent, const QRectF &place, qreal radius, const QColor &color)
    {
        QPainterPath path;
        path.addRoundedRect(place, radius, radius);
        QGraphicsPathItem *panel = scene.addPath(path, Qt::NoPen, color);
        panel->setParentItem(parent);
        return panel;
    }

    void addText(QGraphicsItem *parent, const QString &words, qreal top)
    {
        auto *item = new QGraphicsTextItem(words, parent);
        item->setTextWidth(view.sceneRect().width() - 100);
        item->setPos(50, top);
    }

    QGraphicsScene scene;
    QGraphicsView view;
    QGraphicsItem *card;
};

/** A question in a window of its own. */
struct Card
{
    explicit Card(const QRectF &screen)
    {
        window.resize(screen.size().toSize());
        window.show();
        question.button(M::YesButton)->setText(QStringLiteral("Open"));
        question.button(M::NoButton)->setText(QStringLiteral("Discard"));
    }

    /** Returns what slides. */
    QGraphicsItem *card() const { return question.childItems().constFirst(); }

    MWindow window;
    MMessageBox question{title, text, M::YesButton | M::NoButton};
};

// All of it, which is more than what moved, and now, not when the platform's next frame is due.
void paint(QGraphicsView *view)
{
    view->viewport()->repaint();
}

std::vector<double> slide(QGraphicsView *view, QGraphicsItem *card)
{
    std::vector<double> times;
    for (int i = frames; i-- > 0;) {
        card->setTransform(QTransform::fromTranslate(0, view->sceneRect().height() * i / frames));
        QCoreApplication::processEvents();
        times.push_back(processorTime([view] { paint(view); }));
    }
    return times;
}

double oneFrame(QGraphicsView *view, QGraphicsItem *card)
{
    return quantile(slide(view, card), 0.5);
}

/** Counts the frames that a window draws. */
class FrameCounter : public QObject
{
public:
    explicit FrameCounter(QWidget *viewport) { viewport->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++drawn;
        return false;
    }
    int drawn = 0;
};

void waitFor(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
}

// Lets the question come in by itself, and returns how many frames that took.
double drawnFrames(Card *card)
{
    card->question.appear(&card->window);
    const FrameCounter counter(card->window.viewport());
    waitFor(slideTime);
    card->question.disappear();
    return counter.drawn;
}

void measure(const Screen &screen)
{
    BareCard bare(screen.area);
    bare.view.show();
    paint(&bare.view);
    Card card(screen.area);
    if (!countsInstructions()) {
        Samples drawn{"slides", {}};
        for (int i = 0; i < rounds(20); ++i)
            drawn.values.push_back(drawnFrames(&card));
        print("Frames of a question that slides in" + screen.name, "", "60 Hz", frames, "MDialog",
              quantile(drawn.values, 0.5), {.atLeast = 0.9});
    }
    card.question.appear(&card.window);
    paint(&card.window);
    waitFor(slideTime * 2);
    compare("A frame of a sliding question" + screen.name,
            {"QGraphicsView", [&] { return oneFrame(&bare.view, bare.card); }},
            {"MDialog", [&] { return oneFrame(&card.window, card.card()); }}, screen.goal, 100);
    if (countsInstructions())
        return;
    std::vector<double> longest;
    for (int i = 0; i < rounds(100); ++i) {
        const std::vector<double> times = slide(&card.window, card.card());
        longest.push_back(*std::max_element(times.cbegin(), times.cend()));
    }
    print("The longest frame of a sliding question" + screen.name, "ns", "limit", frameTime, "MDialog",
          quantile(longest, 1), {.atMost = 1});
}

} // namespace

int main(int argc, char **argv)
{
    // Otherwise nothing slides where nobody looks.
    qputenv("QUENZO_TOUCH_MOTION", "full");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    begin(argc, argv);

    const bool isDense = QApplication::arguments().contains(QStringLiteral("dense"));
    measure(isDense ? dense : plain);
    if (isDense || countsInstructions())
        return 0;
    // Qt reads the scale when a program starts.
    qputenv("QT_SCALE_FACTOR", "3");
    return QProcess::execute(QApplication::applicationFilePath(), QApplication::arguments().mid(1)
                                                                      << QStringLiteral("dense"));
}
