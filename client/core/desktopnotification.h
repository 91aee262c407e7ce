// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_DESKTOPNOTIFICATION_H
#define CONNUI_CLIENT_DESKTOPNOTIFICATION_H

#include <QObject>
#include <QStringList>

#include "core/question.h"

class QDBusPendingCallWatcher;

/**
 * A notice that the desktop shows, beside what the user does: org.freedesktop.Notifications.
 *
 * Nothing here blocks, and nothing starts a service: a desktop without notifications goes on without them.
 */
class DesktopNotification : public QObject
{
    Q_OBJECT

public:
    explicit DesktopNotification(QObject *parent = nullptr);
    /** Withdraws it. */
    ~DesktopNotification() override;

    /**
     * Shows the words of \a notice, and the button that grants where it has one, in place of what was shown.
     *
     * It stays for \a milliseconds and is then forgotten; 0: until it is withdrawn; -1: as the desktop likes.
     */
    void show(const Question &notice, int milliseconds = -1);

Q_SIGNALS:
    /** The user has pressed it, or its button. */
    void pressed();
    /** It has gone without that. */
    void closed();
    /** There is no desktop that shows it. */
    void failed();

private Q_SLOTS:
    void takeAction(uint which);
    void takeEnd(uint which);

private:
    void listen();
    void prepare();
    void send(const QStringList &capabilities);

    Question notice;
    int milliseconds = 0;
    QDBusPendingCallWatcher *sending = nullptr;
    bool isBusy = false;
    bool isOutdated = false; // there are newer words than those on their way
    bool isListening = false;
    uint number = 0; // which the desktop has given it
};

#endif
