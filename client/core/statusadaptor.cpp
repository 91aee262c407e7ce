// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/statusadaptor.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include "core/session.h"

namespace {

constexpr QLatin1String objectPath("/org/connui/NfcUi");

} // namespace

StatusAdaptor::StatusAdaptor(Session *session) : QDBusAbstractAdaptor(session), session(session)
{
    QDBusConnection::sessionBus().registerObject(objectPath, session);
    connect(
        session, &Session::registeredChanged, this,
        [this](bool registered) { announce(QStringLiteral("Registered"), registered); });
    connect(session, &Session::hiddenTransfersChanged, this,
            [this](uint hidden) { announce(QStringLiteral("HiddenTransfers"), hidden); });
}

bool StatusAdaptor::isRegistered() const
{
    return session->isRegistered();
}

uint StatusAdaptor::hiddenTransfers() const
{
    return session->hiddenTransfers();
}

void StatusAdaptor::ShowTransfers()
{
    session->showTransfers();
}

void StatusAdaptor::announce(const QString &property, const QVariant &value)
{
    QDBusMessage changed = QDBusMessage::createSignal(
        objectPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"));
    changed << QStringLiteral("org.connui.NfcUi") << QVariantMap{{property, value}} << QStringList();
    QDBusConnection::sessionBus().send(changed);
}
