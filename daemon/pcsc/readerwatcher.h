// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_PCSC_READERWATCHER_H
#define CONNUI_DAEMON_PCSC_READERWATCHER_H

#include <memory>

#include <QObject>
#include <QStringList>

class Mailbox;

/**
 * Watches readers and their cards on a thread of its own, which sleeps while nothing happens.
 *
 * Its signals come from the event loop of the thread that the watcher lives on.
 */
class ReaderWatcher : public QObject
{
    Q_OBJECT

public:
    /** Begins to watch. */
    explicit ReaderWatcher(QObject *parent = nullptr);

    /** Ends it, without waiting for the thread: pcscd may be slow to let it go. */
    ~ReaderWatcher() override;

Q_SIGNALS:
    /** These readers can be used: at first, and whenever there are others. */
    void readersSeen(const QStringList &readers);
    void cardCame(const QString &reader, const QByteArray &atr);
    void cardLeft(const QString &reader);

    /** There is no watching any more, since pcscd gave \a result; nothing comes after that. */
    void ended(long result);

private:
    struct Watch;

    const std::shared_ptr<Mailbox> mailbox;
    const std::shared_ptr<Watch> watch;
};

#endif
