// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <atomic>
#include <winscard.h>

#include <QRegularExpression>
#include <QTest>

#include "daemon/pcsc/readerworker.h"
#include "failingpcscd.h"
#include "pcscdprocess.h"

/** A worker and a card that another program has, by a pcscd that is not real: nothing else holds that moment.
 */
class TestReaderWorker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { PcscdProcess::die(); }
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void transactionThatCannotBeginIsInterrupted();
};

void TestReaderWorker::transactionThatCannotBeginIsInterrupted()
{
    const FailingPcscd busy(FailingPcscd::BeginTransaction, LONG(SCARD_E_SHARING_VIOLATION));
    std::atomic<bool> isOver = false;
    std::atomic<bool> hasBegun = false;
    std::atomic<ReaderWorker::Outcome> outcome = ReaderWorker::Outcome::Talked;
    ReaderWorker worker("Virtual reader 0 00 00");
    worker.start({[&] { hasBegun = true; }, [](Exchange &) {},
                  [&](ReaderWorker::Outcome end) {
                      outcome = end;
                      isOver = true;
                  }});
    // The library tries on and on.
    QTRY_VERIFY(busy.failures() >= 3);
    QVERIFY(!isOver);
    worker.interrupt();
    QTRY_VERIFY(isOver.load());
    QVERIFY(!hasBegun);
    QCOMPARE(int(outcome.load()), int(ReaderWorker::Outcome::Held));
}

QTEST_GUILESS_MAIN(TestReaderWorker)

#include "tst_readerworker.moc"
