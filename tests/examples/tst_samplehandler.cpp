// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QProcess>
#include <QTest>

#include "privatebus.h"

class TestSampleHandler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void handlerEndsWithItsSession();
    void helpAndVersionArePrinted();
};

void TestSampleHandler::handlerEndsWithItsSession()
{
    PrivateBus bus;
    QProcess handler;
    handler.setProcessEnvironment(bus.environment(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")));
    handler.start(QStringLiteral(SAMPLE_HANDLER), {});
    QByteArray output;
    const auto isReady = [&handler, &output] {
        output += handler.readAllStandardOutput();
        return output == "waiting for tags\n";
    };
    QVERIFY(QTest::qWaitFor(isReady, 30000));
    bus.end();
    QVERIFY(handler.waitForFinished());
    QCOMPARE(handler.exitStatus(), QProcess::NormalExit);
    QCOMPARE(handler.exitCode(), 0);
}

void TestSampleHandler::helpAndVersionArePrinted()
{
    for (const QString &option : {QStringLiteral("--help"), QStringLiteral("--version")}) {
        QProcess handler;
        handler.start(QStringLiteral(SAMPLE_HANDLER), {option});
        QVERIFY(handler.waitForFinished());
        QCOMPARE(handler.exitCode(), 0);
        QVERIFY(handler.readAllStandardOutput().contains("sample-handler"));
    }
}

QTEST_GUILESS_MAIN(TestSampleHandler)
#include "tst_samplehandler.moc"
