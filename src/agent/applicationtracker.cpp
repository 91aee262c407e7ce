// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "applicationtracker.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

#include "applicationtrackerproxy.h"

namespace ConnUi {

ApplicationTracker::ApplicationTracker(QObject *parent)
    : QObject(parent)
    , interface(new ApplicationTrackerProxy(QStringLiteral("org.freedesktop.ohm"),
                                            QStringLiteral("/com/tavix/ApplicationTracker"),
                                            QDBusConnection::systemBus()))
{
    interface->connection().connect(interface->service(), interface->path(), interface->interface(),
                                    QStringLiteral("CurrentActiveApplication"), QStringLiteral("sssu"), this,
                                    SLOT(notify(QString, QString, QString, uint)));

    // Called by name: the reply is judged by its number of arguments, of which only the fourth counts.
    const QDBusMessage reply = interface->call(QStringLiteral("Subscribe"));
    if (reply.type() == QDBusMessage::ErrorMessage || reply.arguments().size() <= 3) {
        qWarning("ApplicationTracker: Unable to subscribe to track applications");
        return;
    }
    pid = reply.arguments().at(3).toUInt();
}

ApplicationTracker::~ApplicationTracker()
{
    interface->call(QStringLiteral("Unsubscribe"), int(0));
    delete interface;
}

uint ApplicationTracker::currentForegroundApplicationPid() const
{
    return pid;
}

void ApplicationTracker::notify(const QString &, const QString &, const QString &, uint pid)
{
    this->pid = pid;
}

} // namespace ConnUi
