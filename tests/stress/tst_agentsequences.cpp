// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Random requests and answers, over a bus, to an agent and to a model of it: both must come to the same. A
// sequence that fails is made as short as it can be.
#include <algorithm>
#include <iostream>
#include <memory>
#include <rapidcheck.h>
#include <rapidcheck/state.h>
#include <utility>
#include <vector>

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QHash>
#include <QTest>

#include <NfcAgent>

#include "fakeohm.h"
#include "sequences.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NfcAgent;

namespace {

constexpr int targets = 3;

enum Kind { pairing, connection, disconnection, delivery, permission, selection, kinds };
constexpr const char *kindNames[] = {"RequestBTPairing",         "RequestBTConnection",
                                     "RequestBTDisconnection",   "RequestNDEFDataDelivery",
                                     "RequestSharingPermission", "RequestSharingSelection"};
// As the log has them.
constexpr int requestTypes[] = {0, 1, 2, 3, 4, 4};
constexpr int anyRequest = 5;

enum Way {
    nothing,
    grantPairing,
    grantConnection,
    grantDisconnection,
    grantDelivery,
    acceptSharing,
    rejectSharing,
    reject,
    fail,
    failWithoutName,
    replaceAgent,
    ways
};
constexpr const char *wayNames[] = {
    "nothing",        "grant pairing",       "grant connection", "grant disconnection",
    "grant delivery", "accept sharing",      "reject sharing",   "reject",
    "fail",           "fail without a name", "replace the agent"};

const QString granted = QStringLiteral("granted");
const QString rejected = QStringLiteral("com.tavix.nfc.UIAgent.Rejected");
const QString canceled = QStringLiteral("com.tavix.nfc.UIAgent.Canceled");
const QString odd = QStringLiteral("com.example.Odd");

QString path(int which)
{
    return QStringLiteral("/com/tavix/nfc/tag%1").arg(which);
}

// A value that a sharing request may have. The last is the path of a target: an answer to that target finds
// it.
QVariant info(int which)
{
    switch (which) {
    case 0:
        return QVariantMap{{QStringLiteral("Address"), QStringLiteral("00:11")}};
    case 1: {
        QDBusArgument structure;
        structure.beginStructure();
        structure << QDBusObjectPath(path(0)) << QStringLiteral("00:11");
        structure.endStructure();
        return QVariant::fromValue(structure);
    }
    default:
        return path(0);
    }
}

QString infoKey(int which)
{
    return which == 2 ? path(0) : QStringLiteral("info %1").arg(which);
}

QString key(Kind kind, int which)
{
    return kind < permission ? path(which) : infoKey(which);
}

/** The expected behavior of the agent with its calls. */
struct Model
{
    struct Pending
    {
        int number;
        int type;
        QString key;
    };

    void ask(Kind kind, int which)
    {
        pending.push_back({calls++, requestTypes[kind], key(kind, which)});
        heard.append(QLatin1String(kindNames[kind]) + QLatin1Char(' ') + key(kind, which));
    }

    void answer(Way way, int which)
    {
        switch (way) {
        case nothing:
        case ways:
            return;
        case replaceAgent:
            for (const Pending &call : std::exchange(pending, {}))
                outcomes.emplace_back(call.number, canceled);
            return;
        case acceptSharing:
        case rejectSharing:
            answerOldest(4, infoKey(which), way == acceptSharing ? granted : rejected);
            return;
        case reject:
            answerOldest(anyRequest, path(which), rejected);
            return;
        case fail:
            answerOldest(anyRequest, path(which), odd);
            return;
        case failWithoutName:
            answerOldest(anyRequest, path(which), granted);
            return;
        default:
            answerOldest(way - grantPairing, path(which), granted);
            return;
        }
    }

    void answerOldest(int type, const QString &key, const QString &outcome)
    {
        const auto call = std::find_if(pending.begin(), pending.end(), [&](const Pending &each) {
            return (type == anyRequest || each.type == type) && each.key == key;
        });
        if (call == pending.end()) {
            warnings.append(QStringLiteral("No request for agent request type %1").arg(type));
            return;
        }
        outcomes.emplace_back(call->number, outcome);
        pending.erase(call);
    }

    std::vector<Pending> pending; // oldest first
    // From here on: all that was seen of the agent, in its order.
    std::vector<std::pair<int, QString>> outcomes;
    QStringList heard;
    QStringList warnings;
    int calls = 0;
};

/** An object on the agent's connection: it is called when all calls before it have been dealt with. */
class Mark : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void mark() {}
};

/** An agent with a user and a daemon. */
class Stage
{
public:
    Stage() : daemon(QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("daemon")))
    {
        QDBusConnection::systemBus().registerObject(QStringLiteral("/mark"), &mark,
                                                    QDBusConnection::ExportAllSlots);
        makeAgent();
    }

    ~Stage()
    {
        agent.reset();
        settle();
        QDBusConnection::systemBus().unregisterObject(QStringLiteral("/mark"));
        QDBusConnection::disconnectFromBus(QStringLiteral("daemon"));
    }

    Q_DISABLE_COPY_MOVE(Stage)

    void ask(Kind kind, int which, Way way, int whom)
    {
        asked = {kind, which, way, whom};
        const QVariant target = QVariant::fromValue(QDBusObjectPath(path(which)));
        const QString text = QStringLiteral("text");
        const QString carrier = QStringLiteral("bluetooth");
        const QVariant value = QVariant::fromValue(QDBusVariant(info(which)));
        QDBusArgument noHandlers;
        noHandlers << NdefMessageHandlerList();
        const QVariantList arguments[] = {{target, text, text, 7U, text},
                                          {target, text, text, 7U},
                                          {target, text, text, 7U},
                                          {QVariant::fromValue(noHandlers), target, QByteArray("data")},
                                          {carrier, value, QStringList(text)},
                                          {carrier, value}};
        auto *call = new QDBusPendingCallWatcher(send(agent->path(), QStringLiteral("com.tavix.nfc.UIAgent"),
                                                      QLatin1String(kindNames[kind]), arguments[kind]),
                                                 &calls);
        QObject::connect(call, &QDBusPendingCallWatcher::finished, &calls, [this, call, number = seen.calls] {
            seen.outcomes.emplace_back(number, call->isError() ? call->error().name() : granted);
        });
        ++seen.calls;
        settle();
    }

    void answer(Way way, int which)
    {
        act(way, which);
        settle();
    }

    Model seen;

private:
    struct Asked
    {
        Kind kind;
        int which;
        Way way;
        int whom;
    };

    void makeAgent()
    {
        agent = std::make_unique<NfcAgent>();
        const auto hear = [this](Kind kind) {
            return [this, kind](const QDBusObjectPath &target) { heardOf(kind, target.path()); };
        };
        QObject::connect(agent.get(), &NfcAgent::btPairingRequested, &calls, hear(pairing));
        QObject::connect(agent.get(), &NfcAgent::btConnectionRequested, &calls, hear(connection));
        QObject::connect(agent.get(), &NfcAgent::btDisconnectionRequested, &calls, hear(disconnection));
        QObject::connect(
            agent.get(), &NfcAgent::dataDeliveryRequested, &calls,
            [this](const NdefMessageHandlerList &, const QDBusObjectPath &target) {
                heardOf(delivery, target.path());
            });
        const auto hearSharing = [this](Kind kind) {
            return [this, kind](const QString &, const QVariant &value) {
                handedOut.insert(infoKey(asked.which), value);
                heardOf(kind, infoKey(asked.which));
            };
        };
        QObject::connect(agent.get(), &NfcAgent::sharingPermissionRequested, &calls, hearSharing(permission));
        QObject::connect(agent.get(), &NfcAgent::sharingSelectionRequested, &calls, hearSharing(selection));
    }

    // The user may answer anything at once, not only what was just asked.
    void heardOf(Kind kind, const QString &key)
    {
        seen.heard.append(QLatin1String(kindNames[kind]) + QLatin1Char(' ') + key);
        act(asked.way, asked.whom);
    }

    void act(Way way, int which)
    {
        const QDBusObjectPath target(path(which));
        switch (way) {
        case nothing:
        case ways:
            break;
        case grantPairing:
            agent->btPairingRequestGranted(target);
            break;
        case grantConnection:
            agent->btConnectionRequestGranted(target);
            break;
        case grantDisconnection:
            agent->btDisconnectionRequestGranted(target);
            break;
        case grantDelivery:
            agent->dataDeliveryGranted(target);
            break;
        case acceptSharing:
            agent->acceptSharing(handedOut.value(infoKey(which)));
            break;
        case rejectSharing:
            agent->rejectSharing(handedOut.value(infoKey(which)));
            break;
        case reject:
            agent->rejectDevice(target);
            break;
        case fail:
            agent->replyError(target, odd);
            break;
        case failWithoutName:
            agent->replyError(target, QString());
            break;
        case replaceAgent:
            makeAgent();
            break;
        }
    }

    QDBusPendingCall send(const QString &path, const QString &interface, const QString &member,
                          const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(QDBusConnection::systemBus().baseService(),
                                                              path, interface, member);
        message.setArguments(arguments);
        return daemon.asyncCall(message);
    }

    // Waits until the agent has dealt with all calls, and its answers have arrived.
    void settle()
    {
        const QDBusPendingCallWatcher call(
            send(QStringLiteral("/mark"), QString(), QStringLiteral("mark"), {}));
        QEventLoop wait;
        QObject::connect(&call, &QDBusPendingCallWatcher::finished, &wait, &QEventLoop::quit);
        wait.exec();
    }

    const MessageLog log{&seen.warnings};
    Mark mark;
    QObject calls; // their owner
    std::unique_ptr<NfcAgent> agent;
    QDBusConnection daemon;
    QHash<QString, QVariant> handedOut;
    Asked asked = {};
};

using Step = rc::state::Command<Model, Stage>;

void compare(const Model &expected, const Model &seen)
{
    RC_ASSERT(seen.outcomes == expected.outcomes);
    RC_ASSERT(seen.heard == expected.heard);
    RC_ASSERT(seen.warnings == expected.warnings);
}

/** The daemon asks, and the user may answer at once. */
struct Ask : Step
{
    void apply(Model &model) const override
    {
        model.ask(kind, which);
        model.answer(way, whom);
    }

    void run(const Model &before, Stage &stage) const override
    {
        stage.ask(kind, which, way, whom);
        compare(nextState(before), stage.seen);
    }

    void show(std::ostream &out) const override
    {
        out << kindNames[kind] << " of " << which << ", at once: " << wayNames[way] << ' ' << whom;
    }

    const Kind kind = Kind(*rc::gen::inRange(0, int(kinds)));
    const int which = *rc::gen::inRange(0, targets);
    // Most requests wait.
    const Way way = *rc::gen::inRange(0, 4) ? nothing : Way(*rc::gen::inRange(0, int(ways)));
    const int whom = *rc::gen::inRange(0, targets);
};

/** The user answers. */
struct Answer : Step
{
    void apply(Model &model) const override { model.answer(way, which); }

    void run(const Model &before, Stage &stage) const override
    {
        stage.answer(way, which);
        compare(nextState(before), stage.seen);
    }

    void show(std::ostream &out) const override { out << wayNames[way] << ' ' << which; }

    const Way way = Way(*rc::gen::inRange(int(grantPairing), int(ways)));
    const int which = *rc::gen::inRange(0, targets);
};

} // namespace

class TestAgentSequences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void agentIsAsItsModel();
};

void TestAgentSequences::agentIsAsItsModel()
{
    FakeOhm ohm;
    ohm.start();
    // Without one, an empty list of records subscribes and unsubscribes.
    const NdefMessageHandler handler;
    chooseSequences();
    QVERIFY(rc::check("an agent is as its model", [] {
        Stage stage;
        rc::state::check(Model(), stage, rc::state::gen::execOneOfWithArgs<Ask, Answer>());
    }));
}

QTEST_GUILESS_MAIN(TestAgentSequences)
#include "tst_agentsequences.moc"
