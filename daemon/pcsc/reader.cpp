// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/pcsc/reader.h"

#include <chrono>

#include "daemon/pcsc/mailbox.h"

using namespace std::chrono_literals;

namespace {

constexpr auto longestTalk = 5s;
constexpr auto timeForOthers = 500ms;

} // namespace

Reader::Reader(const QString &name, QObject *parent)
    : QObject(parent)
    , mailbox(std::make_shared<Mailbox>(this))
    , worker(name.toUtf8())
{
    patience.setInterval(longestTalk);
    pause.setInterval(timeForOthers);
    patience.setTimerType(Qt::PreciseTimer);
    for (QTimer *timer : {&patience, &pause})
        timer->setSingleShot(true);
    connect(&patience, &QTimer::timeout, this, &Reader::runOutOfPatience);
    connect(&pause, &QTimer::timeout, this, &Reader::tryToTalk);
}

Reader::~Reader()
{
    mailbox->close();
}

void Reader::start(const Talk &what)
{
    stop();
    talk = what;
    tryToTalk();
}

void Reader::stop()
{
    if (!talk)
        return;
    talk = nullptr;
    ++tries;
    patience.stop();
    pause.stop();
    worker.cancel();
}

void Reader::tryToTalk()
{
    const int number = ++tries;
    isTalking = false;
    patience.start();
    worker.start({[this, mailbox = mailbox, number] { mailbox->post([this, number] { begun(number); }); },
                  talk,
                  [this, mailbox = mailbox, number](ReaderWorker::Outcome outcome) {
                      mailbox->post([this, number, outcome] { ended(number, outcome); });
                  }});
}

void Reader::begun(int number)
{
    if (number != tries)
        return;
    isTalking = true;
    patience.start();
}

void Reader::ended(int number, ReaderWorker::Outcome outcome)
{
    if (number != tries)
        return;
    patience.stop();
    if (outcome == ReaderWorker::Outcome::Held)
        pause.start();
    else
        talk = nullptr;
}

void Reader::runOutOfPatience()
{
    if (!isTalking) {
        // Another program uses it: ended() reports that when the worker is back.
        worker.interrupt();
        return;
    }
    stop();
    Q_EMIT gaveUp();
}
