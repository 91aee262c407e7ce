// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QTest>

#include "daemon/pcsc/watchedreader.h"

namespace {

const QByteArray atr = QByteArray::fromHex("3b80800101");

constexpr DWORD counted(DWORD state, DWORD events)
{
    return (state | SCARD_STATE_CHANGED) | (events << 16);
}

/** Counts the cards that come and go while a reader is looked at. */
class Observer
{
public:
    void look(DWORD state)
    {
        const WatchedReader before = reader;
        reader.look(state, state & SCARD_STATE_PRESENT ? atr : QByteArray());
        came += reader.hasNewCard(before);
        left += reader.hasLostCard(before);
    }

    WatchedReader reader = WatchedReader("Reader 00 00");
    int came = 0;
    int left = 0;
};

} // namespace

class TestWatchedReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readerIsUsableOnceItWasSeen();
    void cardComesAndLeaves();
    void cardThatLiesThereAtFirstIsSeen();
    void otherCardIsKnownByTheCount();
    void mutedCardIsNone();
    void cardIsSeenOnceItIsCounted();
    void cardsThatAreNeverCountedAreSeen();
    void readerThatWasAwayHasItsCardAgain();
};

void TestWatchedReader::readerIsUsableOnceItWasSeen()
{
    Observer observer;
    QCOMPARE(observer.reader.name(), "Reader 00 00");
    QVERIFY(!observer.reader.isUsable());
    observer.look(counted(SCARD_STATE_EMPTY, 0));
    QVERIFY(observer.reader.isUsable());
    QCOMPARE(observer.reader.state(), DWORD(SCARD_STATE_EMPTY));
    for (const DWORD away : {DWORD(SCARD_STATE_UNAVAILABLE), DWORD(SCARD_STATE_UNKNOWN)}) {
        observer.look(away);
        QVERIFY(!observer.reader.isUsable());
    }
}

void TestWatchedReader::cardComesAndLeaves()
{
    Observer observer;
    observer.look(counted(SCARD_STATE_EMPTY, 0));
    QCOMPARE(observer.came, 0);
    observer.look(counted(SCARD_STATE_PRESENT, 1));
    QCOMPARE(observer.came, 1);
    QVERIFY(observer.reader.hasCard());
    QCOMPARE(observer.reader.atr(), atr);
    // Another program uses it.
    observer.look(counted(SCARD_STATE_PRESENT | SCARD_STATE_INUSE, 1));
    QCOMPARE(observer.came, 1);
    QCOMPARE(observer.left, 0);
    observer.look(counted(SCARD_STATE_EMPTY, 2));
    QCOMPARE(observer.came, 1);
    QCOMPARE(observer.left, 1);
    QVERIFY(!observer.reader.hasCard());
}

void TestWatchedReader::cardThatLiesThereAtFirstIsSeen()
{
    Observer observer;
    observer.look(counted(SCARD_STATE_PRESENT, 0));
    QCOMPARE(observer.came, 1);
}

void TestWatchedReader::otherCardIsKnownByTheCount()
{
    Observer observer;
    observer.look(counted(SCARD_STATE_EMPTY, 0));
    observer.look(counted(SCARD_STATE_PRESENT, 1));
    observer.look(counted(SCARD_STATE_PRESENT, 3));
    QCOMPARE(observer.left, 1);
    QCOMPARE(observer.came, 2);
}

void TestWatchedReader::mutedCardIsNone()
{
    Observer observer;
    observer.look(counted(SCARD_STATE_EMPTY, 0));
    observer.look(counted(SCARD_STATE_PRESENT | SCARD_STATE_MUTE, 1));
    QCOMPARE(observer.came, 0);
    // Somebody has made it answer.
    observer.look(counted(SCARD_STATE_PRESENT, 1));
    QCOMPARE(observer.came, 1);
}

void TestWatchedReader::cardIsSeenOnceItIsCounted()
{
    Observer observer;
    observer.look(counted(SCARD_STATE_EMPTY, 4));
    for (int i = 0; i < 3; ++i) {
        observer.look(counted(SCARD_STATE_PRESENT, 4));
        QCOMPARE(observer.came, 0);
        // pcscd compares with this: another state than the card's makes it report again.
        QCOMPARE(observer.reader.state(), SCARD_STATE_EMPTY | (DWORD(4) << 16));
    }
    observer.look(counted(SCARD_STATE_PRESENT, 5));
    QCOMPARE(observer.came, 1);
    QCOMPARE(observer.left, 0);
}

void TestWatchedReader::cardsThatAreNeverCountedAreSeen()
{
    Observer observer;
    for (int card = 1; card <= 2; ++card) {
        observer.look(counted(SCARD_STATE_EMPTY, 0));
        for (int i = 0; i < 99; ++i)
            observer.look(counted(SCARD_STATE_PRESENT, 0));
        QCOMPARE(observer.came, card - 1);
        observer.look(counted(SCARD_STATE_PRESENT, 0));
        QCOMPARE(observer.came, card);
    }
    QCOMPARE(observer.left, 1);
}

void TestWatchedReader::readerThatWasAwayHasItsCardAgain()
{
    Observer observer;
    observer.look(counted(SCARD_STATE_PRESENT, 1));
    observer.look(SCARD_STATE_UNAVAILABLE);
    QCOMPARE(observer.left, 1);
    observer.look(counted(SCARD_STATE_PRESENT, 1));
    QCOMPARE(observer.came, 2);
}

QTEST_GUILESS_MAIN(TestWatchedReader)

#include "tst_watchedreader.moc"
