// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/touch/touches.h"

#include <atomic>
#include <utility>

#include <QDBusVariant>

#include "daemon/adapter.h"
#include "daemon/bluetoothpeer.h"
#include "daemon/handover.h"
#include "daemon/ndefkind.h"
#include "daemon/pcsc/cardreaders.h"
#include "daemon/pcsc/mailbox.h"
#include "daemon/question.h"
#include "daemon/tagwriter.h"
#include "daemon/touch/bluetoothtouch.h"
#include "daemon/touch/touchtarget.h"
#include "daemon/uiagent.h"

namespace {

/** Questions that wait for the user at once; a card that makes up new tags would open any number. */
constexpr int mostQuestions = 16;

LimitedExchange::Clock talkClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}

QString statusName(TagStatus status)
{
    switch (status) {
    case TagStatus::Done:
        return QStringLiteral("ok");
    case TagStatus::Malformed:
        return QStringLiteral("malformed-content");
    default:
        return QStringLiteral("unsupported-tag-type");
    }
}

QString backendName(CardReaders::Backend backend)
{
    switch (backend) {
    case CardReaders::Backend::Absent:
        return QStringLiteral("absent");
    case CardReaders::Backend::Refused:
        return QStringLiteral("refused");
    case CardReaders::Backend::Ready:
        return QStringLiteral("ready");
    default:
        return QStringLiteral("off");
    }
}

} // namespace

struct Touches::Writing
{
    VisitPointer visit;
    // Either the worker begins it or we take it back, whoever is first.
    std::atomic<bool> isClaimed = false;
};

Touches::Touches(Adapter *adapter, TagWriter *writer, CardReaders *readers, const HandlerSource &handlers,
                 QObject *parent)
    : QObject(parent)
    , adapter(adapter)
    , writer(writer)
    , readers(readers)
    , handlers(handlers)
    , mailbox(std::make_shared<Mailbox>(this))
{
    clock.start();
    connect(adapter, &Adapter::poweredChanged, this, &Touches::follow);
    connect(readers, &CardReaders::changed, this, &Touches::showReaders);
    connect(readers, &CardReaders::cardCame, this, &Touches::takeCard);
    connect(readers, &CardReaders::cardLeft, this, &Touches::loseCard);
    connect(readers, &CardReaders::gaveUp, this, &Touches::giveUp);
    connect(adapter, &Adapter::messageGivenUp, this, &Touches::recallWriting);
    showReaders();
    follow(adapter->isPowered());
}

Touches::~Touches()
{
    mailbox->close();
}

void Touches::follow(bool powered)
{
    if (powered)
        readers->start();
    else
        readers->stop();
}

void Touches::showReaders()
{
    adapter->showProperty(QStringLiteral("Readers"), readers->names());
    adapter->showProperty(QStringLiteral("Backend"), backendName(readers->backend()));
}

void Touches::takeCard(const QString &reader, const QByteArray &atr)
{
    const auto visit = std::make_shared<Visit>();
    visits.insert(reader, visit);
    const CardKind kind = cardKind(atr, reader);
    if (kind == CardKind::Foreign) {
        qInfo("the card on %s is left alone: %s", qUtf8Printable(reader), atr.toHex().constData());
        return;
    }
    const std::optional<QByteArray> message = writer->take();
    if (kind == CardKind::Unsupported) {
        const TagReading unread{kind, {}, {TagStatus::Unsupported, {}}};
        if (message)
            writer->finish(TagStatus::Unsupported);
        else
            meetTag(visit, unread);
    } else if (message) {
        write(reader, visit, kind, *message);
    } else if (adapter->agent() || adapter->currentHandover()) {
        read(reader, visit, kind);
    } else {
        qInfo("no client can be asked about the tag on %s", qUtf8Printable(reader));
    }
}

void Touches::loseCard(const QString &reader)
{
    const VisitPointer visit = visits.take(reader);
    if (!visit)
        return;
    visit->hasLeft = true;
    if (visit->touch >= 0)
        memory.leave(visit->touch, clock.elapsed());
    abandonWriting(visit);
}

void Touches::giveUp(const QString &reader)
{
    qWarning("the card on %s does not answer", qUtf8Printable(reader));
    if (writing && writing->visit == visits.value(reader))
        finishWriting(writing, {CardKind::Type2, {}, {TagStatus::Refused, {}}});
}

void Touches::read(const QString &reader, const VisitPointer &visit, CardKind kind)
{
    readers->talk(
        reader,
        [this, mailbox = mailbox, visit, kind](Exchange &card) {
            const TagReading reading = readTag(card, kind, talkClock());
            mailbox->post([this, visit, reading] { meetTag(visit, reading); });
        });
}

void Touches::write(const QString &reader, const VisitPointer &visit, CardKind kind,
                    const QByteArray &message)
{
    writing = std::make_shared<Writing>();
    writing->visit = visit;
    readers->talk(reader, [this, mailbox = mailbox, ours = writing, kind, message](Exchange &card) {
        if (ours->isClaimed.exchange(true))
            return;
        const TagReading reading = writeTag(card, kind, message, talkClock());
        mailbox->post([this, ours, reading] { finishWriting(ours, reading); });
    });
}

// A card that has left before it was talked to has cost the message nothing: it goes on waiting.
void Touches::abandonWriting(const VisitPointer &visit)
{
    if (!writing || writing->visit != visit || writing->isClaimed.exchange(true))
        return;
    writing.reset();
    writer->putBack();
}

// While another program has the card the worker has not begun, and the message can still be put back.
void Touches::recallWriting()
{
    if (writing)
        abandonWriting(VisitPointer(writing->visit));
}

void Touches::finishWriting(const WritingPointer &finished, const TagReading &reading)
{
    if (finished != writing)
        return;
    const VisitPointer visit = std::exchange(writing, nullptr)->visit;
    const TagStatus status = reading.contents.status;
    if (status == TagStatus::Gone || reading.kind == CardKind::Foreign) {
        writer->putBack();
        return;
    }
    writer->finish(status);
    if (status != TagStatus::Done)
        return;
    // Content that the user has put there does not need a question.
    remember(visit, reading);
    announce(TouchTarget::nextTag(), statusName(status));
}

void Touches::meetTag(const VisitPointer &visit, const TagReading &reading)
{
    if (!adapter->isPowered() || reading.kind == CardKind::Foreign)
        return;
    const TagStatus status = reading.contents.status;
    if (status == TagStatus::Gone) {
        memory.glimpse(reading.uid, clock.elapsed());
        return;
    }
    if (!remember(visit, reading) || memory.openQuestions() >= mostQuestions)
        return;
    if (status == TagStatus::Done || status == TagStatus::Empty)
        meetMessage(visit->touch, reading.contents.message);
    else
        announce(TouchTarget::nextTag(), statusName(status));
}

// Returns whether the touch is a new one.
bool Touches::remember(const VisitPointer &visit, const TagReading &reading)
{
    const QByteArray content =
        QByteArray::number(int(reading.contents.status)) + ' ' + reading.contents.message;
    const TouchMemory::Meeting meeting = memory.meet(reading.uid, content, clock.elapsed());
    visit->touch = meeting.touch;
    if (visit->hasLeft)
        memory.leave(meeting.touch, clock.elapsed());
    return meeting.isNew;
}

void Touches::announce(const QDBusObjectPath &target, const QString &status)
{
    if (adapter->agent())
        adapter->agent()->call(QStringLiteral("NotifyTouch"), {QVariant::fromValue(target), status});
}

void Touches::meetMessage(int touch, const QByteArray &message)
{
    const std::optional<BluetoothCarrier> carrier = bluetoothCarrier(message);
    const QDBusObjectPath target = carrier ? TouchTarget::device(carrier->address) : TouchTarget::nextTag();
    announce(target, statusName(TagStatus::Done));
    if (carrier && adapter->currentHandover())
        handOver(*carrier);
    else if (carrier)
        askAboutDevice(touch, *carrier, message);
    else
        deliver(touch, target, message);
}

void Touches::handOver(const BluetoothCarrier &carrier)
{
    Handover *handover = adapter->currentHandover();
    handover->begin();
    handover->selectCarrier();
    handover->complete({TouchTarget::device(carrier.address), carrier.address});
}

void Touches::askAboutDevice(int touch, const BluetoothCarrier &carrier, const QByteArray &message)
{
    memory.open(touch);
    auto *device = new BluetoothTouch(adapter, &bluez, carrier, this);
    connect(device, &BluetoothTouch::over, this, [this, touch] { memory.close(touch); });
    // Without Bluetooth its tag is one like any other.
    connect(device, &BluetoothTouch::unavailable, this, [this, touch, message] {
        memory.close(touch);
        deliver(touch, TouchTarget::nextTag(), message);
    });
    device->begin();
}

void Touches::deliver(int touch, const QDBusObjectPath &target, const QByteArray &message)
{
    if (!adapter->agent())
        return;
    memory.open(touch);
    const QVariantList arguments = {QVariant::fromValue(handlers(ndefKind(message))),
                                    QVariant::fromValue(target), message};
    auto *question = new Question(adapter->agent(), QStringLiteral("RequestNDEFDataDelivery"), arguments,
                                  QStringLiteral("granted"), this);
    connect(question, &Question::decided, this, [this, touch](const QString &outcome) {
        if (outcome == QLatin1String("granted") || outcome == QLatin1String("rejected"))
            memory.close(touch);
        else
            memory.forget(touch);
    });
}
