// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "simulator.h"

#include <csignal>

#include <QDBusConnection>
#include <QThread>

#include "adapter.h"
#include "bluetoothpeer.h"
#include "handover.h"
#include "ndefkind.h"
#include "peers.h"
#include "question.h"
#include "transfer.h"
#include "uiagent.h"

namespace {

constexpr QLatin1String bluetooth("bluetooth");
constexpr QLatin1String done("done");

QVariant target(const QDBusObjectPath &path)
{
    return QVariant::fromValue(path);
}

QVariant handoverInfo()
{
    return QVariant::fromValue(QDBusVariant(QVariant::fromValue(Peers::bluetooth())));
}

} // namespace

Simulator::Simulator(Adapter *adapter, const HandlerFolder &handlers, QObject *parent)
    : QObject(parent)
    , adapter(adapter)
    , handlers(handlers)
{}

QString Simulator::TouchTag(const QByteArray &message)
{
    const QDBusObjectPath tag = Peers::nextTag();
    return touch(tag, QStringLiteral("RequestNDEFDataDelivery"),
                 {QVariant::fromValue(handlers.handlersFor(ndefKind(message))), target(tag), message});
}

QString Simulator::TouchFaultyTag(const QString &status)
{
    return ask(QStringLiteral("NotifyTouch"), {target(Peers::nextTag()), status},
               QStringLiteral("announced"));
}

QString Simulator::TouchToPair(const QString &address, const QString &name, uint cod, const QString &pin)
{
    const QDBusObjectPath device = Peers::device(address);
    return touch(device, QStringLiteral("RequestBTPairing"), {target(device), address, name, cod, pin});
}

QString Simulator::TouchToConnect(const QString &address, const QString &name, uint cod)
{
    const QDBusObjectPath device = Peers::device(address);
    return touch(device, QStringLiteral("RequestBTConnection"), {target(device), address, name, cod});
}

QString Simulator::TouchToDisconnect(const QString &address, const QString &name, uint cod)
{
    const QDBusObjectPath device = Peers::device(address);
    return touch(device, QStringLiteral("RequestBTDisconnection"), {target(device), address, name, cod});
}

QString Simulator::TouchToShare(const QStringList &resources)
{
    return touch(Peers::bluetooth().path, QStringLiteral("RequestSharingPermission"),
                 {bluetooth, handoverInfo(), resources});
}

QString Simulator::TouchToSelect()
{
    return touch(Peers::bluetooth().path, QStringLiteral("RequestSharingSelection"),
                 {bluetooth, handoverInfo()});
}

QString Simulator::TouchForHandover(const QString &carrier)
{
    if (!adapter->isPowered())
        return QStringLiteral("off");
    QString reason;
    const Handover *handover = adapter->startHandover(carrier, reason);
    if (!handover)
        return QStringLiteral("failed");

    setDelayedReply(true);
    const auto answer = [tap = message()](const QString &outcome) {
        QDBusConnection::systemBus().send(tap.createReply(outcome));
    };
    connect(
        handover, &Handover::completed, this, [answer] { answer(QStringLiteral("completed")); });
    connect(handover, &Handover::failed, this, [answer] { answer(QStringLiteral("canceled")); });
    return {};
}

QString Simulator::ReceiveFile(const QString &name, qulonglong size, qulonglong rate, qulonglong cancelAfter)
{
    const QString nobody = nobodyToAsk();
    if (!nobody.isEmpty())
        return nobody;
    setDelayedReply(true);
    const uint number = nextTransfer++;
    auto *transfer = new Transfer(size, rate, cancelAfter, this);
    transfers.insert(number, transfer);
    connect(transfer, &Transfer::progressed, this, [this, number, size](qulonglong transferred) {
        Q_EMIT TransferProgressed(number, transferred, size);
    });
    connect(transfer, &Transfer::ended, this, [this, number, tap = message()](const QString &outcome) {
        transfers.take(number)->deleteLater();
        Q_EMIT TransferEnded(number, outcome);
        QDBusConnection::systemBus().send(tap.createReply(outcome));
    });
    Q_EMIT TransferStarted(number, Peers::name(), name, size);
    return {};
}

QString Simulator::CancelTransfer(uint number)
{
    if (Transfer *transfer = transfers.value(number))
        transfer->cancel();
    return done;
}

QString Simulator::SetPowered(bool on)
{
    adapter->setPowered(on);
    return done;
}

QString Simulator::Release()
{
    const QString nobody = nobodyToAsk();
    if (!nobody.isEmpty())
        return nobody;
    ask(QStringLiteral("Release"), {}, done);
    adapter->dropAgent();
    return {};
}

QString Simulator::Hang(uint seconds)
{
    QDBusConnection::systemBus().send(message().createReply(done));
    setDelayedReply(true);
    QThread::sleep(seconds);
    return {};
}

QString Simulator::Crash()
{
    // As a crash ends a process, without a word to anybody and without a core file.
    std::raise(SIGKILL);
    return {};
}

// Announces the touch, then puts the request of what was touched to the person.
QString Simulator::touch(const QDBusObjectPath &what, const QString &request, const QVariantList &arguments)
{
    const QString nobody = nobodyToAsk();
    if (!nobody.isEmpty())
        return nobody;
    adapter->agent()->call(QStringLiteral("NotifyTouch"), {target(what), QStringLiteral("ok")});
    return ask(request, arguments, QStringLiteral("granted"));
}

QString Simulator::ask(const QString &method, const QVariantList &arguments, const QString &success)
{
    const QString nobody = nobodyToAsk();
    if (!nobody.isEmpty())
        return nobody;
    setDelayedReply(true);
    new Question(adapter->agent()->call(method, arguments), success, message(), this);
    return {};
}

QString Simulator::nobodyToAsk() const
{
    if (!adapter->isPowered())
        return QStringLiteral("off");
    if (!adapter->agent())
        return QStringLiteral("no-agent");
    return {};
}
