// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// callas UID ADDRESS own NAME
// callas UID ADDRESS call SERVICE PATH INTERFACE MEMBER [ARGUMENT...]
// callas UID ADDRESS signal PATH INTERFACE MEMBER
//
// Does one thing as another user on the bus at ADDRESS, and prints "done" or the name of the error. An empty
// INTERFACE is left out of the message. An ARGUMENT is a type (s, o, u, v for a string in a variant, ay), a
// colon and its value. The signal is followed by another one, org.connui.test.Mark.Done at the same path,
// which shows that the bus has had it.
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
#include <QDBusVariant>
#include <QStringList>

namespace {

bool become(uint user)
{
    return setgroups(0, nullptr) == 0 && setgid(user) == 0 && setuid(user) == 0;
}

QVariant value(const QString &argument)
{
    const QString type = argument.section(QLatin1Char(':'), 0, 0);
    const QString text = argument.section(QLatin1Char(':'), 1);
    if (type == QLatin1String("o"))
        return QVariant::fromValue(QDBusObjectPath(text));
    if (type == QLatin1String("u"))
        return text.toUInt();
    if (type == QLatin1String("v"))
        return QVariant::fromValue(QDBusVariant(text));
    if (type == QLatin1String("ay"))
        return text.toUtf8();
    return text;
}

QDBusError emitSignal(const QDBusConnection &bus, const QStringList &action)
{
    bus.send(QDBusMessage::createSignal(action.at(1), action.at(2), action.at(3)));
    bus.send(QDBusMessage::createSignal(action.at(1), QStringLiteral("org.connui.test.Mark"),
                                        QStringLiteral("Done")));
    // Once the bus answers, it has both.
    return QDBusError(bus.call(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"))));
}

QDBusError perform(const QDBusConnection &bus, const QStringList &action)
{
    if (action.at(0) == QLatin1String("signal"))
        return emitSignal(bus, action);
    QDBusMessage call =
        action.at(0) == QLatin1String("own")
            ? QDBusMessage::createMethodCall(
                  QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                  QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"))
                  << action.at(1) << 0U
            : QDBusMessage::createMethodCall(action.at(1), action.at(2), action.at(3), action.at(4));
    QVariantList arguments = call.arguments();
    for (const QString &argument : action.mid(5))
        arguments.append(value(argument));
    call.setArguments(arguments);
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
    qDBusRegisterMetaType<QDBusVariant>();
    const QDBusConnection bus = QDBusConnection::connectToBus(arguments.at(2), QStringLiteral("callas"));
    if (!bus.isConnected()) {
        std::puts(qUtf8Printable(bus.lastError().message()));
        return 1;
    }
    const QDBusError error = perform(bus, arguments.mid(3));
    std::puts(error.isValid() ? qUtf8Printable(error.name()) : "done");
    return 0;
}
