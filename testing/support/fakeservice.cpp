// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "fakeservice.h"

#include <csignal>
#include <sys/prctl.h>

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QThread>

namespace {

QString controlInterface()
{
    return QStringLiteral("org.connui.FakeService");
}

// Not the connection of the code under test: its traffic is watched.
QDBusConnection controlBus(QDBusConnection::BusType bus)
{
    return QDBusConnection::connectToBus(bus, QStringLiteral("fake-control-%1").arg(bus));
}

QString busWord(QDBusConnection::BusType bus)
{
    return bus == QDBusConnection::SystemBus ? QStringLiteral("system") : QStringLiteral("session");
}

QString serviceFolder(QDBusConnection::BusType bus)
{
    if (bus == QDBusConnection::SystemBus)
        return qEnvironmentVariable("CONNUI_SYSTEM_SERVICES");
    return qEnvironmentVariable("XDG_DATA_HOME") + QLatin1String("/dbus-1/services");
}

void reloadServiceFiles(const QDBusConnection &bus)
{
    const QString name = QStringLiteral("org.freedesktop.DBus");
    bus.call(QDBusMessage::createMethodCall(name, QStringLiteral("/"), name, QStringLiteral("ReloadConfig")));
}

// The shared connections deliver nothing until the event loop has run once.
void startDelivery()
{
    static const bool started = [] {
        QDBusConnection::systemBus();
        QDBusConnection::sessionBus();
        QCoreApplication::processEvents();
        return true;
    }();
    Q_UNUSED(started)
}

// The answer, an error, comes after everything that the bus has sent before.
void settle(QDBusConnection::BusType bus)
{
    QDBusConnection connection =
        bus == QDBusConnection::SystemBus ? QDBusConnection::systemBus() : QDBusConnection::sessionBus();
    connection.call(
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                       QStringLiteral("org.connui.FakeService"), QStringLiteral("Settle")));
}

} // namespace

FakeService::FakeService(QDBusConnection::BusType bus, const QString &service)
    : bus(controlBus(bus))
    , busType(bus)
    , serviceName(service)
    , controlName(QLatin1String("org.connui.fake.") + service)
{
    registerFakeRecords();
    startDelivery();
    this->bus.connect(controlName, QStringLiteral("/"), controlInterface(), QStringLiteral("Called"), this,
                      SIGNAL(called(QString)));
    this->bus.connect(controlName, QStringLiteral("/"), controlInterface(), QStringLiteral("Replied"), this,
                      SIGNAL(replied(int)));
    // Nobody is left behind by a test program that crashes.
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

FakeService::~FakeService()
{
    if (!serviceFile.isEmpty()) {
        QFile::remove(serviceFile);
        reloadServiceFiles(bus);
    }
    kill();
}

QString FakeService::service() const
{
    return serviceName;
}

void FakeService::start()
{
    control(QStringLiteral("Own"));
}

void FakeService::succeed(const QString &service)
{
    control(QStringLiteral("Succeed"), {service});
}

void FakeService::stop()
{
    if (isRunning())
        control(QStringLiteral("Leave"));
}

void FakeService::kill()
{
    if (isRunning()) {
        ::kill(bus.interface()->servicePid(controlName), SIGKILL);
        // The bus answers for a dead peer until it has read the end of its socket.
        const QDeadlineTimer deadline(10000);
        while (isRunning() || isOnBus()) {
            if (deadline.hasExpired())
                qFatal("%s outlives its process", qPrintable(serviceName));
            QThread::msleep(1);
        }
        settle(busType);
    }
    process.waitForFinished();
}

void FakeService::suspend()
{
    ::kill(bus.interface()->servicePid(controlName), SIGSTOP);
}

void FakeService::resume()
{
    ::kill(bus.interface()->servicePid(controlName), SIGCONT);
}

bool FakeService::isOnBus() const
{
    return bus.interface()->isServiceRegistered(serviceName);
}

void FakeService::makeActivatable(const QString &command)
{
    const QString fake = QStringLiteral("\"" FAKE_SERVICE "\" %1 %2 own").arg(busWord(busType), serviceName);
    const QString exec = command.isEmpty() ? fake : command;
    serviceFile = QDir(serviceFolder(busType)).filePath(serviceName + QLatin1String(".service"));
    QFile file(serviceFile);
    if (!file.open(QFile::WriteOnly))
        qFatal("cannot write %s", qPrintable(serviceFile));
    file.write(QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(serviceName, exec).toUtf8());
    file.close();
    reloadServiceFiles(bus);
}

void FakeService::reply(const QString &member, const QVariantList &arguments)
{
    control(QStringLiteral("Reply"), {member, QVariant(arguments)});
}

void FakeService::fail(const QString &member, const QString &error, const QString &message)
{
    control(QStringLiteral("Fail"), {member, error, message});
}

void FakeService::hold(const QString &member)
{
    control(QStringLiteral("Hold"), {member});
}

void FakeService::release(const QString &member)
{
    control(QStringLiteral("Release"), {member});
}

void FakeService::delay(const QString &member, int milliseconds)
{
    control(QStringLiteral("Delay"), {member, milliseconds});
}

void FakeService::hangAfter(const QString &member)
{
    control(QStringLiteral("HangAfter"), {member});
}

void FakeService::dieOn(const QString &member)
{
    control(QStringLiteral("DieOn"), {member});
}

void FakeService::leaveOn(const QString &member)
{
    control(QStringLiteral("LeaveOn"), {member});
}

QList<FakeCall> FakeService::calls(const QString &member)
{
    auto calls = qdbus_cast<QList<FakeCall>>(control(QStringLiteral("Calls")).arguments().constFirst());
    if (!member.isEmpty())
        calls.removeIf([member](const FakeCall &call) { return call.member != member; });
    return calls;
}

QStringList FakeService::members()
{
    QStringList members;
    for (const FakeCall &call : calls())
        members.append(call.member);
    return members;
}

void FakeService::clearCalls()
{
    control(QStringLiteral("ClearCalls"));
}

void FakeService::emitSignal(const QString &path, const QString &interface, const QString &member,
                             const QVariantList &arguments, int times)
{
    control(QStringLiteral("EmitSignal"), {path, interface, member, QVariant(arguments), times});
}

int FakeService::call(const QString &service, const QString &path, const QString &interface,
                      const QString &member, const QVariantList &arguments)
{
    const QDBusMessage answer =
        control(QStringLiteral("Call"), {service, path, interface, member, QVariant(arguments)});
    return answer.arguments().value(0).toInt();
}

QList<FakeReply> FakeService::replies()
{
    return qdbus_cast<QList<FakeReply>>(control(QStringLiteral("Replies")).arguments().constFirst());
}

QDBusMessage FakeService::control(const QString &method, const QVariantList &arguments)
{
    ensureRunning();
    QDBusMessage message =
        QDBusMessage::createMethodCall(controlName, QStringLiteral("/"), controlInterface(), method);
    message.setArguments(arguments);
    const QDBusMessage answer = bus.call(message);
    if (answer.type() != QDBusMessage::ReplyMessage)
        qFatal("fake %s: %s: %s", qPrintable(serviceName), qPrintable(method),
               qPrintable(answer.errorMessage()));
    settle(busType);
    return answer;
}

bool FakeService::isRunning() const
{
    return bus.interface()->isServiceRegistered(controlName);
}

void FakeService::ensureRunning()
{
    if (isRunning())
        return;
    process.waitForFinished(); // the one that died in mid call
    process.start(QStringLiteral(FAKE_SERVICE), {busWord(busType), serviceName});
    while (!process.canReadLine())
        if (!process.waitForReadyRead())
            qFatal("fake %s does not start", qPrintable(serviceName));
    process.readLine();
}
