// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <array>
#include <utility>

#include <QElapsedTimer>
#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>

#include <MButton>
#include <MButtonModel>

#include "scene/mdialog_p.h"
#include "scene/minputguard_p.h"
#include "widgets/mbutton_p.h"

namespace {

// Input that seems to be later than that has its times from another clock than the rest.
constexpr qint64 longestLag = 10000; // ms

qint64 systemTime()
{
    static const QElapsedTimer timer = [] {
        QElapsedTimer started;
        started.start();
        return started;
    }();
    return timer.elapsed();
}

MInputGuard::Clock &currentClock()
{
    static MInputGuard::Clock clock = systemTime;
    return clock;
}

struct Stamp
{
    enum Source { Pointer, Keys, Count };

    Source source;
    qint64 time;
};

std::optional<Stamp> stampOf(const QEvent *event)
{
    switch (event->type()) {
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseMove:
    case QEvent::GraphicsSceneMouseRelease:
    case QEvent::GraphicsSceneMouseDoubleClick:
        return Stamp{Stamp::Pointer,
                     qint64(static_cast<const QGraphicsSceneMouseEvent *>(event)->timestamp())};
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return Stamp{Stamp::Keys, qint64(static_cast<const QKeyEvent *>(event)->timestamp())};
    default:
        return std::nullopt;
    }
}

// Each windowing system counts from another beginning. The event with the least delay shows how far it is
// from our clock's.
std::array<std::optional<qint64>, Stamp::Count> &offsets()
{
    static std::array<std::optional<qint64>, Stamp::Count> offsets;
    return offsets;
}

bool isRefusal(const QEvent *event)
{
    const int key = static_cast<const QKeyEvent *>(event)->key();
    return key == Qt::Key_Escape || key == Qt::Key_Back;
}

} // namespace

MInputGuard::MInputGuard(MDialogPrivate *dialog) : dialog(dialog)
{
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &MInputGuard::ripen);
}

void MInputGuard::setClock(const Clock &clock)
{
    currentClock() = clock ? clock : systemTime;
    offsets().fill(std::nullopt);
}

void MInputGuard::note(const QEvent *event)
{
    const std::optional<Stamp> stamp = stampOf(event);
    if (!stamp)
        return;
    std::optional<qint64> &offset = offsets()[stamp->source];
    const qint64 late = currentClock()() - stamp->time;
    offset = offset ? qMin(*offset, late) : late;
}

void MInputGuard::setDelay(int milliseconds)
{
    wanted = qMax(0, milliseconds);
    restart();
}

void MInputGuard::restart()
{
    timer.stop();
    ripe = false;
    seenSince.reset();
    activeSince.reset();
    showWaiting();
}

void MInputGuard::follow()
{
    if (wanted > 0 && seenSince && buttons() != seen)
        restart();
}

void MInputGuard::drawn()
{
    if (wanted == 0)
        return;
    follow();
    const qint64 now = currentClock()();
    if (!seenSince) {
        seen = buttons();
        seenSince = now;
        timer.start(wanted);
    } else if (ripe && !activeSince) {
        activeSince = now;
    }
}

void MInputGuard::ripen()
{
    follow();
    if (!seenSince || ripe)
        return;
    const qint64 rest = *seenSince + wanted - currentClock()();
    if (rest > 0) {
        timer.start(int(rest));
        return;
    }
    ripe = true;
    showWaiting();
}

bool MInputGuard::takes(const QEvent *event) const
{
    switch (event->type()) {
    case QEvent::KeyPress:
        if (isRefusal(event))
            return true;
        break;
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseDoubleClick:
    case QEvent::GraphicsSceneMouseRelease:
        break;
    default:
        return true;
    }
    if (wanted == 0)
        return true;
    if (!activeSince || buttons() != seen)
        return false;
    const Stamp stamp = *stampOf(event);
    const std::optional<qint64> offset = offsets()[stamp.source];
    const qint64 lag = offset ? currentClock()() - stamp.time - *offset : 0;
    return lag > longestLag || currentClock()() - lag >= *activeSince;
}

QList<MInputGuard::Seen> MInputGuard::buttons() const
{
    QList<Seen> found;
    for (const MButtonModel *model : std::as_const(dialog->models)) {
        const MButton *view = dialog->views.value(model);
        found.append({model, view->text(), view->sceneBoundingRect()});
    }
    return found;
}

void MInputGuard::showWaiting()
{
    for (MButton *view : std::as_const(dialog->views))
        MButtonPrivate::of(view)->setWaiting(isWaiting());
    // The next frame is the one that counts.
    dialog->q->update();
}
