// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// callas UID ADDRESS own NAME
// callas UID ADDRESS call SERVICE PATH INTERFACE MEMBER
//
// Does one thing as another user on the bus at ADDRESS, and prints "done" or the name of the error. An empty
// INTERFACE is left out of the message.
#include <cstdio>
#include <grp.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QStringList>

namespace {

bool become(uint user)
{
    return setgroups(0, nullptr) == 0 && setgid(user) == 0 && setuid(user) == 0;
}

QDBusError perform(const QDBusConnection &bus, const QStringList &action)
{
    const QDBusMessage call =
        action.at(0) == QLatin1String("own")
            ? QDBusMessage::createMethodCall(
                  QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                  QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"))
                  << action.at(1) << 0U
            : QDBusMessage::createMethodCall(action.at(1), action.at(2), action.at(3), action.at(4));
    return QDBusError(bus.call(call));
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (!become(arguments.at(1).toUInt())) {
        std::puts("cannot become that user");
        return 1;
    }
    // A program that sends none of them has to make them known all the same.
    qDBusRegisterMetaType<QDBusObjectPath>();
    qDBusRegisterMetaType<QDBusSignature>();
    const QDBusConnection bus = QDBusConnection::connectToBus(arguments.at(2), QStringLiteral("callas"));
    if (!bus.isConnected()) {
        std::puts(qUtf8Printable(bus.lastError().message()));
        return 1;
    }
    const QDBusError error = perform(bus, arguments.mid(3));
    std::puts(error.isValid() ? qUtf8Printable(error.name()) : "done");
    return 0;
}
