// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusConnection>
#include <QSignalSpy>
#include <QTest>

#include "daemon/buspeer.h"

class TestBusPeer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void leavingIsReported();
    void peerThatHadLeftBeforeIsReported();

private:
    static QString join();
    static void leave();
};

void TestBusPeer::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

// Has another connection join the bus and returns its name.
QString TestBusPeer::join()
{
    return QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("other")).baseService();
}

void TestBusPeer::leave()
{
    QDBusConnection::disconnectFromBus(QStringLiteral("other"));
}

void TestBusPeer::leavingIsReported()
{
    const BusPeer peer(join());
    const BusPeer another(QDBusConnection::systemBus().baseService());
    const QSignalSpy left(&peer, &BusPeer::left);
    const QSignalSpy anotherLeft(&another, &BusPeer::left);
    leave();
    QTRY_COMPARE(left.size(), 1);
    QCOMPARE(anotherLeft.size(), 0);
}

void TestBusPeer::peerThatHadLeftBeforeIsReported()
{
    const QString name = join();
    leave();
    const BusPeer peer(name);
    const QSignalSpy left(&peer, &BusPeer::left);
    QTRY_COMPARE(left.size(), 1);
}

QTEST_GUILESS_MAIN(TestBusPeer)
#include "tst_buspeer.moc"
