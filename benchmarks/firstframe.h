// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_FIRSTFRAME_H
#define CONNUI_FIRSTFRAME_H

#include <functional>

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include "measurement.h"

/** Prints the time at which the next frame of any window has been painted, and then does something. */
class FirstFrame : public QObject
{
public:
    FirstFrame() { qApp->installEventFilter(this); }

    /** Counts the instructions from here to the frame, under callgrind. */
    void begin() { Measurement::countAnew(); }

    void then(const std::function<void()> &after) { this->after = after; }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (after && event->type() == QEvent::Paint && watched->isWidgetType()) {
            // From the event loop: then it has been painted.
            QTimer::singleShot(0, this, [after = std::exchange(after, {})] {
                const double time = Measurement::now();
                // The script that reads the time may end this process.
                Measurement::endCount();
                std::printf("%.0f\n", time);
                std::fflush(stdout);
                after();
            });
        }
        return false;
    }

private:
    std::function<void()> after;
};

#endif
