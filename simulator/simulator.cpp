// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "simulator.h"

#include <csignal>

#include <QDBusConnection>
#include <QThread>

#include "daemon/adapter.h"
#include "daemon/bluetoothpeer.h"
#include "daemon/handover.h"
#include "daemon/ndefkind.h"
#include "daemon/question.h"
#include "daemon/tagwriter.h"
#include "daemon/uiagent.h"
#include "handoversteps.h"
#include "peers.h"
#include "transfer.h"
#include "transfers.h"

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

Simulator::Simulator(Adapter *adapter, const QStringList &handlerFolders, int handoverStep, QObject *parent)
    : QObject(parent)
    , adapter(adapter)
    , writer(new TagWriter(adapter))
    , transfers(new Transfers(adapter))
    , handlerFolders(handlerFolders)
{
    connect(
        adapter, &Adapter::handoverAccepted, this,
        [handoverStep](Handover *handover) { new HandoverSteps(handoverStep, handover); });
}

QString Simulator::TouchTag(const QByteArray &message)
{
    const QString unasked = outcomeUnasked();
    // As a shop's tags are.
    if (writer->take())
        return finishWriting(TagStatus::ReadOnly);
    if (!unasked.isEmpty())
        return unasked;
    const QDBusObjectPath tag = Peers::nextTag();
    return touch(tag, QStringLiteral("RequestNDEFDataDelivery"),
                 {QVariant::fromValue(handlers().handlersFor(ndefKind(message))), target(tag), message});
}

HandlerFolder Simulator::handlers() const
{
    return HandlerFolder(handlerFolders.isEmpty() ? HandlerFolder::standardFolders(adapter->agent()->user())
                                                  : handlerFolders);
}

QString Simulator::TouchBlankTag(uint room)
{
    const std::optional<QByteArray> message = writer->take();
    if (message)
        return finishWriting(message->size() <= room ? TagStatus::Done : TagStatus::TooSmall);
    const QByteArray emptyRecord = QByteArray::fromHex("d00000");
    return TouchTag(emptyRecord);
}

QString Simulator::TouchFaultyTag(const QString &status)
{
    if (writer->take())
        return finishWriting(TagStatus::Unsupported);
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
    const Handover *handover = adapter->acceptHandover(carrier, {}, reason);
    if (!handover)
        return QStringLiteral("failed");
    setDelayedReply(true);
    connect(handover, &Handover::completed, this, answer(QStringLiteral("completed")));
    connect(handover, &Handover::failed, this, answer(QStringLiteral("canceled")));
    return {};
}

QString Simulator::ReceiveFile(const QString &name, qulonglong size, qulonglong rate, qulonglong cancelAfter,
                               const QString &file)
{
    const QString unasked = outcomeUnasked();
    if (!unasked.isEmpty())
        return unasked;
    setDelayedReply(true);
    const Transfer *transfer = transfers->receive(name, size, rate, cancelAfter, file);
    connect(transfer, &Transfer::completed, this, answer(QStringLiteral("completed")));
    connect(transfer, &Transfer::canceled, this, answer(QStringLiteral("canceled")));
    return {};
}

QString Simulator::SetPowered(bool on)
{
    adapter->setPowered(on);
    return done;
}

QString Simulator::Release()
{
    const QString unasked = outcomeUnasked();
    if (!unasked.isEmpty())
        return unasked;
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

// Announces the touch, then puts the request of what was touched to the user.
QString Simulator::touch(const QDBusObjectPath &what, const QString &request, const QVariantList &arguments)
{
    const QString unasked = outcomeUnasked();
    if (!unasked.isEmpty())
        return unasked;
    adapter->agent()->call(QStringLiteral("NotifyTouch"), {target(what), QStringLiteral("ok")});
    return ask(request, arguments, QStringLiteral("granted"));
}

// The end of the message that was taken for the tag.
QString Simulator::finishWriting(TagStatus end)
{
    writer->finish(end);
    return end == TagStatus::Done ? QStringLiteral("written") : QStringLiteral("failed");
}

QString Simulator::ask(const QString &method, const QVariantList &arguments, const QString &success)
{
    const QString unasked = outcomeUnasked();
    if (!unasked.isEmpty())
        return unasked;
    setDelayedReply(true);
    const auto *question = new Question(adapter->agent(), method, arguments, success, this);
    connect(question, &Question::decided, this, [tap = message()](const QString &outcome) {
        QDBusConnection::systemBus().send(tap.createReply(outcome));
    });
    return {};
}

// Answers the call that is being handled with the outcome, later.
std::function<void()> Simulator::answer(const QString &outcome) const
{
    return [tap = message(), outcome] { QDBusConnection::systemBus().send(tap.createReply(outcome)); };
}

QString Simulator::outcomeUnasked() const
{
    if (!adapter->isPowered())
        return QStringLiteral("off");
    if (!adapter->agent())
        return QStringLiteral("no-agent");
    return {};
}
