// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_QUESTION_H
#define CONNUI_DAEMON_QUESTION_H

#include <QDBusPendingCallWatcher>
#include <QString>
#include <QVariantList>

class UiAgent;

/** A call to the agent that the user has not decided yet. It ends in decided(), exactly once. */
class Question : public QDBusPendingCallWatcher
{
    Q_OBJECT

public:
    /**
     * Calls \a method of \a agent, reports the outcome and deletes itself.
     *
     * The outcome is \a success for an empty reply, "rejected" or "canceled" for the agent's own errors,
     * "canceled" when the agent is put aside or its process has left, "no-agent" when the process has no such
     * agent, and otherwise the name of the error.
     */
    Question(const UiAgent *agent, const QString &method, const QVariantList &arguments,
             const QString &success, QObject *parent = nullptr);

Q_SIGNALS:
    void decided(const QString &outcome);

private:
    void report();
    void end(const QString &outcome);

    const QString success;
    bool isOver = false;
};

#endif
