// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "settings/clientstatus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>

#include <MButton>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>

#include "support/whenanswered.h"

using Support::whenAnswered;

namespace {

constexpr QLatin1String service("org.connui.NfcUi");
constexpr QLatin1String objectPath("/org/connui/NfcUi");
constexpr QLatin1String interfaceName("org.connui.NfcUi");
constexpr QLatin1String properties("org.freedesktop.DBus.Properties");

QDBusPendingCall call(const QString &interface, const QString &method, const QVariantList &arguments = {})
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, objectPath, interface, method);
    message.setArguments(arguments);
    // Opening the settings does not start the client.
    message.setAutoStartService(false);
    return QDBusConnection::sessionBus().asyncCall(message);
}

} // namespace

ClientStatus::ClientStatus()
    : watcher(service, QDBusConnection::sessionBus())
    , unregistered(new MLabel(qtTrId("qtn_nfc_sett_unregistered")))
    , transfers(new MButton(qtTrId("qtn_nfc_sett_transfers")))
{
    unregistered->setStyleName(QStringLiteral("CommonSubTitle"));
    unregistered->setWordWrap(true);
    transfers->setStyleName(QStringLiteral("CommonSingleButton"));
    auto *layout = new MLayout(this);
    auto *policy = new MLinearLayoutPolicy(layout, Qt::Vertical);
    policy->addItem(unregistered);
    policy->addItem(transfers, Qt::AlignHCenter);
    forget();

    connect(transfers, &MButton::clicked, this, &ClientStatus::showTransfers);
    connect(&watcher, &QDBusServiceWatcher::serviceRegistered, this, &ClientStatus::read);
    connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, this, &ClientStatus::forget);
    QDBusConnection::sessionBus().connect(service, objectPath, properties,
                                          QStringLiteral("PropertiesChanged"), this,
                                          SLOT(update(QString, QVariantMap)));
    read();
}

void ClientStatus::read()
{
    whenAnswered(
        call(properties, QStringLiteral("GetAll"), {QString(interfaceName)}), this,
        [this](const QDBusPendingReply<QVariantMap> &reply) {
            // An error: there is no client in this session.
            if (!reply.isError())
                take(reply.value());
        });
}

void ClientStatus::forget()
{
    unregistered->hide();
    transfers->hide();
    hide();
}

void ClientStatus::update(const QString &interface, const QVariantMap &changed)
{
    if (interface == interfaceName)
        take(changed);
}

void ClientStatus::take(const QVariantMap &now)
{
    const QVariant registered = now.value(QStringLiteral("Registered"));
    if (registered.isValid())
        unregistered->setVisible(!registered.toBool());
    const QVariant hidden = now.value(QStringLiteral("HiddenTransfers"));
    if (hidden.isValid())
        transfers->setVisible(hidden.toUInt() > 0);
    // Without a row there is no gap either.
    setVisible(unregistered->isVisibleTo(this) || transfers->isVisibleTo(this));
}

void ClientStatus::showTransfers()
{
    call(interfaceName, QStringLiteral("ShowTransfers"));
}
