// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QtTest>

#include "catalogue.h"
#include "fakeservice.h"
#include "screen/screenface.h"

namespace {

const auto service = QStringLiteral("org.sigxcpu.Feedback");
const auto trigger = QStringLiteral("TriggerFeedback");

} // namespace

class TestTouchFeedback : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Offscreen, nothing is raised or masked.
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support )")));
    }

    void touchIsFelt();
    void absentServiceIsNotStarted();
    void serviceThatHangsKeepsNobodyWaiting();
};

void TestTouchFeedback::touchIsFelt()
{
    const Catalogue catalogue;
    FakeService phone(QDBusConnection::SessionBus, service);
    phone.reply(trigger, {1U});
    phone.start();
    ScreenFace face;
    face.indicateTouch();
    QTRY_COMPARE(phone.calls(trigger).size(), 1);
    const QVariantList arguments = phone.calls(trigger).first().arguments;
    QCOMPARE(arguments.size(), 4);
    QCOMPARE(arguments.at(0).toString(), QStringLiteral("nfc-ui"));
    QCOMPARE(arguments.at(1).toString(), QStringLiteral("button-pressed"));
    QCOMPARE(arguments.at(3).toInt(), -1);
    face.indicateTouch();
    QTRY_COMPARE(phone.calls(trigger).size(), 2);
}

void TestTouchFeedback::absentServiceIsNotStarted()
{
    const Catalogue catalogue;
    FakeService phone(QDBusConnection::SessionBus, service);
    phone.makeActivatable();
    ScreenFace face;
    face.indicateTouch();
    QVERIFY(!QTest::qWaitFor([&phone] { return phone.isOnBus(); }, 1000));
}

void TestTouchFeedback::serviceThatHangsKeepsNobodyWaiting()
{
    const Catalogue catalogue;
    FakeService phone(QDBusConnection::SessionBus, service);
    phone.start();
    phone.suspend();
    ScreenFace face;
    QElapsedTimer timer;
    timer.start();
    face.indicateTouch();
    // Far less than the time after which the bus gives up.
    QVERIFY(timer.elapsed() < 10000);
    phone.resume();
}

QTEST_MAIN(TestTouchFeedback)
#include "tst_touchfeedback.moc"
