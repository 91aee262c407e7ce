// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// fake-service system|session NAME [own]: the process behind FakeService.
//
// Two connections: one is the service that the code under test sees, the other takes the test's orders.
#include <climits>
#include <csignal>
#include <cstdio>
#include <unistd.h>
#include <utility>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVirtualObject>
#include <QHash>
#include <QTimer>

#include "fakerecords.h"

namespace {

struct Script
{
    QVariantList arguments;
    QString error;
    QString message;
    int delay = 0;
    bool hold = false;
    bool hang = false;
    bool die = false;
    bool leave = false;
    QList<QDBusMessage> held;
};

// The replies of healthy services.
QHash<QString, Script> usualScripts()
{
    QHash<QString, Script> scripts;
    scripts[QStringLiteral("DefaultAdapter")].arguments = {
        QVariant::fromValue(QDBusObjectPath(QStringLiteral("/com/tavix/nfc/adapter0")))};
    scripts[QStringLiteral("GetProperties")].arguments = {
        QVariantMap{{QStringLiteral("State"), QStringLiteral("on")}}};
    scripts[QStringLiteral("Subscribe")].arguments = {QString(), QString(), QString(), 0u};
    return scripts;
}

} // namespace

class Process : public QDBusVirtualObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.connui.FakeService")

public:
    Process(const QDBusConnection &bus, const QString &service)
        : bus(bus)
        , service(service)
        , scripts(usualScripts())
    {}

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &call, const QDBusConnection &) override
    {
        Script &script = scripts[call.member()];
        if (script.die)
            raise(SIGKILL);
        if (script.leave)
            Leave();
        calls.append({call.service(), call.path(), call.interface(), call.member(), call.signature(),
                      call.arguments()});
        Q_EMIT Called(call.member());
        if (script.hold)
            script.held.append(call);
        else if (script.delay)
            QTimer::singleShot(script.delay, this, [this, call] { answer(call); });
        else
            answer(call);
        while (script.hang)
            pause();
        return true;
    }

public Q_SLOTS:
    void Own() { bus.registerService(service); }

    void Succeed(const QString &service)
    {
        bus.interface()->registerService(service, QDBusConnectionInterface::QueueService);
    }

    void Leave() { bus.unregisterService(service); }

    void Reply(const QString &member, const QVariantList &arguments)
    {
        Script &script = scripts[member];
        script.error.clear();
        script.arguments = arguments;
    }

    void Fail(const QString &member, const QString &error, const QString &message)
    {
        scripts[member].error = error;
        scripts[member].message = message;
    }

    void Hold(const QString &member) { scripts[member].hold = true; }

    void Release(const QString &member)
    {
        Script &script = scripts[member];
        script.hold = false;
        const QList<QDBusMessage> held = std::exchange(script.held, {});
        for (const QDBusMessage &call : held)
            answer(call);
    }

    void Delay(const QString &member, int milliseconds) { scripts[member].delay = milliseconds; }

    void HangAfter(const QString &member) { scripts[member].hang = true; }

    void DieOn(const QString &member) { scripts[member].die = true; }

    void LeaveOn(const QString &member) { scripts[member].leave = true; }

    QList<FakeCall> Calls() { return calls; }

    void ClearCalls() { calls.clear(); }

    void EmitSignal(const QString &path, const QString &interface, const QString &member,
                    const QVariantList &arguments, int times)
    {
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, member);
        signal.setArguments(arguments);
        for (int i = 0; i < times; ++i)
            bus.send(signal);
        // The bus has it when it has answered.
        bus.interface()->isServiceRegistered(service);
    }

    int Call(const QString &service, const QString &path, const QString &interface, const QString &member,
             const QVariantList &arguments)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, member);
        call.setArguments(arguments);
        auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, INT_MAX), this);
        const int id = ++callsMade;
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, id] {
            const QDBusMessage reply = watcher->reply();
            const bool failed = reply.type() == QDBusMessage::ErrorMessage;
            replies.append(
                {id, reply.errorName(), reply.errorMessage(), failed ? QVariantList() : reply.arguments()});
            watcher->deleteLater();
            Q_EMIT Replied(id);
        });
        return id;
    }

    QList<FakeReply> Replies() { return replies; }

Q_SIGNALS:
    void Called(const QString &member);
    void Replied(int id);

private:
    void answer(const QDBusMessage &call)
    {
        const Script &script = scripts[call.member()];
        bus.send(script.error.isEmpty() ? call.createReply(script.arguments)
                                        : call.createErrorReply(script.error, script.message));
    }

    QDBusConnection bus;
    QString service;
    QHash<QString, Script> scripts;
    QList<FakeCall> calls;
    QList<FakeReply> replies;
    int callsMade = 0;
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList words = application.arguments();
    if (words.size() < 3)
        qFatal("usage: fake-service system|session NAME [own]");
    const auto bus =
        words[1] == QLatin1String("system") ? QDBusConnection::SystemBus : QDBusConnection::SessionBus;
    registerFakeRecords();

    QDBusConnection service = QDBusConnection::connectToBus(bus, QStringLiteral("service"));
    QDBusConnection control = QDBusConnection::connectToBus(bus, QStringLiteral("control"));
    Process process(service, words[2]);
    service.registerVirtualObject(QStringLiteral("/"), &process, QDBusConnection::SubPath);
    control.registerObject(QStringLiteral("/"), &process,
                           QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    control.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                    QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                    &application, SLOT(quit()));
    if (!control.registerService(QLatin1String("org.connui.fake.") + words[2]))
        qFatal("%s is faked already", qPrintable(words[2]));
    if (words.size() > 3) {
        process.Own();
    } else {
        puts("ready");
        fflush(stdout);
    }
    return application.exec();
}

#include "fakeserviceprocess.moc"
