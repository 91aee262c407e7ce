// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/desktopnotification.h"

#include <utility>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

#include "support/whenanswered.h"

namespace {

constexpr QLatin1String notifications("org.freedesktop.Notifications");
constexpr QLatin1String notificationsPath("/org/freedesktop/Notifications");
// The keys of the two actions: a tap on the notification itself, and its button.
constexpr QLatin1String tap("default");
constexpr QLatin1String button("grant");

QDBusMessage callOf(const QString &method)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(notifications, notificationsPath, notifications, method);
    call.setAutoStartService(false);
    return call;
}

void close(uint number)
{
    QDBusConnection::sessionBus().send(callOf(QStringLiteral("CloseNotification")) << number);
}

// Names of files and devices are in it, and they are never markup.
QString textOf(const Question &notice, bool isMarkup)
{
    QStringList lines = notice.notes;
    lines.append(notice.data);
    lines.removeAll(QString());
    const QString text = lines.join(QLatin1Char('\n'));
    return isMarkup ? text.toHtmlEscaped() : text;
}

} // namespace

DesktopNotification::DesktopNotification(QObject *parent) : QObject(parent) {}

DesktopNotification::~DesktopNotification()
{
    if (sending) {
        // The desktop has yet to say which one it is. The watcher goes on: if the reply is here already, and
        // only waits for the event loop, another watcher would never hear of it.
        sending->disconnect(this);
        sending->setParent(QCoreApplication::instance());
        connect(sending, &QDBusPendingCallWatcher::finished, sending, [](QDBusPendingCallWatcher *answered) {
            answered->deleteLater();
            const QDBusPendingReply<uint> reply = *answered;
            if (!reply.isError())
                close(reply.value());
        });
    } else if (number != 0) {
        close(number);
    }
}

void DesktopNotification::show(const Question &question, int time)
{
    notice = question;
    milliseconds = time;
    isOutdated = true;
    if (!isBusy)
        prepare();
}

// Which service shows it, and what that can do, may be different every time.
void DesktopNotification::prepare()
{
    isBusy = true;
    listen();
    const QDBusPendingCall call =
        QDBusConnection::sessionBus().asyncCall(callOf(QStringLiteral("GetCapabilities")));
    Support::whenAnswered(call, this, [this](const QDBusPendingReply<QStringList> &reply) {
        send(reply.isError() ? QStringList() : reply.value());
    });
}

void DesktopNotification::listen()
{
    if (notice.yes.isEmpty() || std::exchange(isListening, true))
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(notifications, notificationsPath, notifications, QStringLiteral("ActionInvoked"), this,
                SLOT(takeAction(uint)));
    bus.connect(notifications, notificationsPath, notifications, QStringLiteral("NotificationClosed"), this,
                SLOT(takeEnd(uint)));
}

void DesktopNotification::send(const QStringList &capabilities)
{
    isOutdated = false;
    QStringList actions;
    if (!notice.yes.isEmpty())
        actions = {tap, notice.yes, button, notice.yes};
    const QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("nfc-ui")},
                            {QStringLiteral("transient"), milliseconds > 0}};
    QDBusMessage call = callOf(QStringLiteral("Notify"));
    call << QStringLiteral("nfc-ui") << number << QStringLiteral("nfc-ui") << notice.title
         << textOf(notice, capabilities.contains(QLatin1String("body-markup"))) << actions << hints
         << milliseconds;
    sending = Support::whenAnswered(QDBusConnection::sessionBus().asyncCall(call), this,
                                    [this](const QDBusPendingReply<uint> &reply) {
                                        sending = nullptr;
                                        isBusy = false;
                                        number = reply.isError() ? 0 : reply.value();
                                        if (isOutdated)
                                            prepare();
                                        else if (reply.isError())
                                            Q_EMIT failed();
                                    });
}

void DesktopNotification::takeAction(uint which)
{
    if (which == number)
        Q_EMIT pressed();
}

void DesktopNotification::takeEnd(uint which)
{
    if (which != number)
        return;
    number = 0;
    Q_EMIT closed();
}
