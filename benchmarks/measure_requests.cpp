// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// The time until the daemon has an answer that is given at once: the agent's, that of a bare adaptor of the
// D-Bus library that answers late as well, and that of an echo on sd-bus, below which no program gets.
//
// The first record of a handler has its process follow the application in front, until the last has gone:
// that line's adaptor does so as well. The other line about data is that of a client which has subscribed
// before, as nfc-ui does.
//
// This process has the agent and the adaptors, on one connection. The echo and the caller are processes of
// their own, and the caller asks them all by turns.
#include <QCoreApplication>
#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QEventLoop>
#include <QProcess>

#include <ApplicationTracker>
#include <NfcAgent>
#include <NfcPendingCall>

#include "fakeohm.h"
#include "measurement.h"
#include "sdbus.h"

using ConnUi::ApplicationTracker;
using ConnUi::NfcAgent;
using ConnUi::NfcPendingCall;
using namespace Measurement;

namespace {

constexpr const char *member[] = {"RequestBTPairing", "RequestNDEFDataDelivery"};
constexpr const char *barePath = "/bare";
constexpr const char *followerPath = "/follower";
const QString policyDaemon = QStringLiteral("org.freedesktop.ohm");
const QString trackerPath = QStringLiteral("/com/tavix/ApplicationTracker");
const QString trackerInterface = QStringLiteral("com.tavix.ApplicationTracker");

} // namespace

// A handler as it stands in the message, and no more.
struct BareHandler
{
    QString busType;
    QString service;
    QDBusObjectPath path;
    QString applicationId;
};
Q_DECLARE_METATYPE(BareHandler)
Q_DECLARE_METATYPE(QList<BareHandler>)

QDBusArgument &operator<<(QDBusArgument &out, const BareHandler &handler)
{
    out.beginStructure();
    out << handler.busType << handler.service << handler.path << handler.applicationId;
    out.endStructure();
    return out;
}

const QDBusArgument &operator>>(const QDBusArgument &in, BareHandler &handler)
{
    in.beginStructure();
    in >> handler.busType >> handler.service >> handler.path >> handler.applicationId;
    in.endStructure();
    return in;
}

/** The agent's interface with nothing behind it. */
class BareAgent : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tavix.nfc.UIAgent")

public:
    BareAgent(QObject *parent, bool follows) : QDBusAbstractAdaptor(parent), follows(follows) {}

public Q_SLOTS:
    void RequestBTPairing(const QDBusObjectPath &, const QString &, const QString &, uint, const QString &,
                          const QDBusMessage &message)
    {
        answer(message);
    }

    void RequestNDEFDataDelivery(const QList<BareHandler> &, const QDBusObjectPath &, const QByteArray &,
                                 const QDBusMessage &message)
    {
        if (!follows) {
            answer(message);
            return;
        }
        QDBusConnection bus = QDBusConnection::systemBus();
        bus.connect(policyDaemon, trackerPath, trackerInterface, QStringLiteral("CurrentActiveApplication"),
                    this, SLOT(notify(QString, QString, QString, uint)));
        bus.call(trackerCall(QStringLiteral("Subscribe")));
        answer(message);
        bus.call(trackerCall(QStringLiteral("Unsubscribe")) << 0);
        bus.disconnect(policyDaemon, trackerPath, trackerInterface,
                       QStringLiteral("CurrentActiveApplication"), this,
                       SLOT(notify(QString, QString, QString, uint)));
    }

private Q_SLOTS:
    void notify(const QString &, const QString &, const QString &, uint) {}

private:
    static QDBusMessage trackerCall(const QString &method)
    {
        return QDBusMessage::createMethodCall(policyDaemon, trackerPath, trackerInterface, method);
    }

    static void answer(const QDBusMessage &message)
    {
        message.setDelayedReply(true);
        QDBusConnection::systemBus().send(message.createReply());
    }

    const bool follows;
};

namespace {

// The echo's process.

int echoReply(sd_bus_message *message, void *, sd_bus_error *)
{
    return sd_bus_reply_method_return(message, "");
}

int echo()
{
    static const sd_bus_vtable methods[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("RequestBTPairing", "ossus", "", echoReply, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_METHOD("RequestNDEFDataDelivery", "a(ssos)oay", "", echoReply, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END,
    };
    const SdBus::Bus bus = SdBus::openSystem();
    SdBus::check(
        sd_bus_add_object_vtable(bus.get(), nullptr, barePath, "com.tavix.nfc.UIAgent", methods, nullptr),
        "sd_bus_add_object_vtable");
    const char *name = nullptr;
    SdBus::check(sd_bus_get_unique_name(bus.get(), &name), "sd_bus_get_unique_name");
    std::puts(name);
    std::fflush(stdout);
    for (;;)
        if (SdBus::check(sd_bus_process(bus.get(), nullptr), "sd_bus_process") == 0)
            SdBus::check(sd_bus_wait(bus.get(), UINT64_MAX), "sd_bus_wait");
}

// The caller's process.

SdBus::Message pairing(const SdBus::Bus &bus, const char *service, const char *path)
{
    SdBus::Message call = SdBus::agentCall(bus, service, path, member[0]);
    sd_bus_message_append(call.get(), "ossus", "/com/tavix/nfc/tag1", "00:11:22:33:44:55", "Headset",
                          0x240404, "0000");
    return call;
}

SdBus::Message delivery(const SdBus::Bus &bus, const char *service, const char *path)
{
    static const char data[200] = {};
    SdBus::Message call = SdBus::agentCall(bus, service, path, member[1]);
    sd_bus_message_append(call.get(), "a(ssos)", 2, "org.example.browser", "com.tavix.nfc.NDEFHandler",
                          "/handler", "browser.desktop", "org.example.notes", "com.tavix.nfc.NDEFHandler",
                          "/handler", "notes.desktop");
    sd_bus_message_append(call.get(), "o", "/com/tavix/nfc/tag1");
    sd_bus_message_append_array(call.get(), 'y', data, sizeof data);
    return call;
}

double ask(const SdBus::Bus &bus, const char *method, const char *service, const char *path)
{
    const SdBus::Message call =
        std::strcmp(method, member[0]) == 0 ? pairing(bus, service, path) : delivery(bus, service, path);
    const double start = now();
    SdBus::check(sd_bus_call(bus.get(), call.get(), UINT64_MAX, nullptr, nullptr), method);
    return now() - start;
}

// caller METHOD TIMES (SERVICE PATH)...: calls each in turn and prints the nanoseconds, a round a line.
int callByTurns(int argc, char **argv)
{
    const SdBus::Bus bus = SdBus::openSystem();
    const char *method = argv[2];
    for (int round = std::atoi(argv[3]); round > 0; --round) {
        for (int i = 4; i + 1 < argc; i += 2)
            std::printf("%.0f ", ask(bus, method, argv[i], argv[i + 1]));
        std::putchar('\n');
    }
    return 0;
}

// The process of agent and adaptor.

struct Peer
{
    QString name;
    QString service;
    QString path;
};

QList<Samples> answerTo(const char *method, int times, const QList<Peer> &peers)
{
    QStringList arguments{QStringLiteral("caller"), QString::fromLatin1(method), QString::number(times)};
    QList<Samples> samples;
    for (const Peer &peer : peers) {
        arguments << peer.service << peer.path;
        samples.append({peer.name.toStdString(), {}});
    }
    QProcess caller;
    caller.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QObject::connect(&caller, &QProcess::finished, qApp, &QCoreApplication::exit);
    caller.start(QCoreApplication::applicationFilePath(), arguments);
    if (QCoreApplication::exec() != 0)
        qFatal("the caller failed");
    const QByteArrayList lines = caller.readAllStandardOutput().split('\n');
    for (const QByteArray &line : lines) {
        const QByteArrayList values = line.simplified().split(' ');
        for (qsizetype i = 0; i < samples.size() && values.size() == samples.size(); ++i)
            samples[i].values.push_back(values[i].toDouble());
    }
    return samples;
}

void countAnswer(const std::string &what, const char *method, const Peer &peer, const char *side)
{
    constexpr int enough = 200;
    answerTo(method, enough, {peer});
    dumpInstructions(what, "");
    answerTo(method, enough, {peer});
    dumpInstructions(what, side);
}

void measure(const std::string &what, const char *method, const QList<Peer> &peers, const Goal &goal,
             const Goal &againstFloor)
{
    if (countsInstructions()) {
        countAnswer(what, method, peers[0], "base");
        countAnswer(what, method, peers[1], "other");
        return;
    }
    answerTo(method, rounds(1000), peers);
    const QList<Samples> samples = answerTo(method, rounds(10000), peers);
    printMedians(what, samples[0], samples[1], goal);
    print(what + ", 99th percentile", "ns", samples[0].name, quantile(samples[0].values, 0.99),
          samples[1].name, quantile(samples[1].values, 0.99), {});
    printMedians(what + ", against the floor", samples[2], samples[1], againstFloor);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], "echo") == 0)
        return echo();
    if (argc > 1 && std::strcmp(argv[1], "caller") == 0)
        return callByTurns(argc, argv);

    QCoreApplication application(argc, argv);
    begin(argc, argv);
    qRegisterMetaType<QDBusObjectPath>("QDBusObjectPath");
    qRegisterMetaType<QList<BareHandler>>("QList<BareHandler>");
    qDBusRegisterMetaType<BareHandler>();
    qDBusRegisterMetaType<QList<BareHandler>>();

    QDBusConnection bus = QDBusConnection::systemBus();
    QObject bareObject;
    new BareAgent(&bareObject, false);
    bus.registerObject(QString::fromLatin1(barePath), &bareObject, QDBusConnection::ExportAdaptors);
    QObject followerObject;
    new BareAgent(&followerObject, true);
    bus.registerObject(QString::fromLatin1(followerPath), &followerObject, QDBusConnection::ExportAdaptors);

    FakeOhm ohm;
    ohm.start();
    NfcAgent agent;
    QObject::connect(
        &agent, &NfcAgent::btPairingRequested, &agent,
        [&agent](const QDBusObjectPath &target) { agent.btPairingRequestGranted(target); });
    QObject::connect(&agent, &NfcAgent::dataDeliveryRequested, &agent,
                     [&agent](const ConnUi::NdefMessageHandlerList &, const QDBusObjectPath &target) {
                         agent.dataDeliveryGranted(target);
                     });

    QProcess echo;
    echo.start(QCoreApplication::applicationFilePath(), {QStringLiteral("echo")});
    if (!echo.waitForReadyRead())
        qFatal("the echo does not start");
    const QString echoName = QString::fromUtf8(echo.readLine().trimmed());

    const Peer nfcAgent{QStringLiteral("NfcAgent"), bus.baseService(), agent.path()};
    const Peer floor{QStringLiteral("sd-bus"), echoName, QString::fromLatin1(barePath)};
    const Peer adaptor{QStringLiteral("adaptor"), bus.baseService(), QString::fromLatin1(barePath)};
    const Peer follower{QStringLiteral("adaptor that subscribes"), bus.baseService(),
                        QString::fromLatin1(followerPath)};
    countFromHere();
    measure("Request to reply, pairing", member[0], {adaptor, nfcAgent, floor}, {.atMost = 1.10},
            {.atMost = 3.5});
    measure("Request to reply, data to the first record", member[1], {follower, nfcAgent, floor},
            {.atMost = 1.4}, {});
    QObject holder;
    QEventLoop subscription;
    QObject::connect(ApplicationTracker::subscribeAsync(&holder), &NfcPendingCall::finished, &subscription,
                     &QEventLoop::quit);
    subscription.exec();
    measure("Request to reply, data", member[1], {adaptor, nfcAgent, floor}, {.atMost = 1.10},
            {.atMost = 3.5});

    echo.kill();
    echo.waitForFinished();
}

#include "measure_requests.moc"
