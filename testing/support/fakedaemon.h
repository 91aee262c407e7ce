// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_FAKEDAEMON_H
#define CONNUI_FAKEDAEMON_H

#include <QDBusObjectPath>
#include <QDBusVariant>

#include "fakeservice.h"

/** A fake NFC daemon: a manager, and an adapter that is switched on. */
class FakeDaemon : public FakeService
{
public:
    FakeDaemon() : FakeService(QDBusConnection::SystemBus, QStringLiteral("com.tavix.nfc")) {}

    static QString adapterPath() { return QStringLiteral("/com/tavix/nfc/adapter0"); }

    /** Sets what the adapter's "State" reads as, without announcing it. */
    void setState(const QString &state)
    {
        reply(QStringLiteral("GetProperties"), {QVariantMap{{QStringLiteral("State"), state}}});
    }

    void emitAdapterSignal(const QString &member, const QVariantList &arguments = {})
    {
        emitSignal(adapterPath(), QStringLiteral("com.tavix.nfc.Adapter"), member, arguments);
    }

    void emitPropertyChanged(const QString &name, const QVariant &value)
    {
        emitAdapterSignal(QStringLiteral("PropertyChanged"),
                          {name, QVariant::fromValue(QDBusVariant(value))});
    }

    /** Calls an agent of the test program without waiting; see FakeService::call(). */
    int callAgent(const QString &path, const QString &member, const QVariantList &arguments = {})
    {
        return call(QDBusConnection::systemBus().baseService(), path, QStringLiteral("com.tavix.nfc.UIAgent"),
                    member, arguments);
    }
};

#endif
