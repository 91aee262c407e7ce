// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "adapter/nfcadapter_p.h"

#include <span>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QPointer>

#include <RadioState>

#include "adapter/nfchandoverrequestor.h"
#include "bus/busdaemon.h"
#include "bus/nfcpendingcall_p.h"
#include "bus/nfcservice.h"
#include "nfcadapter.h"
#include "nfcadapterproxy.h"
#include "nfcmanagerproxy.h"
#include "support/whenanswered.h"

namespace ConnUi {

using Support::whenAnswered;

namespace {

// A daemon that lives shorter than this is not started again.
constexpr std::chrono::milliseconds shortestLife(3000);

struct Relay
{
    const char *signal;
    const char *slot;
};

// The signals of the daemon's adapter, and the slots that pass them on.
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

QString managerPath()
{
    return QStringLiteral("/");
}

} // namespace

NfcAdapterPrivate *NfcAdapterPrivate::instance = nullptr;
QList<NfcAdapter *> NfcAdapterPrivate::adapters;
bool NfcAdapterPrivate::adapterBroken = false;
NfcAdapterPrivate::Clock::time_point (*NfcAdapterPrivate::now)() = Clock::now;

NfcAdapterPrivate::NfcAdapterPrivate(Mode mode)
    : radioState(new RadioState(RadioState::NFC, this))
    , mode(mode)
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

    if (mode == Asynchronous)
        trackOwner();
    if (adapterBroken)
        return;
    if (isNfcServiceStarted())
        serviceRegistered();
    else if (radioState->enabled() && mode == Asynchronous)
        startNfcServiceAsync(nullptr);
    else if (radioState->enabled())
        startNfcService();
}

NfcAdapterPrivate::~NfcAdapterPrivate()
{
    // The adapter's proxy stays: only the daemon's coming and going end one.
    delete serviceWatcher;
}

bool NfcAdapterPrivate::isAsynchronous() const
{
    return mode == Asynchronous;
}

bool NfcAdapterPrivate::isValid() const
{
    return adapterProxy && adapterProxy->isValid();
}

bool NfcAdapterPrivate::isPowered()
{
    return properties[QStringLiteral("State")].toString() == QLatin1String("on");
}

void NfcAdapterPrivate::bindAsynchronously()
{
    if (mode == Asynchronous)
        return;
    mode = Asynchronous;
    trackOwner();
}

bool NfcAdapterPrivate::isNfcServiceStarted() const
{
    if (mode == Asynchronous)
        return NfcManagerProxy(NfcService::name(), managerPath(), QDBusConnection::systemBus()).isValid();
    QDBusConnectionInterface *bus = QDBusConnection::systemBus().interface();
    return bus && bus->isServiceRegistered(NfcService::name());
}

void NfcAdapterPrivate::startNfcService(int timeout)
{
    if (adapterBroken) {
        qWarning("NfcAdapterPrivate: nfcd starting requested, but adapter marked as broken");
        return;
    }
    if (isNfcServiceStarted())
        return;

    QDBusPendingCall started = BusDaemon::start(QDBusConnection::systemBus(), NfcService::name(), timeout);
    started.waitForFinished();
    if (started.isError())
        qWarning("NfcAdapter: unable to start service com.tavix.nfc");
}

void NfcAdapterPrivate::getProperties(int timeout)
{
    if (propertiesFetched || !isValid())
        return;

    adapterProxy->setTimeout(timeout);
    QDBusPendingReply<QVariantMap> reply = adapterProxy->GetProperties();
    adapterProxy->setTimeout(defaultTimeout);
    reply.waitForFinished();
    if (reply.isError()) {
        warnFailedCall("GetProperties", reply.error());
        return;
    }
    properties = reply.value();
    propertiesFetched = true;
}

void NfcAdapterPrivate::setProperty(const QString &name, const QVariant &value, int timeout)
{
    if (!isValid())
        return;

    adapterProxy->setTimeout(timeout);
    QDBusPendingReply<> reply = adapterProxy->SetProperty(name, QDBusVariant(value));
    adapterProxy->setTimeout(defaultTimeout);
    reply.waitForFinished();
    if (reply.isError()) {
        warnFailedCall("SetProperty", reply.error());
        return;
    }
    propertiesFetched = false;
}

void NfcAdapterPrivate::startNfcServiceAsync(NfcPendingCall *call)
{
    if (adapterBroken) {
        qWarning("NfcAdapterPrivate: nfcd starting requested, but adapter marked as broken");
        NfcPendingCallPrivate::finishLater(call, {}, NfcPendingCallPrivate::noDaemon());
        return;
    }
    whenAnswered(BusDaemon::start(QDBusConnection::systemBus(), NfcService::name()), this,
                 [call = QPointer(call)](const QDBusPendingCall &answer) {
                     if (answer.isError())
                         qWarning("NfcAdapter: unable to start service com.tavix.nfc");
                     NfcPendingCallPrivate::finish(call, {}, answer.error());
                 });
}

void NfcAdapterPrivate::getPropertiesAsync(const QPointer<NfcPendingCall> &call)
{
    // The properties of a daemon do not hold for the next one.
    const QPointer<NfcAdapterProxy> asked(adapterProxy);
    whenAnswered(adapterProxy->GetProperties(), this, [this, asked, call](const QDBusPendingCall &answer) {
        const QDBusPendingReply<QVariantMap> reply = answer;
        if (reply.isError())
            warnFailedCall("GetProperties", reply.error());
        else if (asked) {
            properties = reply.value();
            propertiesFetched = true;
        }
        NfcPendingCallPrivate::finish(call, isValid() && isPowered(), reply.error());
    });
}

void NfcAdapterPrivate::setPoweredAsync(bool on, NfcPendingCall *call)
{
    if (on && !isNfcServiceStarted()) {
        startNfcServiceAsync(call);
        return;
    }
    radioState->setEnabled(on);
    if (!isValid()) {
        NfcPendingCallPrivate::finishLater(call, {}, on ? NfcPendingCallPrivate::noDaemon() : QDBusError());
        return;
    }
    const QString state = on ? QStringLiteral("on") : QStringLiteral("off");
    const QDBusPendingCall pending = adapterProxy->SetProperty(QStringLiteral("State"), QDBusVariant(state));
    whenAnswered(pending, this, [this, call = QPointer(call)](const QDBusPendingCall &answer) {
        if (answer.isError())
            warnFailedCall("SetProperty", answer.error());
        else
            propertiesFetched = false;
        NfcPendingCallPrivate::finish(call, {}, answer.error());
    });
}

void NfcAdapterPrivate::reportOutcome(const char *method, const QDBusPendingCall &pending,
                                      NfcPendingCall *call)
{
    whenAnswered(
        pending, this,
        [method, call = QPointer(call)](const QDBusPendingCall &answer) {
            if (answer.isError())
                warnFailedCall(method, answer.error());
            NfcPendingCallPrivate::finish(call, {}, answer.error());
        });
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
    if (mode == Asynchronous) {
        // Not through a proxy, which may not know the daemon's new owner yet.
        QDBusMessage call = QDBusMessage::createMethodCall(
            NfcService::name(), managerPath(), QLatin1String(NfcManagerProxy::staticInterfaceName()),
            QStringLiteral("DefaultAdapter"));
        call.setAutoStartService(false);
        question =
            whenAnswered(bus.asyncCall(call), this, [this](const QDBusPendingCall &answer) { bind(answer); });
        return;
    }
    NfcManagerProxy manager(NfcService::name(), managerPath(), bus);
    if (!manager.isValid()) {
        qWarning("Nfc server does not exist");
        return;
    }
    QDBusPendingReply<QDBusObjectPath> reply = manager.DefaultAdapter();
    reply.waitForFinished();
    bind(reply);
}

void NfcAdapterPrivate::bind(const QDBusPendingReply<QDBusObjectPath> &reply)
{
    question = nullptr;
    if (reply.isError()) {
        warnFailedCall("DefaultAdapter", reply.error());
        return;
    }

    const QString path = reply.value().path();
    // Before the proxy: with its signals connected QtDBus knows the daemon's owner, and asks the
    // bus no more.
    connectAdapterSignals(path);
    adapterProxy = new NfcAdapterProxy(NfcService::name(), path, QDBusConnection::systemBus());
    if (!adapterProxy->isValid()) {
        qWarning("Unable to get adapter proxy for %s", qUtf8Printable(path));
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

void NfcAdapterPrivate::ignoreSignal() {}

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

void NfcAdapterPrivate::trackOwner()
{
    // While any signal of a service is connected, QtDBus knows the service's owner, and nothing
    // that is made for the service later waits for the bus to name it. The manager has no signals.
    QDBusConnection::systemBus().connect(NfcService::name(), managerPath(),
                                         QLatin1String(NfcManagerProxy::staticInterfaceName()), QString(),
                                         this, SLOT(ignoreSignal()));
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
    // An answer that is still to come would be a former daemon's.
    delete question;
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
