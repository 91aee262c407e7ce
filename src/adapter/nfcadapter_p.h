// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCADAPTER_P_H
#define CONNUI_NFCADAPTER_P_H

#include <chrono>
#include <optional>

#include <QDBusVariant>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariant>
#include <QVariantMap>

class NfcAdapterProxy;
class QDBusError;
class QDBusPendingCallWatcher;
class QDBusServiceWatcher;

namespace ConnUi {

class NfcAdapter;
class RadioState;

/** The process's one binding to the NFC daemon, shared by all its adapters. */
class NfcAdapterPrivate : public QObject
{
    Q_OBJECT

public:
    // A clock that no change of the date can fool.
    using Clock = std::chrono::steady_clock;

    NfcAdapterPrivate();
    ~NfcAdapterPrivate() override;

    bool isValid() const;
    bool isNfcServiceStarted() const;
    void startNfcService();
    void getProperties();
    void setProperty(const QString &name, const QVariant &value);

    static void warnFailedCall(const char *method, const QDBusError &error);

    static NfcAdapterPrivate *instance;
    static QList<NfcAdapter *> adapters;
    static bool adapterBroken;
    static Clock::time_point (*now)();

    std::optional<Clock::time_point> launchTime;
    bool propertiesFetched = false;
    QVariantMap properties;
    NfcAdapterProxy *adapterProxy = nullptr;
    QDBusServiceWatcher *serviceWatcher = nullptr;
    RadioState *radioState;

public Q_SLOTS:
    void propertyChanged(const QString &property, const QDBusVariant &value);
    void serviceRegistered();
    void serviceUnregistered();
    void serviceOwnerChanged(const QString &service, const QString &oldOwner, const QString &newOwner);
    void handoverCallFinished(QDBusPendingCallWatcher *watcher);
    void handoverStarted();
    void handoverCarrierSelected(const QString &carrier);
    void handoverCompleted(const QString &carrier, const QDBusVariant &data);
    void handoverFailed(const QString &reason);

private:
    void connectAdapterSignals(const QString &path);
    void disconnectAdapterSignals(const QString &path);
    void dropAdapterProxy();
    void unbind();
    void checkForBrokenDaemon();
};

} // namespace ConnUi

#endif
