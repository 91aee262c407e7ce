// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_TOUCH_TOUCHMEMORY_H
#define CONNUI_DAEMON_TOUCH_TOUCHMEMORY_H

#include <QByteArray>
#include <QList>
#include <QtGlobal>

/**
 * Remembers touches, so that a tag which comes and goes at the edge of a field is asked about once.
 *
 * The same tag is one with the same UID and the same content, or with the same content where one of the UIDs
 * is not known. As long as it lies on a reader, its question is open, or two seconds have not passed since it
 * left, it is the same touch. Times are milliseconds of a clock that never goes back.
 */
class TouchMemory
{
public:
    static constexpr qint64 mostMilliseconds = 2000;

    /** A touch, by its number, and whether it has just begun. */
    struct Meeting
    {
        int touch = 0;
        bool isNew = false;
    };

    /** A tag with \a uid, which is empty when nothing is known of it, and \a content has come. */
    Meeting meet(const QByteArray &uid, const QByteArray &content, qint64 now);

    /** A tag of \a touch has left. */
    void leave(int touch, qint64 now);

    /** A tag with \a uid was there, but for too short a time to be read. */
    void glimpse(const QByteArray &uid, qint64 now);

    /** The question about \a touch has been opened. */
    void open(int touch);

    /** The question about \a touch has been decided. */
    void close(int touch);

    /** Nobody has decided about \a touch: its tag may begin a new one at once. */
    void forget(int touch);

    /** The number of open questions. */
    int openQuestions() const;

private:
    struct Touch
    {
        int number = 0;
        QByteArray uid;
        QByteArray content;
        int lying = 0; // on so many readers
        int questions = 0;
        qint64 left = 0;

        bool isOver(qint64 now) const;
        bool isOf(const QByteArray &uid, const QByteArray &content) const;
    };

    Touch *find(int number);

    QList<Touch> touches;
    int nextNumber = 0;
};

#endif
