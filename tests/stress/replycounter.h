// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_REPLYCOUNTER_H
#define CONNUI_REPLYCOUNTER_H

#include <QDBusConnection>
#include <QHash>
#include <QProcess>

/**
 * Counts the replies that one connection of this program sends, on the bus itself: a caller's own library
 * drops the second reply to a call in silence.
 */
class ReplyCounter
{
public:
    explicit ReplyCounter(const QDBusConnection &watched);
    ~ReplyCounter();
    Q_DISABLE_COPY_MOVE(ReplyCounter)

    /** How often each call, named by its caller and serial number, has been answered until now. */
    QHash<QByteArray, int> replies();

private:
    QDBusConnection watched;
    QProcess process;
};

#endif
