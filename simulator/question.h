// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_QUESTION_H
#define CONNUI_SIM_QUESTION_H

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

/** A call to the agent that the person has not decided yet, and who wants to know the decision. */
class Question : public QDBusPendingCallWatcher
{
    Q_OBJECT

public:
    /**
     * Waits for \a call to the agent, answers \a tap with the outcome and deletes itself.
     *
     * The outcome is \a success for an empty reply, "rejected" or "canceled" for the agent's own errors,
     * "canceled" when the agent's process has left, "no-agent" when the process has no such agent, and
     * otherwise the name of the error.
     */
    Question(const QDBusPendingCall &call, const QString &success, const QDBusMessage &tap,
             QObject *parent = nullptr);

private:
    void answer();

    const QString success;
    const QDBusMessage tap;
};

#endif
