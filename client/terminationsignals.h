// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_TERMINATIONSIGNALS_H
#define CONNUI_CLIENT_TERMINATIONSIGNALS_H

#include <memory>

#include <QObject>
#include <QSocketNotifier>

/** Turns SIGINT and SIGTERM into a Qt signal. Make it before any thread is started. */
class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    TerminationSignals();
    ~TerminationSignals() override;

    /** Begins to emit received(). Needs the application object. */
    void watch();

Q_SIGNALS:
    void received();

private:
    const int descriptor;
    std::unique_ptr<QSocketNotifier> notifier;
};

#endif
