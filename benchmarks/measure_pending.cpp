// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// The cost of an answer of the agent while one request waits, and while ten thousand do.
#include <algorithm>
#include <string>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QProcess>

#include <NfcAgent>

#include "measurement.h"
#include "sdbus.h"

using ConnUi::NfcAgent;
using namespace Measurement;

namespace {

int many = 0;

enum class Order { OldestFirst, NewestFirst };

// The caller's process.

SdBus::Message request(const SdBus::Bus &bus, bool sharing, const char *service, const char *path, int number)
{
    const std::string target = "/com/tavix/nfc/tag" + std::to_string(number);
    SdBus::Message call =
        SdBus::agentCall(bus, service, path, sharing ? "RequestSharingSelection" : "RequestBTPairing");
    if (sharing)
        sd_bus_message_append(call.get(), "sv", "bluetooth", "(os)", target.c_str(), "oob");
    else
        sd_bus_message_append(call.get(), "ossus", target.c_str(), "00:11:22:33:44:55", "Headset", 0x240404,
                              "");
    return call;
}

int countReply(sd_bus_message *, void *answered, sd_bus_error *)
{
    ++*static_cast<int *>(answered);
    return 0;
}

// caller pairing|sharing SERVICE PATH PENDING TOTAL: has so many requests pending at once until all are
// answered.
int callMany(char **argv)
{
    const SdBus::Bus bus = SdBus::openSystem();
    const bool sharing = std::strcmp(argv[2], "sharing") == 0;
    const int pending = std::atoi(argv[5]);
    const int total = std::atoi(argv[6]);
    int asked = 0;
    int answered = 0;
    while (answered < total) {
        while (asked < answered + pending && asked < total) {
            const SdBus::Message call = request(bus, sharing, argv[3], argv[4], asked++);
            SdBus::check(sd_bus_call_async(bus.get(), nullptr, call.get(), countReply, &answered, UINT64_MAX),
                         "sd_bus_call_async");
        }
        const int due = asked;
        while (answered < due)
            if (SdBus::check(sd_bus_process(bus.get(), nullptr), "sd_bus_process") == 0)
                SdBus::check(sd_bus_wait(bus.get(), UINT64_MAX), "sd_bus_wait");
    }
    return 0;
}

/** Answers when so many requests are pending, and takes the time of the answers. */
class User
{
public:
    User(NfcAgent *agent, qsizetype pending, Order order) : agent(agent), pending(pending), order(order)
    {
        QObject::connect(
            agent, &NfcAgent::btPairingRequested, &context,
            [this](const QDBusObjectPath &target) { take(QVariant::fromValue(target)); });
        QObject::connect(agent, &NfcAgent::sharingSelectionRequested, &context,
                         [this](const QString &, const QVariant &info) { take(info); });
    }

    double nanosecondsAnAnswer() const { return time / many; }

private:
    void take(const QVariant &key)
    {
        keys.append(key);
        if (keys.size() < pending)
            return;
        if (order == Order::NewestFirst)
            std::reverse(keys.begin(), keys.end());
        time += processorTime([this] { answerAll(); });
        keys.clear();
    }

    void answerAll()
    {
        for (const QVariant &key : std::as_const(keys))
            if (key.metaType() == QMetaType::fromType<QDBusObjectPath>())
                agent->btPairingRequestGranted(key.value<QDBusObjectPath>());
            else
                agent->acceptSharing(key);
    }

    NfcAgent *agent;
    qsizetype pending;
    Order order;
    QList<QVariant> keys;
    double time = 0;
    QObject context;
};

double answer(NfcAgent *agent, const char *kind, int pending, Order order)
{
    const User user(agent, pending, order);
    QProcess caller;
    caller.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QObject::connect(&caller, &QProcess::finished, qApp, &QCoreApplication::exit);
    caller.start(QCoreApplication::applicationFilePath(),
                 {QStringLiteral("caller"), QString::fromLatin1(kind),
                  QDBusConnection::systemBus().baseService(), agent->path(), QString::number(pending),
                  QString::number(many)});
    if (QCoreApplication::exec() != 0)
        qFatal("the caller failed");
    return user.nanosecondsAnAnswer();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], "caller") == 0)
        return callMany(argv);

    QCoreApplication application(argc, argv);
    begin(argc, argv);
    many = countsInstructions() ? 10000 : rounds(10000);
    const std::string manyPending = std::to_string(many) + " pending";
    NfcAgent agent;
    const auto way = [&agent](const std::string &name, const char *kind, int pending, Order order) {
        return Way{name, [&agent, kind, pending, order] { return answer(&agent, kind, pending, order); }};
    };
    const auto measure = [&](const std::string &what, const char *kind, Order order) {
        compare(what, way("1 pending", kind, 1, order), way(manyPending, kind, many, order), {.atMost = 2},
                10);
    };
    measure("An answer, pairing, oldest first", "pairing", Order::OldestFirst);
    measure("An answer, pairing, newest first", "pairing", Order::NewestFirst);
    measure("An answer, sharing, newest first", "sharing", Order::NewestFirst);
}
