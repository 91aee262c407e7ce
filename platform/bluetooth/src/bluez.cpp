// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusArgument>

#include "bluez_p.h"

namespace ConnUi {

QDBusMessage BlueZ::methodCall(const QString &path, const QString &interface, const QString &method,
                               const QVariantList &arguments)
{
    auto call = QDBusMessage::createMethodCall(Service, path, interface, method);
    call.setAutoStartService(false);
    call.setArguments(arguments);
    return call;
}

QDBusMessage BlueZ::managedObjectsCall()
{
    return methodCall(QStringLiteral("/"), ObjectManager, QStringLiteral("GetManagedObjects"));
}

BlueZ::Objects BlueZ::managedObjects(const QDBusMessage &reply, QString *problem)
{
    problem->clear();
    if (reply.type() == QDBusMessage::ErrorMessage)
        *problem = reply.errorMessage();
    else if (reply.signature() != QStringLiteral("a{oa{sa{sv}}}"))
        *problem = QStringLiteral("unexpected answer of type \"%1\"").arg(reply.signature());
    if (!problem->isEmpty())
        return Objects();
    return qdbus_cast<Objects>(reply.arguments().constFirst());
}

} // namespace ConnUi
