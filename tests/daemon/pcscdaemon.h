// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_PCSCDAEMON_H
#define CONNUI_TESTS_PCSCDAEMON_H

#include <algorithm>
#include <csignal>
#include <sys/types.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

/** nfcd-pcsc in a process of its own, and calls to it from the test program. */
class PcscDaemon
{
public:
    PcscDaemon() { process.setProcessChannelMode(QProcess::MergedChannels); }
    ~PcscDaemon() { kill(); }

    /** Starts it and waits until it is on the bus. */
    void start(const QStringList &arguments = {})
    {
        said.clear();
        process.start(QStringLiteral(NFCD_PCSC), arguments);
        QVERIFY(QTest::qWaitFor(isOnBus, 30000));
    }

    /** Starts it and waits until it has both readers. */
    void startWithReaders()
    {
        start();
        QVERIFY(QTest::qWaitFor([this] { return readers().size() == 2; }, 30000));
    }

    void kill()
    {
        process.kill();
        process.waitForFinished();
        QVERIFY(QTest::qWaitFor([] { return !isOnBus(); }, 30000));
    }

    /** Stops it where it is, or lets it go on. */
    void setStopped(bool isStopped) { ::kill(pid_t(process.processId()), isStopped ? SIGSTOP : SIGCONT); }

    static bool isOnBus()
    {
        return QDBusConnection::systemBus().interface()->isServiceRegistered(QStringLiteral("com.tavix.nfc"));
    }

    /** Its output so far. */
    QString log()
    {
        said += QString::fromUtf8(process.readAll());
        return said;
    }

    QDBusMessage call(const QString &method, const QVariantList &arguments = {})
    {
        QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("com.tavix.nfc"),
                                                           QStringLiteral("/com/tavix/nfc/adapter0"),
                                                           QStringLiteral("com.tavix.nfc.Adapter"), method);
        call.setArguments(arguments);
        return QDBusConnection::systemBus().call(call);
    }

    QVariantMap properties()
    {
        QElapsedTimer timer;
        timer.start();
        const QDBusMessage reply = call(QStringLiteral("GetProperties"));
        longestAnswer = std::max(longestAnswer, timer.elapsed());
        return qdbus_cast<QVariantMap>(reply.arguments().value(0));
    }

    QStringList readers() { return properties().value(QStringLiteral("Readers")).toStringList(); }
    QString backend() { return properties().value(QStringLiteral("Backend")).toString(); }

    void setPowered(bool on)
    {
        const QString state = on ? QStringLiteral("on") : QStringLiteral("off");
        call(QStringLiteral("SetProperty"),
             {QStringLiteral("State"), QVariant::fromValue(QDBusVariant(state))});
    }

    qint64 longestAnswer = 0; ///< of properties(), in milliseconds

private:
    QProcess process;
    QString said;
};

#endif
