// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "fakedaemonitem.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

#include "handlerlist.h"

namespace {

const QString address = QStringLiteral("00:16:41:7A:0F:11");
constexpr uint headset = 0x240404;

QVariant path(const QString &target)
{
    return QVariant::fromValue(QDBusObjectPath(target));
}

QVariant variant(const QString &value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

} // namespace

void FakeDaemonItem::start()
{
    questions.clear();
    daemon.start();
}

void FakeDaemonItem::kill()
{
    daemon.kill();
}

void FakeDaemonItem::fail(const QString &member, const QString &error)
{
    const QString refused = QStringLiteral("com.tavix.nfc.Error.AlreadyExists");
    daemon.fail(member, error.isEmpty() ? refused : error, QStringLiteral("no"));
}

void FakeDaemonItem::hold(const QString &member)
{
    daemon.hold(member);
}

void FakeDaemonItem::answerHeld(const QString &member)
{
    daemon.release(member);
    daemon.hold(member);
}

void FakeDaemonItem::recover(const QString &member)
{
    daemon.reply(member);
}

void FakeDaemonItem::setState(const QString &state)
{
    daemon.setState(state);
    daemon.emitPropertyChanged(QStringLiteral("State"), state);
}

int FakeDaemonItem::calls(const QString &member)
{
    return int(daemon.calls(member).size());
}

void FakeDaemonItem::pair(const QString &target, const QString &name, const QString &pin)
{
    ask(QStringLiteral("RequestBTPairing"), {path(target), address, name, headset, pin});
}

void FakeDaemonItem::connectDevice(const QString &target, const QString &name)
{
    ask(QStringLiteral("RequestBTConnection"), {path(target), address, name, headset});
}

void FakeDaemonItem::disconnectDevice(const QString &target, const QString &name)
{
    ask(QStringLiteral("RequestBTDisconnection"), {path(target), address, name, headset});
}

void FakeDaemonItem::deliver(const QString &target, const QByteArray &data, const QStringList &applications)
{
    ask(QStringLiteral("RequestNDEFDataDelivery"), {handlerList(applications), path(target), data});
}

void FakeDaemonItem::share(const QString &info, const QStringList &resources)
{
    ask(QStringLiteral("RequestSharingPermission"), {QStringLiteral("bluetooth"), variant(info), resources});
}

void FakeDaemonItem::select(const QString &info)
{
    ask(QStringLiteral("RequestSharingSelection"), {QStringLiteral("bluetooth"), variant(info)});
}

void FakeDaemonItem::touch(const QString &status)
{
    ask(QStringLiteral("NotifyTouch"), {path(QStringLiteral("/tag")), status});
}

void FakeDaemonItem::release()
{
    ask(QStringLiteral("Release"), {});
}

void FakeDaemonItem::destroyNow(QObject *object)
{
    delete object;
}

QStringList FakeDaemonItem::replies()
{
    QStringList all;
    const QList<FakeReply> arrived = daemon.replies();
    for (const FakeReply &reply : arrived)
        if (questions.contains(reply.id))
            all.append(
                QStringLiteral("%1 %2")
                    .arg(questions.indexOf(reply.id))
                    .arg(reply.error.isEmpty() ? QStringLiteral("granted") : reply.error.section(u'.', -1)));
    return all;
}

void FakeDaemonItem::ask(const QString &member, const QVariantList &arguments)
{
    const QList<FakeCall> registrations = daemon.calls(QStringLiteral("RegisterUIAgent"));
    const auto agent = registrations.constLast().arguments.constFirst().value<QDBusObjectPath>();
    questions.append(daemon.callAgent(agent.path(), member, arguments));
}
