// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Calls an agent over a bus with arguments made of the input, reads all that it hands out, and stops where a
// call has not one answer.
#include <climits>
#include <csignal>
#include <fuzzer/FuzzedDataProvider.h>
#include <iterator>
#include <sys/prctl.h>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusSignature>
#include <QDBusVariant>
#include <QEventLoop>
#include <QProcess>

#include <NfcAgent>
#include <NfcBluetoothHandoverInfo>

#include "support.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NfcAgent;
using ConnUi::NfcBluetoothHandoverInfo;

namespace {

// A bus of its own, for as long as the program runs.
void startBus()
{
    static QProcess bus;
    bus.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    bus.start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    while (!bus.canReadLine())
        require(bus.waitForReadyRead());
    const QByteArray address = bus.readLine().trimmed();
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", address);
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
}

QString text(FuzzedDataProvider &input)
{
    return QString::fromUtf8(QByteArray::fromStdString(input.ConsumeRandomLengthString(64)))
        .remove(QChar(QChar::Null));
}

QDBusObjectPath path(FuzzedDataProvider &input)
{
    return QDBusObjectPath(QStringLiteral("/t%1").arg(input.ConsumeIntegral<uint8_t>()));
}

void writeStructure(QDBusArgument &argument, FuzzedDataProvider &input, int depth);

// Any D-Bus value that is not nested too deep.
QVariant value(FuzzedDataProvider &input, int depth)
{
    switch (input.ConsumeIntegralInRange(0, depth > 0 ? 14 : 9)) {
    case 0:
        return text(input);
    case 1:
        return QVariant::fromValue(path(input));
    case 2:
        return input.ConsumeBool();
    case 3:
        return QVariant::fromValue(input.ConsumeIntegral<uchar>());
    case 4:
        return QVariant::fromValue(input.ConsumeIntegral<short>());
    case 5:
        return input.ConsumeIntegral<uint>();
    case 6:
        return QVariant::fromValue(input.ConsumeIntegral<qlonglong>());
    case 7:
        return input.ConsumeFloatingPoint<double>();
    case 8:
        return QVariant::fromValue(QDBusSignature(QStringLiteral("a{sv}")));
    case 9:
        return QByteArray::fromStdString(input.ConsumeRandomLengthString(64));
    case 10:
        return QVariant::fromValue(QDBusVariant(value(input, depth - 1)));
    case 11:
        return QVariantMap{{text(input), value(input, depth - 1)}, {text(input), value(input, depth - 1)}};
    case 12:
        return QVariantList{value(input, depth - 1), value(input, depth - 1)};
    case 13:
        return QStringList{text(input), text(input)};
    default:
        QDBusArgument structure;
        writeStructure(structure, input, depth - 1);
        return QVariant::fromValue(structure);
    }
}

void writeStructure(QDBusArgument &argument, FuzzedDataProvider &input, int depth)
{
    argument.beginStructure();
    argument << path(input);
    if (input.ConsumeBool())
        argument << text(input);
    for (int i = input.ConsumeIntegralInRange(0, 3); i > 0; --i)
        argument << QDBusVariant(value(input, depth));
    argument.endStructure();
}

QVariant handlers(FuzzedDataProvider &input)
{
    NdefMessageHandlerList list;
    for (int i = input.ConsumeIntegralInRange(0, 3); i > 0; --i)
        list.append({text(input), text(input), text(input), path(input)});
    QDBusArgument argument;
    argument << list;
    return QVariant::fromValue(argument);
}

// The argument of this D-Bus type, or sometimes of another.
QVariant argument(char type, FuzzedDataProvider &input)
{
    if (input.ConsumeIntegral<uint8_t>() == 0)
        return value(input, 3);
    switch (type) {
    case 'o':
        return QVariant::fromValue(path(input));
    case 'u':
        return input.ConsumeIntegral<uint>();
    case 'h':
        return handlers(input);
    case 'y':
        return QByteArray::fromStdString(input.ConsumeRandomLengthString());
    case 'l':
        return QStringList{text(input), text(input)};
    case 'v':
        return QVariant::fromValue(QDBusVariant(value(input, 3)));
    default:
        return text(input);
    }
}

struct Method
{
    const char *name;
    const char *arguments;
};

// Handlers are written h, bytes y, lists of strings l.
constexpr Method methods[] = {
    {"Release", ""},
    {"RequestBTPairing", "ossus"},
    {"RequestBTConnection", "ossu"},
    {"RequestBTDisconnection", "ossu"},
    {"RequestNDEFDataDelivery", "hoy"},
    {"RequestSharingPermission", "svl"},
    {"RequestSharingSelection", "sv"},
    {"NotifyTouch", "os"},
};

NfcAgent *newAgent()
{
    auto *agent = new NfcAgent;
    const auto refuse = [agent](const QDBusObjectPath &target) { agent->rejectDevice(target); };
    const auto accept = [agent](const QString &, const QVariant &info) {
        const NfcBluetoothHandoverInfo read(info);
        const NfcBluetoothHandoverInfo again(info);
        require(read.deviceAddress() == again.deviceAddress());
        agent->acceptSharing(info);
    };
    QObject::connect(agent, &NfcAgent::btPairingRequested, agent, refuse);
    QObject::connect(agent, &NfcAgent::btConnectionRequested, agent, refuse);
    QObject::connect(agent, &NfcAgent::btDisconnectionRequested, agent, refuse);
    QObject::connect(agent, &NfcAgent::dataDeliveryRequested, agent,
                     [agent](const NdefMessageHandlerList &handlers, const QDBusObjectPath &target) {
                         for (const NdefMessageHandler &handler : handlers)
                             require(handler == NdefMessageHandler(handler));
                         agent->dataDeliveryGranted(target);
                     });
    QObject::connect(agent, &NfcAgent::sharingPermissionRequested, agent, accept);
    QObject::connect(agent, &NfcAgent::sharingSelectionRequested, agent, accept);
    return agent;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    // Without a policy daemon nobody is in front, and failed touches cause warnings.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    new QCoreApplication(*argc, *argv);
    startBus();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static NfcAgent &agent = *newAgent();
    static const QDBusConnection daemon =
        QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("daemon"));

    FuzzedDataProvider input(data, size);
    const Method &method = methods[input.ConsumeIntegralInRange<size_t>(0, std::size(methods) - 1)];
    QVariantList arguments;
    for (const char *type = method.arguments; *type; ++type)
        arguments.append(argument(*type, input));
    QDBusMessage message = QDBusMessage::createMethodCall(
        QDBusConnection::systemBus().baseService(), agent.path(), QStringLiteral("com.tavix.nfc.UIAgent"),
        QString::fromLatin1(method.name));
    message.setArguments(arguments);
    // With no time limit: libFuzzer's own ends a call that is never answered.
    const QDBusPendingCallWatcher call(daemon.asyncCall(message, INT_MAX));
    QEventLoop wait;
    QObject::connect(&call, &QDBusPendingCallWatcher::finished, &wait, &QEventLoop::quit);
    if (!call.isFinished())
        wait.exec();
    return 0;
}
