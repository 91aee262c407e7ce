// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusConnection>
#include <QDBusVariant>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include "daemon/adapter.h"

namespace {

const QString bluetooth = QStringLiteral("bluetooth");

} // namespace

class TestHandover : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void handoverFailsWhenItsRequestorLeaves();
    void handoverEndsOnce_data();
    void handoverEndsOnce();
    void nextHandoverDoesNotEndWithTheOneBefore();
};

void TestHandover::initTestCase()
{
    qRegisterMetaType<QDBusVariant>();
}

void TestHandover::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestHandover::handoverFailsWhenItsRequestorLeaves()
{
    const QString other = QStringLiteral("other");
    const QString name = QDBusConnection::connectToBus(QDBusConnection::SystemBus, other).baseService();
    const Handover handover(bluetooth, {name, QDBusObjectPath(QStringLiteral("/requestor"))});
    QSignalSpy failed(&handover, &Handover::failed);
    QDBusConnection::disconnectFromBus(other);
    QTRY_COMPARE(failed.size(), 1);
    QCOMPARE(failed.constFirst().constFirst().toString(), QStringLiteral("The requestor has left"));
}

void TestHandover::handoverEndsOnce_data()
{
    QTest::addColumn<bool>("completes");
    QTest::newRow("completed") << true;
    QTest::newRow("failed") << false;
}

void TestHandover::handoverEndsOnce()
{
    QFETCH(bool, completes);
    Handover handover(bluetooth, {});
    const QSignalSpy completed(&handover, &Handover::completed);
    const QSignalSpy failed(&handover, &Handover::failed);
    const auto end = [&handover](bool completes) {
        if (completes)
            handover.complete({});
        else
            handover.fail(QStringLiteral("Canceled"));
    };
    for (const bool which : {completes, true, false})
        end(which);
    QCOMPARE(completed.size(), completes ? 1 : 0);
    QCOMPARE(failed.size(), completes ? 0 : 1);
}

// A handover that has had its end is there until the next round of the event loop, and so is its requestor.
void TestHandover::nextHandoverDoesNotEndWithTheOneBefore()
{
    Adapter adapter;
    const QSignalSpy failed(&adapter, &Adapter::HandoverFailed);
    QString reason;
    Handover *first = adapter.acceptHandover(bluetooth, {}, reason);
    first->complete({});
    Handover *next = adapter.acceptHandover(bluetooth, {}, reason);
    first->fail(QStringLiteral("The requestor has left"));
    QCOMPARE(failed.size(), 0);
    QCOMPARE(adapter.currentHandover(), next);
}

QTEST_GUILESS_MAIN(TestHandover)
#include "tst_handover.moc"
