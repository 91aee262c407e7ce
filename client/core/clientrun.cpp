// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/clientrun.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include "core/buswatch.h"
#include "core/session.h"
#include "core/terminal.h"
#include "core/terminationsignals.h"
#include "support/commandline.h"

namespace {

// Two of them would ask everything twice. A phone without a session bus has no session to share.
bool isFirstInSession()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    return !bus.isConnected() || bus.registerService(QStringLiteral("org.connui.NfcUi"));
}

} // namespace

int runClient(TerminationSignals *termination, const std::function<int()> &run)
{
    // Makes QtDBus register its own types now, not on its thread while a message is being read.
    QDBusMetaType::typeToSignature(QMetaType::fromType<QDBusObjectPath>());
    if (!QDBusConnection::systemBus().isConnected())
        return Support::fail(Support::NoBus, QDBusConnection::systemBus().lastError().message());
    if (!isFirstInSession())
        return Support::fail(Support::AlreadyRunning, QStringLiteral("another nfc-ui runs in this session"));

    termination->watch();
    const BusWatch buses;
    return run();
}

void printRegistration(const Session &session, Terminal *terminal)
{
    QObject::connect(
        &session, &Session::registeredChanged, terminal,
        [terminal](bool registered) {
            terminal->print(registered ? QStringLiteral("the NFC daemon is here")
                                       : QStringLiteral("the NFC daemon has left"));
        });
}
