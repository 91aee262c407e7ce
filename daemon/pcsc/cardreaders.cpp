// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/pcsc/cardreaders.h"

#include <algorithm>
#include <utility>
#include <winscard.h>

#include "daemon/pcsc/pcsccontext.h"
#include "daemon/pcsc/readerwatcher.h"
#include "daemon/pcsc/socketfolder.h"

namespace {

constexpr int timeToListen = 100;     // ms, from the socket's file to a pcscd behind it
constexpr qint64 longestPause = 5000; // ms

} // namespace

CardReaders::CardReaders(qint64 firstPause, QObject *parent) : QObject(parent), firstPause(firstPause)
{
    retry.setSingleShot(true);
    connect(&retry, &QTimer::timeout, this, &CardReaders::watch);
}

CardReaders::~CardReaders() = default;

void CardReaders::start()
{
    if (!watcher && !retry.isActive())
        watch();
}

void CardReaders::stop()
{
    retry.stop();
    away.invalidate();
    folder.reset();
    watcher.reset();
    drop();
    show(Backend::Off);
}

void CardReaders::tryAgain()
{
    if (!away.isValid())
        return;
    away.restart();
    if (retry.isActive())
        retry.start(std::min(retry.remainingTime(), timeToListen));
}

CardReaders::Backend CardReaders::backend() const
{
    return shown;
}

QStringList CardReaders::names() const
{
    QStringList names;
    for (const auto &[name, reader] : readers)
        names.append(name);
    return names;
}

void CardReaders::talk(const QString &name, const Reader::Talk &talk)
{
    const auto reader = readers.find(name);
    if (reader != readers.end())
        reader->second->start(talk);
}

void CardReaders::endTalk(const QString &name)
{
    const auto reader = readers.find(name);
    if (reader != readers.end())
        reader->second->stop();
}

void CardReaders::watch()
{
    watcher = std::make_unique<ReaderWatcher>();
    connect(watcher.get(), &ReaderWatcher::readersSeen, this, &CardReaders::seeReaders);
    connect(watcher.get(), &ReaderWatcher::cardCame, this, &CardReaders::takeCard);
    connect(watcher.get(), &ReaderWatcher::cardLeft, this, &CardReaders::loseCard);
    connect(watcher.get(), &ReaderWatcher::ended, this, &CardReaders::endWatch);
}

void CardReaders::seeReaders(const QStringList &names)
{
    if (away.isValid())
        qInfo("pcscd is back");
    away.invalidate();
    folder.reset();
    std::erase_if(readers, [&names](const auto &reader) { return !names.contains(reader.first); });
    for (const QString &name : names) {
        if (readers.count(name))
            continue;
        auto reader = std::make_unique<Reader>(name);
        connect(reader.get(), &Reader::gaveUp, this, [this, name] { Q_EMIT gaveUp(name); });
        readers.emplace(name, std::move(reader));
    }
    shown = Backend::Ready;
    Q_EMIT changed();
}

void CardReaders::takeCard(const QString &reader, const QByteArray &atr)
{
    withCard.insert(reader);
    Q_EMIT cardCame(reader, atr);
}

void CardReaders::loseCard(const QString &reader)
{
    endTalk(reader);
    withCard.erase(reader);
    Q_EMIT cardLeft(reader);
}

void CardReaders::endWatch(long result)
{
    watcher.release()->deleteLater();
    drop();
    if (!away.isValid()) {
        away.start();
        folder = std::make_unique<SocketFolder>();
        connect(folder.get(), &SocketFolder::changed, this, &CardReaders::tryAgain);
        qWarning("pcscd cannot be used: %s", qUtf8Printable(PcscContext::text(result)));
    }
    retry.start(int(std::max(firstPause, std::min(away.elapsed() / 10, longestPause))));
    // That is also what PCSC lite calls the reset of a connection by pcscd's death; who was let in is not
    // refused.
    const bool isRefused = result == LONG(SCARD_W_SECURITY_VIOLATION) && shown != Backend::Ready;
    show(isRefused ? Backend::Refused : Backend::Absent);
}

// All cards count as removed.
void CardReaders::drop()
{
    const std::set<QString> lost = withCard;
    for (const QString &reader : lost)
        loseCard(reader);
    readers.clear();
}

void CardReaders::show(Backend backend)
{
    shown = backend;
    Q_EMIT changed();
}
