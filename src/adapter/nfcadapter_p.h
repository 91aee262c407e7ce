// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCADAPTER_P_H
#define CONNUI_NFCADAPTER_P_H

#include <chrono>
#include <optional>

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <QVariantMap>

class NfcAdapterProxy;
class QDBusError;
class QDBusServiceWatcher;

namespace ConnUi {

class NfcAdapter;
class NfcPendingCall;
class RadioState;

/** The process's one binding to the NFC daemon, shared by all its adapters. */
class NfcAdapterPrivate : public QObject
{
    Q_OBJECT

public:
    // A clock that no change of the date can fool.
    using Clock = std::chrono::steady_clock;

    /** How the binding follows a daemon that comes: waiting for its answers, or letting them come. */
    enum Mode { Waiting, Asynchronous };

    explicit NfcAdapterPrivate(Mode mode = Waiting);
    ~NfcAdapterPrivate() override;

    bool isAsynchronous() const;
    bool isValid() const;
    /** Returns whether the cache says that the adapter is switched on. */
    bool isPowered();
    /** Goes on in the asynchronous mode. */
    void bindAsynchronously();
    bool isNfcServiceStarted() const;
    void startNfcService(int timeout = defaultTimeout);
    void getProperties(int timeout);
    void setProperty(const QString &name, const QVariant &value, int timeout = defaultTimeout);

    // The siblings that do not wait; the outcome goes to the call.
    void startNfcServiceAsync(NfcPendingCall *call);
    void getPropertiesAsync(const QPointer<NfcPendingCall> &call);
    void setPoweredAsync(bool on, NfcPendingCall *call);
    /** Passes the outcome of \a method on to \a call, and a failure to the log. */
    void reportOutcome(const char *method, const QDBusPendingCall &pending, NfcPendingCall *call);

    static void warnFailedCall(const char *method, const QDBusError &error);

    static constexpr int defaultTimeout = -1;

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

private Q_SLOTS:
    void ignoreSignal();

private:
    void trackOwner();
    void bind(const QDBusPendingReply<QDBusObjectPath> &reply);
    void connectAdapterSignals(const QString &path);
    void disconnectAdapterSignals(const QString &path);
    void dropAdapterProxy();
    void unbind();
    void checkForBrokenDaemon();

    Mode mode;
    // The daemon's default adapter, which is not known yet.
    QPointer<QDBusPendingCallWatcher> question;
};

} // namespace ConnUi

#endif
