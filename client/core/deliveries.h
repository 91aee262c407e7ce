// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_DELIVERIES_H
#define CONNUI_CLIENT_DELIVERIES_H

#include <functional>
#include <list>
#include <memory>
#include <optional>

#include <QByteArray>
#include <QDBusObjectPath>
#include <QObject>
#include <QTimer>

#include <NdefMessageHandler>

class QuestionQueue;

/**
 * Hands the contents of tags to their handlers, and tells the user while one takes its time.
 *
 * A handler gets one message at a time; further ones wait until it has answered. Nothing here waits for a
 * handler.
 */
class Deliveries : public QObject
{
    Q_OBJECT

public:
    using HandedOver = std::function<void()>;

    /** Milliseconds before the box about a handler that works appears. */
    static constexpr int moment = 250;
    /** Milliseconds after which a handler counts as one that hangs. */
    static constexpr int patience = 5000;

    explicit Deliveries(QuestionQueue *queue);

    /** Hands \a data of \a tag to \a handler. Calls \a handedOver when it has answered, or hangs. */
    void deliver(const ConnUi::NdefMessageHandler &handler, const QDBusObjectPath &tag,
                 const QByteArray &data, const HandedOver &handedOver);

private:
    struct Delivery
    {
        ConnUi::NdefMessageHandler handler;
        QDBusObjectPath tag;
        QByteArray data;
        HandedOver handedOver;
        bool isOnItsWay = false;
        bool isReported = false;            // handedOver has been called
        std::optional<int> shown = {};      // its number in the queue
        std::unique_ptr<QTimer> timer = {}; // until the next box
    };
    using Place = std::list<Delivery>::iterator;

    void begin(Place delivery);
    void show(Place delivery);
    void hide(Place delivery);
    void report(Place delivery);
    void giveUp(Place delivery);
    void end(Place delivery);

    QuestionQueue *const queue;
    std::list<Delivery> deliveries; // in the order in which they came
};

#endif
