// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "simulateddaemon.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>
#include <QTest>

namespace {

QString serviceName()
{
    return QStringLiteral("com.tavix.nfc");
}

QString adapterPath()
{
    return QStringLiteral("/com/tavix/nfc/adapter0");
}

QString adapterInterface()
{
    return QStringLiteral("com.tavix.nfc.Adapter");
}

} // namespace

SimulatedDaemon::~SimulatedDaemon()
{
    kill();
}

void SimulatedDaemon::start(const QStringList &arguments)
{
    process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(QStringLiteral(NFCD_SIM), arguments);
    QVERIFY(QTest::qWaitFor(isOnBus, 30000));
}

void SimulatedDaemon::kill()
{
    if (!process)
        return;
    process->kill();
    process->waitForFinished();
    process.reset();
    QVERIFY(QTest::qWaitFor([] { return !isOnBus(); }, 30000));
}

bool SimulatedDaemon::isOnBus()
{
    return QDBusConnection::systemBus().interface()->isServiceRegistered(serviceName());
}

void SimulatedDaemon::makeActivatable()
{
    QVERIFY(QFile::copy(QStringLiteral(SYSTEM_SERVICES "/com.tavix.nfc.service"),
                        qEnvironmentVariable("CONNUI_SYSTEM_SERVICES") +
                            QStringLiteral("/com.tavix.nfc.service")));
}

QDBusMessage SimulatedDaemon::callAdapter(const QString &method, const QVariantList &arguments, int timeLimit)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(serviceName(), adapterPath(), adapterInterface(), method);
    call.setArguments(arguments);
    return QDBusConnection::systemBus().call(call, QDBus::Block, timeLimit);
}

bool SimulatedDaemon::connectAdapter(const QString &signal, QObject *receiver, const char *slot)
{
    return QDBusConnection::systemBus().connect(serviceName(), adapterPath(), adapterInterface(), signal,
                                                receiver, slot);
}
