// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <optional>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDBusVirtualObject>
#include <QTest>

#include "busmonitor.h"
#include "daemon/authority.h"
#include "dbusmock.h"

namespace {

const QString authorityPath = QStringLiteral("/org/freedesktop/PolicyKit1/Authority");
const QString mockInterface = QStringLiteral("org.freedesktop.DBus.Mock");

constexpr uint trustedUser = 4711;
constexpr uint otherUser = 4712;

// A service whose calls, but for "Permitted", are for the authority to decide, and are then written down and
// answered.
class Guarded : public QDBusVirtualObject
{
public:
    explicit Guarded(const QSet<uint> &trusted) : authority(trusted) {}

    QString introspect(const QString &) const override { return QString(); }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const Authority::Action carryOut = [this, connection](const QDBusMessage &call, uint user) {
            carriedOut.append(call.member());
            users.append(user);
            connection.send(call.createReply());
        };
        if (message.member() == QLatin1String("Permitted"))
            authority.permit(message, carryOut);
        else
            authority.decide(message, carryOut);
        return true;
    }

    Authority authority;
    QStringList carriedOut;
    QList<uint> users;
};

// A caller with a connection of its own.
class Caller
{
public:
    explicit Caller(const QString &name)
        : name(name)
        , bus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, name))
    {}

    ~Caller() { QDBusConnection::disconnectFromBus(name); }

    QDBusPendingCall call(const QString &method, bool mayAskUser = false) const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(QDBusConnection::systemBus().baseService(),
                                                              QStringLiteral("/guarded"),
                                                              QStringLiteral("org.connui.Guarded"), method);
        message.setInteractiveAuthorizationAllowed(mayAskUser);
        return bus.asyncCall(message);
    }

private:
    const QString name;
    const QDBusConnection bus;
};

} // namespace

class TestAuthority : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void trustedUserPassesUnasked();
    void polkitDecidesAboutOthers_data();
    void polkitDecidesAboutOthers();
    void polkitMayChangeItsMind_data();
    void polkitMayChangeItsMind();
    void permittedCallIsCarriedOutInItsOrder();
    void nobodyElsePassesWithoutPolkit();
    void slowPolkitHoldsNobodyElseUp();
    void callsOfOneCallerKeepTheirOrder();
    void userIsAskedOnlyWhenTheCallerSaysSo_data();
    void userIsAskedOnlyWhenTheCallerSaysSo();
    void callerWhoHasLeftIsForgotten();

private:
    void guard(const QSet<uint> &trusted);
    void startPolkit();
    void tellPolkit(const QString &method, const QVariantList &arguments = {}) const;
    bool isPolkitHolding(int calls) const;

    std::unique_ptr<Guarded> guarded;
    std::unique_ptr<DBusMock> polkit;
};

void TestAuthority::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    guard({});
}

void TestAuthority::cleanup()
{
    QDBusConnection::systemBus().unregisterObject(QStringLiteral("/guarded"));
    guarded.reset();
    polkit.reset();
}

// The users of this list pass, and all others, the one of this test included, are for polkit to decide.
void TestAuthority::guard(const QSet<uint> &trusted)
{
    QDBusConnection bus = QDBusConnection::systemBus();
    bus.unregisterObject(QStringLiteral("/guarded"));
    guarded = std::make_unique<Guarded>(trusted);
    QVERIFY(bus.registerVirtualObject(QStringLiteral("/guarded"), guarded.get()));
}

void TestAuthority::startPolkit()
{
    polkit = std::make_unique<DBusMock>(QStringLiteral("org.freedesktop.PolicyKit1"),
                                        QStringList{QStringLiteral("--template"), QStringLiteral("polkitd")});
    QVERIFY(polkit->waitForRegistered());
}

void TestAuthority::tellPolkit(const QString &method, const QVariantList &arguments) const
{
    const QDBusMessage reply = polkit->call(authorityPath, mockInterface, method, arguments);
    QCOMPARE(reply.errorMessage(), QString());
}

bool TestAuthority::isPolkitHolding(int calls) const
{
    return polkit->call(authorityPath, mockInterface, QStringLiteral("HaveHangingCalls"), {}).arguments() ==
           QVariantList{calls > 0};
}

void TestAuthority::trustedUserPassesUnasked()
{
    guard(Authority::usersOfTheSystem());
    const Caller caller(QStringLiteral("caller"));
    const QDBusPendingCall call = caller.call(QStringLiteral("Manage"));
    QTRY_VERIFY(call.isFinished());
    QVERIFY(call.isValid());
    QCOMPARE(guarded->carriedOut, QStringList{QStringLiteral("Manage")});
    QCOMPARE(guarded->users, QList<uint>{geteuid()});
}

void TestAuthority::polkitDecidesAboutOthers_data()
{
    QTest::addColumn<QStringList>("allowed");
    QTest::addColumn<QString>("error");
    QTest::newRow("allowed") << QStringList{QStringLiteral("com.tavix.nfc.manage")} << QString();
    QTest::newRow("refused") << QStringList{QStringLiteral("com.tavix.nfc.other")}
                             << QStringLiteral("org.freedesktop.DBus.Error.AccessDenied");
}

void TestAuthority::polkitDecidesAboutOthers()
{
    QFETCH(QStringList, allowed);
    QFETCH(QString, error);
    startPolkit();
    tellPolkit(QStringLiteral("SetAllowed"), {allowed});
    const Caller caller(QStringLiteral("caller"));
    const QDBusPendingCall call = caller.call(QStringLiteral("Manage"));
    QTRY_VERIFY(call.isFinished());
    QCOMPARE(call.error().isValid() ? call.error().name() : QString(), error);
    QCOMPARE(guarded->carriedOut, error.isEmpty() ? QStringList{QStringLiteral("Manage")} : QStringList());
}

void TestAuthority::polkitMayChangeItsMind_data()
{
    QTest::addColumn<QStringList>("allowed");
    QTest::addColumn<uint>("user");
    QTest::addColumn<std::optional<bool>>("decision");
    const QStringList manage{QStringLiteral("com.tavix.nfc.manage")};
    const QStringList other{QStringLiteral("com.tavix.nfc.other")};
    QTest::newRow("allowed") << manage << otherUser << std::optional(true);
    QTest::newRow("refused") << other << otherUser << std::optional(false);
    QTest::newRow("refused, of a trusted user") << other << trustedUser << std::optional(true);
    QTest::newRow("no polkit") << QStringList() << otherUser << std::optional<bool>();
}

void TestAuthority::polkitMayChangeItsMind()
{
    QFETCH(QStringList, allowed);
    QFETCH(uint, user);
    QFETCH(std::optional<bool>, decision);
    guard({trustedUser});
    if (!allowed.isEmpty()) {
        startPolkit();
        tellPolkit(QStringLiteral("SetAllowed"), {allowed});
    }
    QList<std::optional<bool>> decisions;
    guarded->authority.review(QStringLiteral(":1.1"), user,
                              [&decisions](std::optional<bool> decided) { decisions.append(decided); });
    QTRY_COMPARE(decisions.size(), 1);
    QCOMPARE(decisions.constFirst(), decision);
}

void TestAuthority::permittedCallIsCarriedOutInItsOrder()
{
    startPolkit();
    tellPolkit(QStringLiteral("SetAllowed"), {QStringList{QStringLiteral("com.tavix.nfc.manage")}});
    tellPolkit(QStringLiteral("SimulateHang"), {true});
    const Caller caller(QStringLiteral("caller"));
    const QDBusPendingCall first = caller.call(QStringLiteral("Manage"));
    QTRY_VERIFY(isPolkitHolding(1));
    const QDBusPendingCall second = caller.call(QStringLiteral("Permitted"));
    const Caller other(QStringLiteral("other"));
    const QDBusPendingCall third = other.call(QStringLiteral("Permitted"));
    QTRY_VERIFY(third.isFinished());
    QVERIFY(third.isValid());
    QVERIFY(!second.isFinished());
    tellPolkit(QStringLiteral("ReleaseHangingCalls"));
    QTRY_VERIFY(second.isFinished());
    QCOMPARE(guarded->carriedOut, (QStringList{QStringLiteral("Permitted"), QStringLiteral("Manage"),
                                               QStringLiteral("Permitted")}));
}

void TestAuthority::nobodyElsePassesWithoutPolkit()
{
    const Caller caller(QStringLiteral("caller"));
    const QDBusPendingCall call = caller.call(QStringLiteral("Manage"));
    QTRY_VERIFY(call.isFinished());
    QCOMPARE(call.error().name(), QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"));
    QCOMPARE(guarded->carriedOut, QStringList());
}

void TestAuthority::slowPolkitHoldsNobodyElseUp()
{
    startPolkit();
    tellPolkit(QStringLiteral("SetAllowed"), {QStringList{QStringLiteral("com.tavix.nfc.manage")}});
    tellPolkit(QStringLiteral("SimulateHang"), {true});
    const Caller first(QStringLiteral("first"));
    const QDBusPendingCall slow = first.call(QStringLiteral("Slow"));
    QTRY_VERIFY(isPolkitHolding(1));
    tellPolkit(QStringLiteral("SimulateHang"), {false});
    const Caller second(QStringLiteral("second"));
    const QDBusPendingCall fast = second.call(QStringLiteral("Fast"));
    QTRY_VERIFY(fast.isFinished());
    QVERIFY(!slow.isFinished());
    tellPolkit(QStringLiteral("ReleaseHangingCalls"));
    QTRY_VERIFY(slow.isFinished());
    QCOMPARE(guarded->carriedOut, (QStringList{QStringLiteral("Fast"), QStringLiteral("Slow")}));
}

void TestAuthority::callsOfOneCallerKeepTheirOrder()
{
    startPolkit();
    tellPolkit(QStringLiteral("SetAllowed"), {QStringList{QStringLiteral("com.tavix.nfc.manage")}});
    tellPolkit(QStringLiteral("SimulateHang"), {true});
    const Caller caller(QStringLiteral("caller"));
    const QDBusPendingCall first = caller.call(QStringLiteral("First"));
    QTRY_VERIFY(isPolkitHolding(1));
    tellPolkit(QStringLiteral("SimulateHang"), {false});
    const Caller other(QStringLiteral("other"));
    const QDBusPendingCall second = caller.call(QStringLiteral("Second"));
    // Decided after the second was.
    const QDBusPendingCall third = other.call(QStringLiteral("Third"));
    QTRY_VERIFY(third.isFinished());
    QVERIFY(!second.isFinished());
    tellPolkit(QStringLiteral("ReleaseHangingCalls"));
    QTRY_VERIFY(second.isFinished());
    QCOMPARE(guarded->carriedOut,
             (QStringList{QStringLiteral("Third"), QStringLiteral("First"), QStringLiteral("Second")}));
}

void TestAuthority::userIsAskedOnlyWhenTheCallerSaysSo_data()
{
    QTest::addColumn<bool>("mayAskUser");
    QTest::newRow("with the user") << true;
    QTest::newRow("without the user") << false;
}

void TestAuthority::userIsAskedOnlyWhenTheCallerSaysSo()
{
    QFETCH(bool, mayAskUser);
    // Its answer is the flags that it was given.
    polkit =
        std::make_unique<DBusMock>(QStringLiteral("org.freedesktop.PolicyKit1"),
                                   QStringList{QStringLiteral("org.freedesktop.PolicyKit1"), authorityPath,
                                               QStringLiteral("org.freedesktop.PolicyKit1.Authority")});
    QVERIFY(polkit->waitForRegistered());
    polkit->addMethod(
        authorityPath, QStringLiteral("org.freedesktop.PolicyKit1.Authority"),
        QStringLiteral("CheckAuthorization"), QStringLiteral("(sa{sv})sa{ss}us"), QStringLiteral("(bba{ss})"),
        QStringLiteral("ret = (args[0][0] == 'system-bus-name' and args[3] == 1, False, {'': ''})"));
    const Caller caller(QStringLiteral("caller"));
    const QDBusPendingCall call = caller.call(QStringLiteral("Manage"), mayAskUser);
    QTRY_VERIFY(call.isFinished());
    QCOMPARE(call.isValid(), mayAskUser);
}

void TestAuthority::callerWhoHasLeftIsForgotten()
{
    startPolkit();
    tellPolkit(QStringLiteral("SimulateHang"), {true});
    {
        const Caller caller(QStringLiteral("caller"));
        const QDBusPendingCall call = caller.call(QStringLiteral("Manage"));
        QTRY_VERIFY(isPolkitHolding(1));
    }
    tellPolkit(QStringLiteral("SimulateHang"), {false});
    tellPolkit(QStringLiteral("ReleaseHangingCalls"));
    const Caller next(QStringLiteral("next"));
    const QDBusPendingCall call = next.call(QStringLiteral("Manage"));
    QTRY_VERIFY(call.isFinished());
    QCOMPARE(guarded->carriedOut, QStringList());
}

QTEST_GUILESS_MAIN(TestAuthority)
#include "tst_authority.moc"
