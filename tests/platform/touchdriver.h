// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef CONNUI_TOUCHDRIVER_H
#define CONNUI_TOUCHDRIVER_H

#include <QCoreApplication>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QPointer>
#include <QPointF>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

/**
 * A finger, a wheel and a keyboard at a window that is shown. Events take the way of those from the window
 * system, and their times are the driver's own: they separate a flick from a drag, and a double tap from two
 * taps, however slow the machine is. An event may lead to the deletion of the window.
 */
class TouchDriver
{
public:
    explicit TouchDriver(QGraphicsView *window) : window(window) {}

    /** Returns the middle of \a item, in the window. */
    QPointF at(const QGraphicsItem *item) const
    {
        return window->mapFromScene(item->sceneBoundingRect().center());
    }

    /** Returns the time of the last event in milliseconds, or how long was waited since. */
    static int time() { return now(); }

    /** Lets so many milliseconds pass before the next event. */
    TouchDriver &wait(int milliseconds)
    {
        // Far from where it would overflow, after many days.
        now() = (now() + milliseconds) % (1 << 30);
        return *this;
    }

    TouchDriver &press(const QPointF &place, Qt::MouseButton button = Qt::LeftButton)
    {
        pressed = button;
        finger = place;
        send(QEvent::MouseButtonPress);
        return *this;
    }

    /** Moves the finger there on a straight line, in ten steps. Contents follow from the event loop. */
    TouchDriver &move(const QPointF &place, int milliseconds = 200)
    {
        const QPointF start = finger;
        for (int step = 1; step <= steps; ++step) {
            wait(milliseconds / steps);
            finger = start + (place - start) * step / steps;
            send(QEvent::MouseMove);
        }
        return *this;
    }

    TouchDriver &lift()
    {
        wait(shortTime);
        send(QEvent::MouseButtonRelease);
        return *this;
    }

    /** Presses and lifts at once, long after anything else. */
    TouchDriver &tap(const QPointF &place, Qt::MouseButton button = Qt::LeftButton)
    {
        return wait(longTime).press(place, button).lift();
    }
    TouchDriver &tap(const QGraphicsItem *item) { return tap(at(item)); }

    /** Moves fast enough for the contents to go on moving by themselves. */
    TouchDriver &flick(const QPointF &from, const QPointF &to)
    {
        return wait(longTime).press(from).move(to, 10 * steps).lift();
    }

    /** Turns the wheel by \a angle eighths of a degree: 120 is one notch, away from the user or to the left.
     */
    TouchDriver &wheel(const QPointF &place, int angle, Qt::Orientation orientation = Qt::Vertical)
    {
        const QPoint delta = orientation == Qt::Vertical ? QPoint(0, angle) : QPoint(angle, 0);
        QWheelEvent event(place, window->mapToGlobal(place), QPoint(), delta, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        event.setTimestamp(quint64(wait(shortTime).now()));
        QCoreApplication::sendEvent(window->windowHandle(), &event);
        return *this;
    }

    TouchDriver &key(Qt::Key key, bool isRepeated = false)
    {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            if (!window || !window->windowHandle())
                break;
            QKeyEvent event(type, key, Qt::NoModifier, QString(), isRepeated);
            event.setTimestamp(quint64(wait(shortTime).now()));
            QCoreApplication::sendEvent(window->windowHandle(), &event);
        }
        return *this;
    }

private:
    static constexpr int steps = 10;
    static constexpr int shortTime = 20;  // ms
    static constexpr int longTime = 1000; // Longer than between the two taps of a double tap

    // One clock for all drivers: the application compares the times of events at different windows.
    static int &now()
    {
        static int milliseconds = longTime;
        return milliseconds;
    }

    void send(QEvent::Type type)
    {
        if (!window || !window->windowHandle())
            return;
        const bool isDown = type != QEvent::MouseButtonRelease;
        const Qt::MouseButton changed = type == QEvent::MouseMove ? Qt::NoButton : pressed;
        qt_handleMouseEvent(window->windowHandle(), finger, window->mapToGlobal(finger),
                            isDown ? pressed : Qt::NoButton, changed, type, Qt::NoModifier, now());
    }

    QPointer<QGraphicsView> window;
    QPointF finger;
    Qt::MouseButton pressed = Qt::LeftButton;
};

#endif
