// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QRegularExpression>
#include <QTest>

#include <NdefMessageHandler>

using ConnUi::NdefMessageHandler;

/** Where the session bus does not see the processes of its clients. */
class TestNdefMessageHandlerInAContainer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void handlerOfAnUnknownProcessIsNotInFront();
};

void TestNdefMessageHandlerInAContainer::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestNdefMessageHandlerInAContainer::handlerOfAnUnknownProcessIsNotInFront()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const QDBusReply<uint> pid = bus.interface()->servicePid(bus.baseService());
    // Buses that know processes by their file descriptors answer with an error, older ones with zero.
    QVERIFY(!pid.isValid() || pid.value() == 0);

    QTest::ignoreMessage(QtWarningMsg, "ApplicationTracker: Unable to subscribe to track applications");
    const NdefMessageHandler handler(QStringLiteral("viewer"), QStringLiteral("session"), bus.baseService(),
                                     QDBusObjectPath(QStringLiteral("/viewer")));
    QVERIFY(!handler.isRunningOnForeground());
}

QTEST_GUILESS_MAIN(TestNdefMessageHandlerInAContainer)

#include "tst_ndefmessagehandlerinacontainer.moc"
