// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Much of everything. The full amounts, with CONNUI_STRESS=full, take minutes.
#include <algorithm>
#include <climits>
#include <functional>
#include <malloc.h>
#include <memory>
#include <random>
#include <utility>

#include <QDBusPendingCallWatcher>
#include <QSignalSpy>
#include <QTest>

#include <NfcAdapter>
#include <NfcAgent>
#include <RadioState>

#include "amount.h"
#include "fakedaemon.h"
#include "fakehandler.h"
#include "fakeohm.h"
#include "replycounter.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NfcAdapter;
using ConnUi::NfcAgent;
using ConnUi::RadioState;

namespace {

// Bytes of growth that are not a leak. The address sanitizer keeps what is freed, and finds leaks by itself.
#ifdef __SANITIZE_ADDRESS__
constexpr qint64 tolerance = 16 * 1024 * 1024;
#else
constexpr qint64 tolerance = 1024 * 1024;
#endif

const QString rejected = QStringLiteral("com.tavix.nfc.UIAgent.Rejected");

QDBusObjectPath target(int number)
{
    return QDBusObjectPath(QStringLiteral("/com/tavix/nfc/tag%1").arg(number));
}

// Nothing depends on luck: the same order each time.
template <typename T>
void shuffle(QList<T> &list)
{
    std::shuffle(list.begin(), list.end(), std::minstd_rand(1));
}

// Memory that belongs to this process alone and is in use, in bytes.
qint64 privateMemory()
{
    // Memory that the allocator keeps for later is not a leak, and would hide one.
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    if (!file.open(QFile::ReadOnly))
        qFatal("no smaps_rollup");
    qint64 kilobytes = 0;
    const QByteArrayList lines = file.readAll().split('\n');
    for (const QByteArray &line : lines)
        if (line.startsWith("Private_"))
            kilobytes += line.simplified().split(' ').at(1).toLongLong();
    return kilobytes * 1024;
}

// Answers each request of an agent in the slot that hears of it: every third is refused.
void answerAtOnce(NfcAgent *agent)
{
    const auto answer = [agent](auto grant) {
        return [agent, grant, count = 0](const QDBusObjectPath &target) mutable {
            if (++count % 3 == 0)
                agent->rejectDevice(target);
            else
                std::invoke(grant, agent, target);
        };
    };
    const auto answerSharing = [agent, count = 0](const QString &, const QVariant &info) mutable {
        if (++count % 3 == 0)
            agent->rejectSharing(info);
        else
            agent->acceptSharing(info);
    };
    QObject::connect(agent, &NfcAgent::btPairingRequested, agent, answer(&NfcAgent::btPairingRequestGranted));
    QObject::connect(agent, &NfcAgent::btConnectionRequested, agent,
                     answer(&NfcAgent::btConnectionRequestGranted));
    QObject::connect(agent, &NfcAgent::btDisconnectionRequested, agent,
                     answer(&NfcAgent::btDisconnectionRequestGranted));
    QObject::connect(
        agent, &NfcAgent::dataDeliveryRequested, agent,
        [answer = answer(&NfcAgent::dataDeliveryGranted)](
            const NdefMessageHandlerList &, const QDBusObjectPath &target) mutable { answer(target); });
    QObject::connect(agent, &NfcAgent::sharingPermissionRequested, agent, answerSharing);
    QObject::connect(agent, &NfcAgent::sharingSelectionRequested, agent, answerSharing);
}

/** The daemon's side: asks agents of this program over a connection of its own and counts the answers. */
class Asker : public QObject
{
public:
    Asker() : bus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("asker"))) {}
    ~Asker() override { QDBusConnection::disconnectFromBus(QStringLiteral("asker")); }

    void ask(const QString &agent, const QString &member, const QVariantList &arguments)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(QDBusConnection::systemBus().baseService(), agent,
                                                           QStringLiteral("com.tavix.nfc.UIAgent"), member);
        call.setArguments(arguments);
        const int number = asked++;
        auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, INT_MAX), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, number] {
            ++answered;
            if (keepsOutcomes)
                outcomes[number] = watcher->isError() ? watcher->error().name() : QStringLiteral("granted");
            watcher->deleteLater();
        });
    }

    /** Asks a question of one of the six kinds. */
    void askAnything(const QString &agent, int number)
    {
        const QVariant device = QVariant::fromValue(target(number % 7));
        const QString address = QStringLiteral("00:11:22:33:44:55");
        const QVariant info =
            QVariant::fromValue(QDBusVariant(QVariantMap{{QStringLiteral("number"), number}}));
        switch (number % 6) {
        case 0:
            ask(agent, QStringLiteral("RequestBTPairing"),
                {device, address, QStringLiteral("Headset"), 0x240404U, QStringLiteral("0000")});
            break;
        case 1:
            ask(agent, QStringLiteral("RequestBTConnection"),
                {device, address, QStringLiteral("Headset"), 0x240404U});
            break;
        case 2:
            ask(agent, QStringLiteral("RequestBTDisconnection"),
                {device, address, QStringLiteral("Headset"), 0x240404U});
            break;
        case 3:
            ask(agent, QStringLiteral("RequestNDEFDataDelivery"),
                {noHandlers(), device, QByteArray(100, 'x')});
            break;
        case 4:
            ask(agent, QStringLiteral("RequestSharingPermission"),
                {QStringLiteral("bluetooth"), info, QStringList(QStringLiteral("/a"))});
            break;
        default:
            ask(agent, QStringLiteral("RequestSharingSelection"), {QStringLiteral("bluetooth"), info});
            break;
        }
    }

    static QVariant noHandlers() { return handlers({}); }

    // Not the records themselves: those would die on the bus's own thread.
    static QVariant handlers(const NdefMessageHandlerList &list)
    {
        QDBusArgument argument;
        argument << list;
        return QVariant::fromValue(argument);
    }

    int asked = 0;
    int answered = 0;
    bool keepsOutcomes = false;
    QHash<int, QString> outcomes;

private:
    QDBusConnection bus;
};

} // namespace

class TestLoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void memoryStaysFlat();
    void manyPendingRequestsAreAnsweredInAnyOrder();
    void everyRequestIsAnsweredExactlyOnce_data();
    void everyRequestIsAnsweredExactlyOnce();
    void endOfAgentAnswersAllThatIsPending();
    void manyAdaptersAndAgentsShareOneProcess();
    void longHandlerListArrivesInOrder();
    void largeTagArrivesAndIsForwardedUnchanged();
    void stormOfPropertyChangesIsHeard();

private:
    // Asks in portions, as many at once as a bus lets wait.
    static void askMany(Asker *asker, const QString &agent, int count);
};

void TestLoad::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    RadioState(RadioState::NFC).setEnabled(false);
}

void TestLoad::askMany(Asker *asker, const QString &agent, int count)
{
    constexpr int portion = 100;
    for (const int end = asker->asked + count; asker->asked < end;) {
        for (int i = 0; i < portion && asker->asked < end; ++i)
            asker->askAnything(agent, asker->asked);
        QTRY_COMPARE(asker->answered, asker->asked);
    }
}

void TestLoad::memoryStaysFlat()
{
    const int warmUp = amount(2000, 10000);
    const int all = amount(6000, 100000);
    FakeOhm ohm;
    ohm.start();
    NfcAgent agent;
    answerAtOnce(&agent);
    Asker asker;

    askMany(&asker, agent.path(), warmUp);
    const qint64 before = privateMemory();
    QElapsedTimer clock;
    clock.start();
    askMany(&asker, agent.path(), all - warmUp);
    // The bus's thread may still hold what it has sent.
    qint64 growth = 0;
    const auto isFlat = [&] { return (growth = privateMemory() - before) < tolerance; };
    const bool flat = QTest::qWaitFor(isFlat);
    qInfo("%d requests answered, %lld a second; memory grew by %lld bytes after the first %d", all,
          (all - warmUp) * 1000LL / std::max<qint64>(clock.elapsed(), 1), growth, warmUp);
    QCOMPARE(asker.answered, all);
    QVERIFY2(flat, qPrintable(QString::number(growth)));
}

void TestLoad::manyPendingRequestsAreAnsweredInAnyOrder()
{
    const int count = amount(2000, 10000);
    NfcAgent agent;
    QSignalSpy requested(&agent, &NfcAgent::btConnectionRequested);
    Asker asker;
    asker.keepsOutcomes = true;
    QList<int> order;
    for (int i = 0; i < count; ++i) {
        order.append(i);
        asker.ask(
            agent.path(), QStringLiteral("RequestBTConnection"),
            {QVariant::fromValue(target(i)), QStringLiteral("00:11"), QStringLiteral("Headset"), 0x240404U});
    }
    QTRY_COMPARE_WITH_TIMEOUT(requested.count(), count, 60000);

    shuffle(order);
    for (int i : std::as_const(order))
        if (i % 2 == 0)
            agent.btConnectionRequestGranted(target(i));
        else
            agent.rejectDevice(target(i));
    QTRY_COMPARE_WITH_TIMEOUT(asker.answered, count, 60000);
    for (int i = 0; i < count; ++i)
        QCOMPARE(asker.outcomes.value(i), i % 2 == 0 ? QStringLiteral("granted") : rejected);
}

void TestLoad::everyRequestIsAnsweredExactlyOnce_data()
{
    QTest::addColumn<bool>("isDaemonOnly");
    QTest::newRow("granted") << false;
    // The caller is not the daemon.
    QTest::newRow("refused") << true;
}

void TestLoad::everyRequestIsAnsweredExactlyOnce()
{
    QFETCH(bool, isDaemonOnly);
    const int count = amount(1000, 10000);
    FakeOhm ohm;
    ohm.start();
    NfcAgent agent;
    agent.setDaemonOnly(isDaemonOnly);
    answerAtOnce(&agent);
    Asker asker;
    ReplyCounter counter(QDBusConnection::systemBus());
    askMany(&asker, agent.path(), count);

    const QHash<QByteArray, int> replies = counter.replies();
    QCOMPARE(replies.size(), count);
    QVERIFY(std::all_of(replies.cbegin(), replies.cend(), [](int times) { return times == 1; }));
}

void TestLoad::endOfAgentAnswersAllThatIsPending()
{
    const int count = amount(1000, 10000);
    auto agent = std::make_unique<NfcAgent>();
    QSignalSpy requested(agent.get(), &NfcAgent::btConnectionRequested);
    Asker asker;
    asker.keepsOutcomes = true;
    for (int i = 0; i < count; ++i) {
        asker.ask(
            agent->path(), QStringLiteral("RequestBTConnection"),
            {QVariant::fromValue(target(0)), QStringLiteral("00:11"), QStringLiteral("Headset"), 0x240404U});
    }
    QTRY_COMPARE_WITH_TIMEOUT(requested.count(), count, 60000);
    agent.reset();
    QTRY_COMPARE_WITH_TIMEOUT(asker.answered, count, 60000);
    for (int i = 0; i < count; ++i)
        QCOMPARE(asker.outcomes.value(i), QStringLiteral("com.tavix.nfc.UIAgent.Canceled"));
}

void TestLoad::manyAdaptersAndAgentsShareOneProcess()
{
    constexpr int adapterCount = 1000;
    constexpr int agentCount = 100;
    FakeDaemon daemon;
    daemon.start();
    int valid = 0;
    int invalid = 0;
    int changed = 0;
    QList<NfcAdapter *> adapters;
    for (int i = 0; i < adapterCount; ++i) {
        auto *adapter = new NfcAdapter;
        connect(
            adapter, &NfcAdapter::adapterValid, this, [&valid] { ++valid; });
        connect(
            adapter, &NfcAdapter::adapterInvalid, this, [&invalid] { ++invalid; });
        connect(adapter, &NfcAdapter::propertyChanged, this, [&changed] { ++changed; });
        adapters.append(adapter);
    }
    QList<NfcAgent *> agents;
    QSet<QString> paths;
    Asker asker;
    for (int i = 0; i < agentCount; ++i) {
        auto *agent = new NfcAgent;
        answerAtOnce(agent);
        adapters[i]->registerAgent(agent);
        agents.append(agent);
        paths.insert(agent->path());
        asker.askAnything(agent->path(), i % 3);
    }
    QCOMPARE(paths.size(), agentCount);
    QCOMPARE(daemon.calls(QStringLiteral("RegisterUIAgent")).size(), agentCount);
    QCOMPARE(daemon.calls(QStringLiteral("DefaultAdapter")).size(), 1);
    QTRY_COMPARE(asker.answered, agentCount);

    daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("off"));
    QTRY_COMPARE(changed, adapterCount);
    daemon.kill();
    QTRY_COMPARE(invalid, adapterCount);
    daemon.start();
    QTRY_COMPARE(valid, adapterCount);

    shuffle(adapters);
    shuffle(agents);
    qDeleteAll(agents);
    qDeleteAll(adapters);
    const auto next = std::make_unique<NfcAdapter>();
    QVERIFY(next->isValid());
    QCOMPARE(daemon.calls(QStringLiteral("DefaultAdapter")).size(), 2);
}

void TestLoad::longHandlerListArrivesInOrder()
{
    constexpr int count = 2000;
    FakeOhm ohm;
    ohm.start();
    QVariant argument;
    {
        NdefMessageHandlerList list;
        for (int i = 0; i < count; ++i)
            list.append({QStringLiteral("application%1").arg(i), QStringLiteral("session"),
                         QStringLiteral("org.example.App%1").arg(i),
                         QDBusObjectPath(QStringLiteral("/handler"))});
        argument = Asker::handlers(list);
    }
    ohm.clearCalls();

    NfcAgent agent;
    NdefMessageHandlerList arrived;
    connect(&agent, &NfcAgent::dataDeliveryRequested, this,
            [&](const NdefMessageHandlerList &handlers, const QDBusObjectPath &target) {
                arrived = handlers;
                agent.dataDeliveryGranted(target);
            });
    Asker asker;
    asker.ask(agent.path(), QStringLiteral("RequestNDEFDataDelivery"),
              {argument, QVariant::fromValue(target(1)), QByteArray("x")});
    QTRY_COMPARE(asker.answered, 1);
    QCOMPARE(arrived.size(), count);
    for (int i = 0; i < count; ++i)
        QCOMPARE(arrived[i].applicationId(), QStringLiteral("application%1").arg(i));

    // However many records, one tracker.
    arrived.clear();
    QTRY_COMPARE(ohm.members(), QStringList({QStringLiteral("Subscribe"), QStringLiteral("Unsubscribe")}));
}

void TestLoad::largeTagArrivesAndIsForwardedUnchanged()
{
    QByteArray content(1024 * 1024, Qt::Uninitialized);
    std::minstd_rand random(1);
    std::generate(content.begin(), content.end(), [&random] { return char(random()); });
    FakeOhm ohm;
    ohm.start();
    FakeHandler viewer;
    viewer.start();

    NfcAgent agent;
    connect(&agent, &NfcAgent::dataDeliveryRequested, this,
            [&](NdefMessageHandlerList handlers, const QDBusObjectPath &target, const QByteArray &data) {
                QCOMPARE(data, content);
                handlers.first().forwardData(target, data);
                agent.dataDeliveryGranted(target);
            });
    Asker asker;
    asker.ask(agent.path(), QStringLiteral("RequestNDEFDataDelivery"),
              {Asker::handlers({{QStringLiteral("viewer"), QStringLiteral("session"), viewer.service(),
                                 QDBusObjectPath(QStringLiteral("/viewer"))}}),
               QVariant::fromValue(target(1)), content});
    QTRY_COMPARE(asker.answered, 1);
    const QList<FakeCall> calls = viewer.calls(QStringLiteral("NDEFData"));
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.first().arguments.at(1).toByteArray(), content);
}

void TestLoad::stormOfPropertyChangesIsHeard()
{
    constexpr int count = 10000;
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    QVERIFY(adapter.isPowered());
    QSignalSpy changed(&adapter, &NfcAdapter::propertyChanged);
    QElapsedTimer clock;
    clock.start();
    daemon.emitSignal(
        FakeDaemon::adapterPath(), QStringLiteral("com.tavix.nfc.Adapter"), QStringLiteral("PropertyChanged"),
        {QStringLiteral("State"), QVariant::fromValue(QDBusVariant(QStringLiteral("on")))}, count);
    daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("off"));
    QTRY_COMPARE_WITH_TIMEOUT(changed.count(), count + 1, 60000);
    qInfo("%d property changes heard in %lld ms", count + 1, clock.elapsed());
    QVERIFY(!adapter.isPowered());
    QCOMPARE(daemon.calls(QStringLiteral("GetProperties")).size(), 1);
}

QTEST_GUILESS_MAIN(TestLoad)

#include "tst_load.moc"
