// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusInterface>
#include <QDBusReply>
#include <QSignalSpy>
#include <QTest>

#include <RadioState>

#include "catalogue.h"
#include "core/session.h"
#include "core/statusadaptor.h"
#include "fakedaemon.h"
#include "fakeface.h"
#include "fakeohm.h"
#include "introspection.h"

using ConnUi::RadioState;
namespace {

const auto path = QStringLiteral("/org/connui/NfcUi");
const auto interface = QStringLiteral("org.connui.NfcUi");
constexpr uint number = 7;

} // namespace

/** Another program of the session, on a connection of its own. */
class Watcher : public QObject
{
    Q_OBJECT

public:
    explicit Watcher(const QString &service)
        : bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("watcher")))
        , service(service)
    {
        bus.connect(service, path, QStringLiteral("org.freedesktop.DBus.Properties"),
                    QStringLiteral("PropertiesChanged"), this, SLOT(take(QString, QVariantMap)));
    }
    ~Watcher() override { QDBusConnection::disconnectFromBus(QStringLiteral("watcher")); }

    // Answered from this thread's event loop.
    QDBusMessage call(const QString &of, const QString &method, const QVariantList &arguments = {})
    {
        QDBusMessage message = QDBusMessage::createMethodCall(service, path, of, method);
        message.setArguments(arguments);
        const QDBusPendingCall pending = bus.asyncCall(message);
        if (!QTest::qWaitFor([&pending] { return pending.isFinished(); }))
            qFatal("%s is not answered", qPrintable(method));
        return pending.reply();
    }

    QVariantMap announced;

private Q_SLOTS:
    void take(const QString &of, const QVariantMap &changed)
    {
        if (of == interface)
            announced.insert(changed);
    }

private:
    QDBusConnection bus;
    const QString service;
};

class TestStatusAdaptor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void interfaceIsAsPublished();
    void registrationIsAnnounced();
    void transferThatIsPutAwayCanBeShownAgain();

private:
    std::unique_ptr<FakeOhm> ohm;
    std::unique_ptr<FakeDaemon> daemon;
    std::unique_ptr<FakeFace> face;
    std::unique_ptr<Session> session;
    std::unique_ptr<StatusAdaptor> status;
    std::unique_ptr<Watcher> watcher;
};

void TestStatusAdaptor::initTestCase()
{
    static const Catalogue catalogue;
    RadioState(RadioState::NFC).setEnabled(false);
}

void TestStatusAdaptor::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    ohm = std::make_unique<FakeOhm>();
    ohm->start();
    daemon = std::make_unique<FakeDaemon>();
    daemon->start();
    face = std::make_unique<FakeFace>();
    session = std::make_unique<Session>(face.get());
    status = std::make_unique<StatusAdaptor>(session.get());
    watcher = std::make_unique<Watcher>(QDBusConnection::sessionBus().baseService());
}

void TestStatusAdaptor::cleanup()
{
    watcher.reset();
    status.reset();
    session.reset();
}

void TestStatusAdaptor::interfaceIsAsPublished()
{
    const QDBusMessage reply =
        watcher->call(QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    const QStringList published = Introspection::publishedMembers(interface);
    QVERIFY(!published.isEmpty());
    QCOMPARE(Introspection::members(reply.arguments().value(0).toString().toUtf8(), interface), published);
}

void TestStatusAdaptor::registrationIsAnnounced()
{
    QTRY_COMPARE(watcher->announced.value(QStringLiteral("Registered")), QVariant(true));
    const auto read = [this] {
        const QVariant value = watcher
                                   ->call(QStringLiteral("org.freedesktop.DBus.Properties"),
                                          QStringLiteral("Get"), {interface, QStringLiteral("Registered")})
                                   .arguments()
                                   .value(0);
        return qdbus_cast<QDBusVariant>(value).variant();
    };
    QCOMPARE(read(), QVariant(true));
    daemon->kill();
    QTRY_COMPARE(watcher->announced.value(QStringLiteral("Registered")), QVariant(false));
    QCOMPARE(read(), QVariant(false));
}

void TestStatusAdaptor::transferThatIsPutAwayCanBeShownAgain()
{
    QTRY_VERIFY(session->isRegistered());
    const auto announce = [this](const QString &member, const QVariantList &arguments) {
        daemon->emitSignal(FakeDaemon::adapterPath(), QStringLiteral("com.tavix.nfc.Transfers"), member,
                           arguments);
    };
    announce(QStringLiteral("TransferStarted"),
             {number, QStringLiteral("Ada"), QStringLiteral("film.mkv"), quint64(100)});
    QTRY_VERIFY(face->shown);
    QCOMPARE(face->shown->kind, Question::Receiving);
    face->answer(Answer::Yes);
    QVERIFY(!face->shown);
    QTRY_COMPARE(watcher->announced.value(QStringLiteral("HiddenTransfers")), QVariant(1u));
    announce(QStringLiteral("TransferProgressed"), {number, quint64(50), quint64(100)});

    watcher->call(interface, QStringLiteral("ShowTransfers"));
    QVERIFY(face->shown);
    QTRY_COMPARE(watcher->announced.value(QStringLiteral("HiddenTransfers")), QVariant(0u));
    QTRY_COMPARE(face->shown->file.received + face->received, 50);
    face->answer(Answer::No);
    QTRY_COMPARE(daemon->calls(QStringLiteral("CancelTransfer")).size(), 1);
}

QTEST_GUILESS_MAIN(TestStatusAdaptor)
#include "tst_statusadaptor.moc"
