// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TOUCH_TOUCHES_H
#define CONNUI_DAEMON_TOUCH_TOUCHES_H

#include <functional>
#include <memory>

#include <QDBusObjectPath>
#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QObject>

#include "daemon/handler.h"
#include "daemon/tags/bluetoothcarrier.h"
#include "daemon/tags/tagaccess.h"
#include "daemon/touch/bluez.h"
#include "daemon/touch/touchmemory.h"

class Adapter;
class CardReaders;
class Mailbox;
class TagWriter;

/**
 * Turns the cards that come to the readers into questions to the agent, handovers, written tags, or nothing.
 *
 * While the adapter is switched off no reader is held.
 */
class Touches : public QObject
{
    Q_OBJECT

public:
    /** The handler applications that take content of a kind (see ndefKind()). */
    using HandlerSource = std::function<QList<Handler>(const QString &kind)>;

    Touches(Adapter *adapter, TagWriter *writer, CardReaders *readers, const HandlerSource &handlers,
            QObject *parent = nullptr);
    ~Touches() override;

private:
    /** A card on a reader, from its coming to its leaving or the end of all talk with it, whichever is later.
     */
    struct Visit
    {
        bool hasLeft = false;
        int touch = -1; // once it has been read
    };
    using VisitPointer = std::shared_ptr<Visit>;

    /** A message on its way onto a tag. */
    struct Writing;
    using WritingPointer = std::shared_ptr<Writing>;

    void follow(bool powered);
    void showReaders();
    void takeCard(const QString &reader, const QByteArray &atr);
    void loseCard(const QString &reader);
    void giveUp(const QString &reader);

    void read(const QString &reader, const VisitPointer &visit, CardKind kind);
    void write(const QString &reader, const VisitPointer &visit, CardKind kind, const QByteArray &message);
    void abandonWriting(const VisitPointer &visit);
    void recallWriting();
    void finishWriting(const WritingPointer &finished, const TagReading &reading);
    void meetTag(const VisitPointer &visit, const TagReading &reading);
    bool remember(const VisitPointer &visit, const TagReading &reading);

    void announce(const QDBusObjectPath &target, const QString &status);
    void meetMessage(int touch, const QByteArray &message);
    void handOver(const BluetoothCarrier &carrier);
    void askAboutDevice(int touch, const BluetoothCarrier &carrier, const QByteArray &message);
    void deliver(int touch, const QDBusObjectPath &target, const QByteArray &message);

    Adapter *const adapter;
    TagWriter *const writer;
    CardReaders *const readers;
    const HandlerSource handlers;
    const std::shared_ptr<Mailbox> mailbox;
    Bluez bluez;
    TouchMemory memory;
    QElapsedTimer clock;
    QHash<QString, VisitPointer> visits; // by reader
    WritingPointer writing;
};

#endif
