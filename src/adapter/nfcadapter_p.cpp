// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "adapter/nfcadapter_p.h"

#include <span>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QPointer>

#include <RadioState>

#include "adapter/nfchandoverrequestor.h"
#include "bus/nfcservice.h"
#include "nfcadapter.h"
#include "nfcadapterproxy.h"
#include "nfcmanagerproxy.h"

namespace ConnUi {

namespace {

// A daemon that lives shorter than this is not started again.
constexpr std::chrono::milliseconds shortestLife(3000);

struct Relay
{
    const char *signal;
    const char *slot;
};

// What the daemon's adapter announces, and who passes it on.
std::span<const Relay> relays()
{
    static const Relay table[] = {
        {"PropertyChanged", SLOT(propertyChanged(QString, QDBusVariant))},
        {"HandoverStarted", SLOT(handoverStarted())},
        {"HandoverCarrierSelected", SLOT(handoverCarrierSelected(QString))},
        {"HandoverCompleted", SLOT(handoverCompleted(QString, QDBusVariant))},
        {"HandoverFailed", SLOT(handoverFailed(QString))},
    };
    return table;
}

// Emits on every adapter that lives when the event comes, in their order. A slot may delete adapters or make
// new ones; when it deletes the last, this binding goes too, so callers touch no member afterwards.
template <typename Emit>
void announce(Emit emitOn)
{
    const QList<NfcAdapter *> &adapters = NfcAdapterPrivate::adapters;
    const QList<QPointer<NfcAdapter>> listeners(adapters.cbegin(), adapters.cend());
    for (const QPointer<NfcAdapter> &listener : listeners)
        if (listener)
            emitOn(listener.data());
}

} // namespace

NfcAdapterPrivate *NfcAdapterPrivate::instance = nullptr;
QList<NfcAdapter *> NfcAdapterPrivate::adapters;
bool NfcAdapterPrivate::adapterBroken = false;
NfcAdapterPrivate::Clock::time_point (*NfcAdapterPrivate::now)() = Clock::now;

NfcAdapterPrivate::NfcAdapterPrivate() : radioState(new RadioState(RadioState::NFC, this))
{
    // A signal whose types nobody has used yet cannot be connected.
    qDBusRegisterMetaType<QDBusVariant>();
    qDBusRegisterMetaType<QDBusObjectPath>();

    QDBusConnection bus = QDBusConnection::systemBus();
    new NfcHandoverRequestor(this);
    if (!bus.registerObject(NfcService::handoverRequestorPath(), this, QDBusConnection::ExportAdaptors))
        qWarning("NfcAdapter: Unable to register handler for handover");

    serviceWatcher = new QDBusServiceWatcher(NfcService::name(), bus,
                                             QDBusServiceWatcher::WatchForRegistration |
                                                 QDBusServiceWatcher::WatchForUnregistration);
    connect(serviceWatcher, &QDBusServiceWatcher::serviceRegistered, this,
            &NfcAdapterPrivate::serviceRegistered);
    connect(serviceWatcher, &QDBusServiceWatcher::serviceUnregistered, this,
            &NfcAdapterPrivate::serviceUnregistered);
    connect(serviceWatcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            &NfcAdapterPrivate::serviceOwnerChanged);

    if (adapterBroken)
        return;
    if (isNfcServiceStarted())
        serviceRegistered();
    else if (radioState->enabled())
        startNfcService();
}

NfcAdapterPrivate::~NfcAdapterPrivate()
{
    // The adapter's proxy stays: only the daemon's coming and going end one.
    delete serviceWatcher;
}

bool NfcAdapterPrivate::isValid() const
{
    return adapterProxy && adapterProxy->isValid();
}

bool NfcAdapterPrivate::isNfcServiceStarted() const
{
    QDBusConnectionInterface *bus = QDBusConnection::systemBus().interface();
    return bus && bus->isServiceRegistered(NfcService::name());
}

void NfcAdapterPrivate::startNfcService()
{
    if (adapterBroken) {
        qWarning("NfcAdapterPrivate: nfcd starting requested, but adapter marked as broken");
        return;
    }
    if (isNfcServiceStarted())
        return;

    QDBusConnectionInterface *bus = QDBusConnection::systemBus().interface();
    if (!bus || !bus->startService(NfcService::name()).isValid())
        qWarning("NfcAdapter: unable to start service com.tavix.nfc");
}

void NfcAdapterPrivate::getProperties()
{
    if (propertiesFetched || !isValid())
        return;

    QDBusPendingReply<QVariantMap> reply = adapterProxy->GetProperties();
    reply.waitForFinished();
    if (reply.isError()) {
        warnFailedCall("GetProperties", reply.error());
        return;
    }
    properties = reply.value();
    propertiesFetched = true;
}

void NfcAdapterPrivate::setProperty(const QString &name, const QVariant &value)
{
    if (!isValid())
        return;

    QDBusPendingReply<> reply = adapterProxy->SetProperty(name, QDBusVariant(value));
    reply.waitForFinished();
    if (reply.isError()) {
        warnFailedCall("SetProperty", reply.error());
        return;
    }
    propertiesFetched = false;
}

void NfcAdapterPrivate::warnFailedCall(const char *method, const QDBusError &error)
{
    qWarning("%s returned error '%s': %s", method, qUtf8Printable(error.name()),
             qUtf8Printable(error.message()));
}

void NfcAdapterPrivate::propertyChanged(const QString &property, const QDBusVariant &value)
{
    properties[property] = value.variant();

    QString name = property.toLower();
    if (name == QLatin1String("state"))
        name = QStringLiteral("powered");
    if (NfcAdapter::staticMetaObject.indexOfProperty(name.toUtf8().constData()) < 0)
        return;
    announce([name](NfcAdapter *adapter) { Q_EMIT adapter->propertyChanged(name); });
}

void NfcAdapterPrivate::serviceRegistered()
{
    dropAdapterProxy();
    launchTime = now();

    const QDBusConnection bus = QDBusConnection::systemBus();
    NfcManagerProxy manager(NfcService::name(), QStringLiteral("/"), bus);
    if (!manager.isValid()) {
        qWarning("Nfc server does not exist");
        return;
    }
    QDBusPendingReply<QDBusObjectPath> reply = manager.DefaultAdapter();
    reply.waitForFinished();
    if (reply.isError()) {
        warnFailedCall("DefaultAdapter", reply.error());
        return;
    }

    const QString path = reply.value().path();
    // Before the proxy: with its signals connected the D-Bus library knows the daemon's owner, and asks the
    // bus no more.
    connectAdapterSignals(path);
    adapterProxy = new NfcAdapterProxy(NfcService::name(), path, bus);
    if (!adapterProxy->isValid()) {
        qWarning("Unable to get adapter proxy for %s", qUtf8Printable(path));
        disconnectAdapterSignals(path);
        return;
    }
    announce([](NfcAdapter *adapter) { Q_EMIT adapter->adapterValid(); });
    adapterBroken = false;
}

void NfcAdapterPrivate::serviceUnregistered()
{
    checkForBrokenDaemon();
    unbind();
}

void NfcAdapterPrivate::serviceOwnerChanged(const QString &, const QString &oldOwner, const QString &newOwner)
{
    // A daemon that another one replaces neither unregisters nor has it died. Its successor knows no agent.
    if (oldOwner.isEmpty() || newOwner.isEmpty())
        return;
    const QPointer<NfcAdapterPrivate> self(this);
    unbind();
    if (self)
        serviceRegistered();
}

void NfcAdapterPrivate::handoverCallFinished(QDBusPendingCallWatcher *watcher)
{
    // Before the announcement: a slot may delete the adapter that owns the watcher.
    watcher->deleteLater();
    if (watcher->isError())
        handoverFailed(QLatin1String("Unable to start handover: ") + watcher->error().message());
}

void NfcAdapterPrivate::handoverStarted()
{
    announce([](NfcAdapter *adapter) { Q_EMIT adapter->handoverStarted(); });
}

void NfcAdapterPrivate::handoverCarrierSelected(const QString &carrier)
{
    announce([carrier](NfcAdapter *adapter) { Q_EMIT adapter->handoverCarrierSelected(carrier); });
}

void NfcAdapterPrivate::handoverCompleted(const QString &carrier, const QDBusVariant &data)
{
    const QVariant plain = data.variant();
    announce([carrier, plain](NfcAdapter *adapter) { Q_EMIT adapter->handoverCompleted(carrier, plain); });
}

void NfcAdapterPrivate::handoverFailed(const QString &reason)
{
    announce([reason](NfcAdapter *adapter) { Q_EMIT adapter->handoverFailed(reason); });
}

void NfcAdapterPrivate::connectAdapterSignals(const QString &path)
{
    QDBusConnection bus = QDBusConnection::systemBus();
    for (const Relay &relay : relays()) {
        bus.connect(NfcService::name(), path, QLatin1String(NfcAdapterProxy::staticInterfaceName()),
                    QLatin1String(relay.signal), this, relay.slot);
    }
}

void NfcAdapterPrivate::disconnectAdapterSignals(const QString &path)
{
    QDBusConnection bus = QDBusConnection::systemBus();
    for (const Relay &relay : relays()) {
        bus.disconnect(NfcService::name(), path, QLatin1String(NfcAdapterProxy::staticInterfaceName()),
                       QLatin1String(relay.signal), this, relay.slot);
    }
}

void NfcAdapterPrivate::dropAdapterProxy()
{
    if (!adapterProxy)
        return;

    // The next daemon's default adapter may have another path; nothing of the old one may be heard then.
    disconnectAdapterSignals(adapterProxy->path());
    delete adapterProxy;
    adapterProxy = nullptr;
}

void NfcAdapterPrivate::unbind()
{
    dropAdapterProxy();
    properties.clear();
    propertiesFetched = false;
    announce([](NfcAdapter *adapter) { Q_EMIT adapter->adapterInvalid(); });
}

void NfcAdapterPrivate::checkForBrokenDaemon()
{
    // A daemon that this binding never saw coming up cannot have come up just now.
    if (!launchTime || !radioState->enabled())
        return;
    const auto life = std::chrono::duration_cast<std::chrono::milliseconds>(now() - *launchTime);
    if (life >= shortestLife)
        return;

    qWarning("NfcAdapterPrivate: nfcd stopped %d msec after launch when adapter is powered",
             int(life.count()));
    qWarning("NfcAdapterPrivate: marking adapter as broken");
    radioState->setEnabled(false);
    adapterBroken = true;
}

} // namespace ConnUi
