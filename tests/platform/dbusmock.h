// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TEST_DBUSMOCK_H
#define CONNUI_TEST_DBUSMOCK_H

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFile>
#include <QProcess>
#include <QtTest>

// A service of python3-dbusmock, in a process of its own, for as long as the object lives.
class DBusMock
{
public:
    // Arguments as "python3 -m dbusmock" takes them.
    DBusMock(const QString &service, const QStringList &arguments,
             QDBusConnection::BusType type = QDBusConnection::SystemBus)
        : serviceName(service)
        , bus(type == QDBusConnection::SystemBus ? QDBusConnection::systemBus()
                                                 : QDBusConnection::sessionBus())
    {
        const auto option =
            type == QDBusConnection::SystemBus ? QStringLiteral("--system") : QStringLiteral("--session");
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        // Debian's own interpreter: another one first in the path would not find Debian's modules.
        process.start(QStringLiteral("/usr/bin/python3"),
                      QStringList{QStringLiteral("-m"), QStringLiteral("dbusmock"), option} + arguments);
    }

    ~DBusMock()
    {
        process.terminate();
        process.waitForFinished();
        // The bus may learn of the end later than we do.
        (void)QTest::qWaitFor([this] { return !isRegistered(); });
    }

    bool waitForRegistered() const
    {
        const auto settled = [this] { return isRegistered() || process.state() == QProcess::NotRunning; };
        return QTest::qWaitFor(settled, 30000) && isRegistered();
    }

    // Calls and waits for the answer; an error message when that is what came.
    QDBusMessage call(const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments) const
    {
        auto message = QDBusMessage::createMethodCall(serviceName, path, interface, method);
        message.setArguments(arguments);
        return bus.call(message);
    }

    // Adds a method with a body in Python.
    QDBusMessage addMethod(const QString &path, const QString &interface, const QString &name,
                           const QString &in, const QString &out, const QString &body) const
    {
        return call(path, QStringLiteral("org.freedesktop.DBus.Mock"), QStringLiteral("AddMethod"),
                    {interface, name, in, out, body});
    }

    // The arguments of every call of a method since the start.
    QList<QVariantList> callsOf(const QString &path, const QString &method) const
    {
        const auto reply = call(path, QStringLiteral("org.freedesktop.DBus.Mock"),
                                QStringLiteral("GetMethodCalls"), {method});
        const auto calls = reply.arguments().value(0).value<QDBusArgument>();
        QList<QVariantList> all;
        for (calls.beginArray(); !calls.atEnd();) {
            qulonglong time;
            QVariantList arguments;
            calls.beginStructure();
            calls >> time >> arguments;
            calls.endStructure();
            all.append(arguments);
        }
        calls.endArray();
        return all;
    }

    int callCount(const QString &path, const QString &method) const
    {
        return int(callsOf(path, method).size());
    }

private:
    bool isRegistered() const { return bus.interface()->isServiceRegistered(serviceName); }

    QString serviceName;
    QDBusConnection bus;
    QProcess process;
};

// A service of the system bus that the bus would start when it is asked to. A program that starts it sees
// its name taken.
class ActivatableService
{
public:
    explicit ActivatableService(const QString &name)
        : name(name)
        , file(qEnvironmentVariable("CONNUI_SYSTEM_SERVICES") + QStringLiteral("/%1.service").arg(name))
    {
        if (!file.open(QIODevice::WriteOnly))
            return;
        file.write(QStringLiteral("[D-BUS Service]\nName=%1\n"
                                  "Exec=/usr/bin/python3 -m dbusmock --system %1 / org.example.Started\n")
                       .arg(name)
                       .toUtf8());
        file.close();
        ready = bus()->call(QStringLiteral("ReloadConfig")).type() == QDBusMessage::ReplyMessage &&
                QTest::qWaitFor([&] { return bus()->activatableServiceNames().value().contains(name); });
    }

    ~ActivatableService() { file.remove(); }

    bool isStarted() const { return bus()->isServiceRegistered(name); }

    bool ready = false;

private:
    static QDBusConnectionInterface *bus() { return QDBusConnection::systemBus().interface(); }

    const QString name;
    QFile file;
};

#endif
