// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_PCSC_CARDREADERS_H
#define CONNUI_DAEMON_PCSC_CARDREADERS_H

#include <map>
#include <memory>
#include <set>

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include "daemon/pcsc/reader.h"

class ReaderWatcher;
class SocketFolder;

/**
 * All readers of pcscd, and the cards on them.
 *
 * Without pcscd, or when it refuses, it is tried again: after a tenth of the time that it has been away, a
 * tenth of a second at first and five seconds at most. As soon as something happens where its socket is, or
 * tryAgain() is called, that begins anew, so that a pcscd that was away for long is used at once, too.
 */
class CardReaders : public QObject
{
    Q_OBJECT

public:
    enum class Backend {
        Off,     ///< Not started.
        Absent,  ///< There is no pcscd.
        Refused, ///< pcscd does not let this process in.
        Ready
    };

    /** \a firstPause is the time before the second try, in milliseconds. */
    explicit CardReaders(qint64 firstPause = 100, QObject *parent = nullptr);
    ~CardReaders() override;

    /** Begins to watch readers. */
    void start();

    /** Lets go of all readers. */
    void stop();

    /** Does not wait any longer for pcscd, if it is away: it may be back. */
    void tryAgain();

    Backend backend() const;

    /** The names of the readers that can be used. */
    QStringList names() const;

    /** Has \a talk made to the card on the reader \a name; see Reader::start(). */
    void talk(const QString &name, const Reader::Talk &talk);

    /** Ends the talk on the reader \a name. */
    void endTalk(const QString &name);

Q_SIGNALS:
    /** names() or backend() have changed. */
    void changed();
    void cardCame(const QString &reader, const QByteArray &atr);
    void cardLeft(const QString &reader);
    /** The card on \a reader did not answer in time. */
    void gaveUp(const QString &reader);

private:
    void watch();
    void seeReaders(const QStringList &names);
    void takeCard(const QString &reader, const QByteArray &atr);
    void loseCard(const QString &reader);
    void endWatch(long result);
    void drop();
    void show(Backend backend);

    std::unique_ptr<ReaderWatcher> watcher;
    std::map<QString, std::unique_ptr<Reader>> readers;
    std::set<QString> withCard;
    Backend shown = Backend::Off;
    const qint64 firstPause;
    QTimer retry;
    QElapsedTimer away;                   // since pcscd went, or since something happened at its socket
    std::unique_ptr<SocketFolder> folder; // while it is away
};

#endif
