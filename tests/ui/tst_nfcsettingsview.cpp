// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>
#include <memory>

#include <QElapsedTimer>
#include <QGraphicsLayout>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <ConnectivitySettings>
#include <MButton>
#include <MButtonModel>
#include <MDialog>
#include <MLabel>
#include <MWindow>
#include <NfcAdapter>
#include <NfcEnableDialog>
#include <NfcPendingCall>
#include <NfcSettingsView>
#include <RadioState>
#include <SimpleCheckBoxLabel>
#include <SimpleSheet>

#include "catalogue.h"
#include "fakedaemon.h"
#include "shownwidgets.h"
#include "tabkey.h"

using namespace ConnUi;

namespace {

constexpr int settingsType = 1;
const auto confirmations = QStringLiteral("nfc_show_confirmations");

void setRadio(bool on)
{
    RadioState(RadioState::NFC).setEnabled(on);
}

bool isRadioOn()
{
    return RadioState(RadioState::NFC).enabled();
}

// The settings of an adapter on the screen of a phone.
class Page
{
public:
    explicit Page(NfcAdapter *adapter)
    {
        view = new NfcSettingsView(adapter);
        sheet.setCentralWidget(view);
        sheet.appear(&window);
        window.show();
        ready = QTest::qWaitForWindowExposed(&window);
        const QList<MButton *> switches = shownWidgets<MButton>(view);
        const QList<SimpleCheckBoxLabel *> rows = shownWidgets<SimpleCheckBoxLabel>(view);
        const QList<QTimer *> timers = view->findChildren<QTimer *>();
        ready = ready && switches.size() == 2 && rows.size() == 2 && timers.size() == 1;
        power = switches.value(0);
        confirmation = switches.value(1);
        row = rows.value(0);
        watchdog = timers.value(0);
    }

    bool isOff() const { return !power->isChecked() && !row->showProgressIndicator() && !isWatched(); }
    bool isStarting() const { return power->isChecked() && row->showProgressIndicator() && isWatched(); }
    bool isOn() const { return power->isChecked() && !row->showProgressIndicator() && !isWatched(); }
    bool isWatched() const { return watchdog->isActive(); }

    // Lets the 20 seconds be over.
    void letTimePass() const
    {
        QSignalSpy timeout(watchdog, &QTimer::timeout);
        watchdog->start(0);
        QVERIFY(timeout.wait());
    }

    QList<MDialog *> dialogs() const
    {
        QList<MDialog *> found;
        const QList<QGraphicsItem *> items = window.scene()->items();
        for (QGraphicsItem *item : items)
            if (auto *dialog = qobject_cast<MDialog *>(item->toGraphicsObject()))
                found.append(dialog);
        return found;
    }

    MWindow window;
    SimpleSheet sheet;
    NfcSettingsView *view;
    MButton *power;
    MButton *confirmation;
    SimpleCheckBoxLabel *row;
    QTimer *watchdog;
    bool ready;
};

// A connection manager in flight mode.
class FlightMode : public FakeService
{
public:
    FlightMode() : FakeService(QDBusConnection::SystemBus, QStringLiteral("net.connman"))
    {
        reply(QStringLiteral("GetProperties"), {QVariantMap{{QStringLiteral("OfflineMode"), true}}});
        start();
    }
};

// Milliseconds, somewhat less than the bus's own.
constexpr qint64 replyTimeout = 20000;

QRegularExpression noReply(const QString &method)
{
    return QRegularExpression(
        QStringLiteral("^%1 returned error 'org\\.freedesktop\\.DBus\\.Error\\.NoReply': ").arg(method));
}

// Whether the adapter need not ask the daemon for its power.
bool isKnown(NfcAdapter *adapter)
{
    if (!adapter->isValid())
        return false;
    const std::unique_ptr<NfcPendingCall> call(adapter->isPoweredAsync());
    return call->isFinished();
}

QVariantList stateWritten(FakeDaemon &daemon)
{
    QVariantList written;
    for (const FakeCall &call : daemon.calls(QStringLiteral("SetProperty")))
        if (call.arguments.value(0) == QStringLiteral("State"))
            written.append(call.arguments.value(1).value<QDBusVariant>().variant());
    return written;
}

} // namespace

class TestNfcSettingsView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void rowsAreNamed();
    void keyboardReachesEverySwitchFromTopToBottom();
    void switchAccessTogglesEverySwitch();
    void switchShowsThePower_data();
    void switchShowsThePower();
    void showingThePowerAsksForNothing();
    void switchFollowsThePower();
    void otherPropertiesChangeNothing();

    void switchingOnIsWatched();
    void powerEndsTheWatch();
    void reportOfNoPowerKeepsTheWatch();
    void switchingOffIsNotWatched();
    void comingDaemonKeepsTheWatch();
    void leavingDaemonKeepsTheWatch();
    void absentDaemonIsStarted();
    void daemonThatCannotBeStartedFails();
    void startedDaemonWithoutPowerFails();
    void lackOfPowerFails();
    void powerThatWasNotReportedIsNoFailure();
    void powerThatIsNoLongerWantedIsNoFailure();
    void daemonThatHasLeftFailsWhateverIsWanted();
    void failureIsToldAtEachTime();
    void watchBeginsAnewAtEachRequest();

    void flightModeIsAskedAbout();
    void dismissedQuestionLeavesNfcOff();
    void everyOtherAnswerSwitchesOn_data();
    void everyOtherAnswerSwitchesOn();
    void answerStartsAnAbsentDaemon();
    void switchingOffInFlightModeAsksNothing();
    void questionOutlivesThePage();
    void questionOutlivesTheAdapter();

    void confirmationStartsAsStored_data();
    void confirmationStartsAsStored();
    void confirmationIsStored();
    void withoutAdapterSwitchesAreInert();
    void withDeletedAdapterSwitchesAreInert();

    void pageWaitsTwoSecondsAtMost();
    void switchWaitsTwoSecondsAtMost();
    void asynchronousPageShowsThePowerWhenItIsKnown();
    void asynchronousSwitchWritesState();
    void asynchronousSwitchStartsAnAbsentDaemon();
    void asynchronousSwitchThatIsSwitchedBackAsksForNothing();
    void asynchronousPageDoesNotWaitForTheConnectionManager();
    void asynchronousLackOfPowerFails();
    void asynchronousAnswerMayOutliveThePage();

private:
    const Catalogue english;
};

void TestNfcSettingsView::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    // An adapter that is made now starts no daemon.
    setRadio(false);
}

void TestNfcSettingsView::cleanup()
{
    ConnectivitySettings(settingsType).set(confirmations, {});
}

void TestNfcSettingsView::rowsAreNamed()
{
    const Page page(nullptr);
    QVERIFY(page.ready);
    const QStringList names = shownTexts<MLabel>(page.view);
    QCOMPARE(names.size(), 2);
    QCOMPARE(names[0].section(M::lengthVariantSeparator, 0, 0),
             QStringLiteral("Near Field Communication (NFC)"));
    QCOMPARE(names[1].section(M::lengthVariantSeparator, 0, 0),
             QStringLiteral("Ask before opening what is on a tag"));
    QCOMPARE(page.power->viewType(), MButton::switchType);
    QCOMPARE(page.confirmation->viewType(), MButton::switchType);
    QVERIFY(page.row->isAncestorOf(page.power));
    qreal left = -1;
    qreal top = -1;
    qreal right = -1;
    qreal bottom = -1;
    page.view->layout()->getContentsMargins(&left, &top, &right, &bottom);
    QCOMPARE((QList<qreal>{left, top, right, bottom}), (QList<qreal>{0, 0, 0, 0}));
}

void TestNfcSettingsView::keyboardReachesEverySwitchFromTopToBottom()
{
    Page page(nullptr);
    page.sheet.setRejectButtonText(QStringLiteral("Done"));
    QVERIFY(QTest::qWaitForWindowActive(&page.window));
    QCoreApplication::processEvents();
    QList<QGraphicsItem *> fromTop = asItems(shownWidgets<MButton>(&page.sheet));
    QCOMPARE(fromTop.size(), 3);
    QCOMPARE(itemsInFocusOrder(&page.window, Qt::Key_Tab), fromTop);
    std::reverse(fromTop.begin(), fromTop.end());
    page.sheet.setFocus();
    QCOMPARE(itemsInFocusOrder(&page.window, Qt::Key_Backtab), fromTop);
}

// One key goes on, another one presses.
void TestNfcSettingsView::switchAccessTogglesEverySwitch()
{
    Page page(nullptr);
    QVERIFY(QTest::qWaitForWindowActive(&page.window));
    for (const MButton *wanted : {page.power, page.confirmation}) {
        QTest::keyClick(page.window.viewport(), Qt::Key_Tab);
        QTest::keyClick(page.window.viewport(), Qt::Key_Space);
        QVERIFY(wanted->isChecked());
        QTest::keyClick(page.window.viewport(), Qt::Key_Space);
        QVERIFY(!wanted->isChecked());
    }
}

void TestNfcSettingsView::switchShowsThePower_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>("on");
    QTest::newRow("on") << QStringLiteral("on") << true;
    QTest::newRow("off") << QStringLiteral("off") << false;
    QTest::newRow("nonsense") << QStringLiteral("ON") << false;
}

void TestNfcSettingsView::switchShowsThePower()
{
    QFETCH(QString, state);
    QFETCH(bool, on);
    FakeDaemon daemon;
    daemon.setState(state);
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    QVERIFY(page.ready);
    QVERIFY(on ? page.isOn() : page.isOff());
}

void TestNfcSettingsView::showingThePowerAsksForNothing()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    QVERIFY(page.isOn());
    daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("off"));
    QTRY_VERIFY(page.isOff());
    QCOMPARE(daemon.members(),
             QStringList({QStringLiteral("DefaultAdapter"), QStringLiteral("GetProperties")}));
    QVERIFY(!isRadioOn());
}

void TestNfcSettingsView::switchFollowsThePower()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    NfcAdapter adapter;
    const Page page(&adapter);
    QVERIFY(page.isOff());
    daemon.start();
    QTRY_VERIFY(adapter.isValid());
    QVERIFY(page.isOff());
    daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("on"));
    QTRY_VERIFY(page.isOn());
    daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("off"));
    QTRY_VERIFY(page.isOff());
    daemon.stop();
    QTRY_VERIFY(!adapter.isValid());
    daemon.setState(QStringLiteral("on"));
    daemon.start();
    QTRY_VERIFY(page.isOn());
    daemon.stop();
    QTRY_VERIFY(page.isOff());
}

void TestNfcSettingsView::otherPropertiesChangeNothing()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    QVERIFY(page.isStarting());
    for (const QString &property :
         {QStringLiteral("State"), QStringLiteral("POWERED"), QStringLiteral("mode"), QString()})
        Q_EMIT adapter.propertyChanged(property);
    QVERIFY(page.isStarting());
}

void TestNfcSettingsView::switchingOnIsWatched()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    QVERIFY(page.isStarting());
    QCOMPARE(page.watchdog->interval(), 20000);
    QCOMPARE(page.watchdog->timerType(), Qt::PreciseTimer);
    QVERIFY(page.watchdog->remainingTime() > 0);
    QCOMPARE(stateWritten(daemon), QVariantList{QStringLiteral("on")});
    QVERIFY(isRadioOn());
}

void TestNfcSettingsView::powerEndsTheWatch()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    daemon.setState(QStringLiteral("on"));
    daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("on"));
    QTRY_VERIFY(page.isOn());
    QCOMPARE(page.dialogs(), QList<MDialog *>());
}

void TestNfcSettingsView::reportOfNoPowerKeepsTheWatch()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("off"));
    QTRY_VERIFY(!page.power->isChecked());
    QVERIFY(!page.row->showProgressIndicator());
    QVERIFY(page.isWatched());
}

void TestNfcSettingsView::switchingOffIsNotWatched()
{
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    setRadio(true);
    page.power->click();
    QVERIFY(page.isOff());
    QCOMPARE(stateWritten(daemon), QVariantList{QStringLiteral("off")});
    QVERIFY(!isRadioOn());
}

void TestNfcSettingsView::comingDaemonKeepsTheWatch()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.makeActivatable(QStringLiteral("/bin/false"));
    NfcAdapter adapter;
    const Page page(&adapter);
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: unable to start service com.tavix.nfc");
    page.power->click();
    QVERIFY(page.isStarting());
    daemon.start();
    QTRY_VERIFY(adapter.isValid());
    QVERIFY(!page.power->isChecked());
    QVERIFY(!page.row->showProgressIndicator());
    QVERIFY(page.isWatched());
}

void TestNfcSettingsView::leavingDaemonKeepsTheWatch()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    setRadio(false); // or it counts as one that cannot live
    daemon.stop();
    QTRY_VERIFY(!adapter.isValid());
    QVERIFY(!page.power->isChecked());
    QVERIFY(!page.row->showProgressIndicator());
    QVERIFY(page.isWatched());
}

void TestNfcSettingsView::absentDaemonIsStarted()
{
    FakeDaemon daemon;
    daemon.makeActivatable();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    QVERIFY(page.isStarting());
    QVERIFY(daemon.isOnBus());
    QVERIFY(!isRadioOn());
    QTRY_VERIFY(adapter.isValid());
    QVERIFY(page.power->isChecked());
    page.letTimePass();
    QVERIFY(page.isOn());
    QCOMPARE(page.dialogs(), QList<MDialog *>());
}

void TestNfcSettingsView::daemonThatCannotBeStartedFails()
{
    NfcAdapter adapter;
    const Page page(&adapter);
    QTest::ignoreMessage(QtWarningMsg, "NfcAdapter: unable to start service com.tavix.nfc");
    page.power->click();
    QVERIFY(page.isStarting());
    page.letTimePass();
    QVERIFY(page.isOff());
    QCOMPARE(page.dialogs().size(), 1);
}

void TestNfcSettingsView::startedDaemonWithoutPowerFails()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    // The daemon as scripted, rather than a fresh one.
    daemon.makeActivatable(
        QStringLiteral("/usr/bin/dbus-send --bus=%1 --print-reply --dest=org.connui.fake.com.tavix.nfc / "
                       "org.connui.FakeService.Own")
            .arg(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS")));
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    QVERIFY(page.isStarting());
    QTRY_VERIFY(adapter.isValid());
    QVERIFY(!page.power->isChecked());
    QVERIFY(!page.row->showProgressIndicator());
    QVERIFY(page.isWatched());
    QCOMPARE(page.watchdog->interval(), 20000);
    QCOMPARE(stateWritten(daemon), QVariantList());

    page.letTimePass();
    QVERIFY(page.isOff());
    QCOMPARE(page.dialogs().size(), 1);
    QCOMPARE(shownTexts<MLabel>(page.dialogs().constFirst()).value(0),
             QStringLiteral("NFC is not available"));
}

void TestNfcSettingsView::lackOfPowerFails()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    page.letTimePass();
    QVERIFY(page.isOff());

    QCOMPARE(page.dialogs().size(), 1);
    const QPointer<MDialog> box = page.dialogs().constFirst();
    QCOMPARE(shownTexts<MLabel>(box),
             QStringList({QStringLiteral("NFC is not available"),
                          QStringLiteral("NFC did not start. Try again, or restart the phone.")}));
    QCOMPARE(box->buttons().size(), 1);
    QCOMPARE(box->buttons().constFirst()->standardButton(), M::OkButton);
    daemon.clearCalls();
    box->buttons().constFirst()->click();
    QTRY_VERIFY(!box);
    QCOMPARE(daemon.members(), QStringList());
    QVERIFY(page.isOff());
}

void TestNfcSettingsView::powerThatWasNotReportedIsNoFailure()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    daemon.setState(QStringLiteral("on"));
    page.letTimePass();
    QVERIFY(page.isOn());
    QCOMPARE(page.dialogs(), QList<MDialog *>());
}

void TestNfcSettingsView::powerThatIsNoLongerWantedIsNoFailure()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    daemon.setState(QStringLiteral("on")); // which it does not announce
    page.power->click();
    QCOMPARE(stateWritten(daemon), QVariantList({QStringLiteral("on"), QStringLiteral("off")}));
    daemon.setState(QStringLiteral("off"));
    QVERIFY(page.isWatched());
    page.letTimePass();
    QVERIFY(page.isOff());
    QCOMPARE(page.dialogs(), QList<MDialog *>());
}

void TestNfcSettingsView::daemonThatHasLeftFailsWhateverIsWanted()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    daemon.setState(QStringLiteral("on"));
    page.power->click();
    QVERIFY(!isRadioOn());
    daemon.stop();
    QTRY_VERIFY(!adapter.isValid());
    page.letTimePass();
    QVERIFY(page.isOff());
    QCOMPARE(page.dialogs().size(), 1);
}

void TestNfcSettingsView::failureIsToldAtEachTime()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    for (int i = 0; i < 2; ++i) {
        page.power->click();
        page.letTimePass();
        QVERIFY(page.isOff());
        QCOMPARE(page.dialogs().size(), 1);
        const QPointer<MDialog> box = page.dialogs().constFirst();
        box->dismiss();
        QTRY_VERIFY(!box);
    }
}

void TestNfcSettingsView::watchBeginsAnewAtEachRequest()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    page.watchdog->start(1000000);
    daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("off"));
    QTRY_VERIFY(!page.power->isChecked());
    page.power->click();
    QVERIFY(page.isStarting());
    QCOMPARE(page.watchdog->interval(), 20000);
}

void TestNfcSettingsView::flightModeIsAskedAbout()
{
    const FlightMode flight;
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    QVERIFY(page.isOn()); // to look at: a switch without an indicator
    QCOMPARE(page.dialogs().size(), 1);
    MDialog *question = page.dialogs().constFirst();
    QVERIFY(qobject_cast<NfcEnableDialog *>(question));
    QCOMPARE(shownTexts<MLabel>(question).value(0), QStringLiteral("Flight mode is on"));
    QCOMPARE(stateWritten(daemon), QVariantList());
    QVERIFY(!isRadioOn());
}

void TestNfcSettingsView::dismissedQuestionLeavesNfcOff()
{
    const FlightMode flight;
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    Page page(&adapter);
    page.power->click();
    QCOMPARE(page.dialogs().size(), 1);
    const QPointer<MDialog> question = page.dialogs().constFirst();
    QTest::keyClick(page.window.viewport(), Qt::Key_Escape);
    QVERIFY(page.isOff());
    QVERIFY(question);
    QTRY_VERIFY(!question);
    QCOMPARE(stateWritten(daemon), QVariantList());
    QVERIFY(!isRadioOn());
    QVERIFY(page.isOff());
}

void TestNfcSettingsView::everyOtherAnswerSwitchesOn_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("yes") << int(M::YesButton);
    QTest::newRow("no") << int(M::NoButton);
    QTest::newRow("ok") << int(M::OkButton);
    QTest::newRow("an added button") << 0;
    QTest::newRow("nonsense") << -1;
}

void TestNfcSettingsView::everyOtherAnswerSwitchesOn()
{
    QFETCH(int, answer);
    const FlightMode flight;
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    QCOMPARE(page.dialogs().size(), 1);
    const QPointer<MDialog> question = page.dialogs().constFirst();
    question->done(answer);
    QVERIFY(page.isStarting());
    QCOMPARE(page.watchdog->interval(), 20000);
    QCOMPARE(stateWritten(daemon), QVariantList{QStringLiteral("on")});
    QVERIFY(isRadioOn());
    QVERIFY(question);
    QTRY_VERIFY(!question);
    page.letTimePass();
    QVERIFY(page.isOff());
    QCOMPARE(page.dialogs().size(), 1);
}

void TestNfcSettingsView::answerStartsAnAbsentDaemon()
{
    const FlightMode flight;
    FakeDaemon daemon;
    daemon.makeActivatable();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    QVERIFY(!daemon.isOnBus());
    QCOMPARE(page.dialogs().size(), 1);
    page.dialogs().constFirst()->done(M::YesButton);
    QVERIFY(daemon.isOnBus());
    QVERIFY(page.isStarting());
}

void TestNfcSettingsView::switchingOffInFlightModeAsksNothing()
{
    const FlightMode flight;
    FakeDaemon daemon;
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    page.power->click();
    QVERIFY(page.isOff());
    QCOMPARE(page.dialogs(), QList<MDialog *>());
    QCOMPARE(stateWritten(daemon), QVariantList{QStringLiteral("off")});
}

void TestNfcSettingsView::questionOutlivesThePage()
{
    const FlightMode flight;
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    Page page(&adapter);
    page.power->click();
    QCOMPARE(page.dialogs().size(), 1);
    const QPointer<MDialog> question = page.dialogs().constFirst();
    page.sheet.setCentralWidget(nullptr);
    question->done(M::YesButton);
    QTRY_VERIFY(!question);
    QCOMPARE(stateWritten(daemon), QVariantList());
}

void TestNfcSettingsView::questionOutlivesTheAdapter()
{
    const FlightMode flight;
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    auto adapter = std::make_unique<NfcAdapter>();
    const Page page(adapter.get());
    page.power->click();
    QCOMPARE(page.dialogs().size(), 1);
    adapter.reset();
    page.dialogs().constFirst()->done(M::YesButton);
    QVERIFY(page.isStarting());
    page.letTimePass();
    QVERIFY(page.isOff());
    QCOMPARE(stateWritten(daemon), QVariantList());
}

void TestNfcSettingsView::confirmationStartsAsStored_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("on");
    QTest::newRow("nothing") << QVariant() << false;
    QTest::newRow("true") << QVariant(true) << true;
    QTest::newRow("false") << QVariant(false) << false;
    QTest::newRow("the word true") << QVariant(QStringLiteral("true")) << false;
    QTest::newRow("one") << QVariant(1) << false;
}

void TestNfcSettingsView::confirmationStartsAsStored()
{
    QFETCH(QVariant, stored);
    QFETCH(bool, on);
    ConnectivitySettings(settingsType).set(confirmations, stored);
    NfcAdapter adapter;
    const Page page(&adapter);
    QVERIFY(page.ready);
    QCOMPARE(page.confirmation->isChecked(), on);
    QCOMPARE(ConnectivitySettings(settingsType).get(confirmations), stored);
}

void TestNfcSettingsView::confirmationIsStored()
{
    NfcAdapter adapter;
    const Page page(&adapter);
    page.confirmation->click();
    QCOMPARE(ConnectivitySettings(settingsType).get(confirmations), QVariant(true));
    page.confirmation->click();
    QCOMPARE(ConnectivitySettings(settingsType).get(confirmations), QVariant(false));
    QVERIFY(page.isOff());
}

void TestNfcSettingsView::withoutAdapterSwitchesAreInert()
{
    const FlightMode flight;
    FakeDaemon daemon;
    daemon.makeActivatable();
    const Page page(nullptr);
    QVERIFY(page.isOff());
    QVERIFY(!page.confirmation->isChecked());
    page.power->click();
    page.confirmation->click();
    QVERIFY(page.isOn()); // their own look
    QVERIFY(page.confirmation->isChecked());
    page.power->click();
    QVERIFY(page.isOff());
    QCOMPARE(page.dialogs(), QList<MDialog *>());
    QVERIFY(!daemon.isOnBus());
    QVERIFY(!isRadioOn());
    QCOMPARE(ConnectivitySettings(settingsType).get(confirmations), QVariant());
}

void TestNfcSettingsView::withDeletedAdapterSwitchesAreInert()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    auto adapter = std::make_unique<NfcAdapter>();
    const Page page(adapter.get());
    page.power->click();
    QVERIFY(page.isStarting());
    daemon.clearCalls();
    adapter.reset();
    page.letTimePass();
    QVERIFY(page.isOff());
    QCOMPARE(page.dialogs().size(), 1);
    page.power->click();
    page.confirmation->click();
    QCOMPARE(daemon.members(), QStringList());
    QCOMPARE(ConnectivitySettings(settingsType).get(confirmations), QVariant());
}

// Of an adapter that waits; without the limit the bus's own reply timeout would be over first.
void TestNfcSettingsView::pageWaitsTwoSecondsAtMost()
{
    FakeDaemon daemon;
    daemon.hold(QStringLiteral("GetProperties"));
    daemon.start();
    NfcAdapter adapter;
    QElapsedTimer time;
    time.start();
    QTest::ignoreMessage(QtWarningMsg, noReply(QStringLiteral("GetProperties")));
    const NfcSettingsView view(&adapter);
    QVERIFY(time.elapsed() < replyTimeout);
}

void TestNfcSettingsView::switchWaitsTwoSecondsAtMost()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    NfcAdapter adapter;
    const Page page(&adapter);
    daemon.hold(QStringLiteral("SetProperty"));
    QElapsedTimer time;
    time.start();
    QTest::ignoreMessage(QtWarningMsg, noReply(QStringLiteral("SetProperty")));
    page.power->click();
    QVERIFY(time.elapsed() < replyTimeout);
    QVERIFY(page.isStarting());
}

void TestNfcSettingsView::asynchronousPageShowsThePowerWhenItIsKnown()
{
    FakeDaemon daemon;
    const std::unique_ptr<NfcAdapter> adapter(NfcAdapter::defaultAdapterAsync());
    const Page page(adapter.get());
    QVERIFY(page.isOff());
    daemon.hold(QStringLiteral("GetProperties"));
    daemon.start();
    QTRY_COMPARE(daemon.members(),
                 QStringList({QStringLiteral("DefaultAdapter"), QStringLiteral("GetProperties")}));
    QVERIFY(page.isOff());
    daemon.release(QStringLiteral("GetProperties"));
    QTRY_VERIFY(page.isOn());

    const Page second(adapter.get());
    QVERIFY(second.isOn());
    QCOMPARE(daemon.members().size(), 2);
}

void TestNfcSettingsView::asynchronousSwitchWritesState()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    const std::unique_ptr<NfcAdapter> adapter(NfcAdapter::defaultAdapterAsync());
    const Page page(adapter.get());
    QTRY_VERIFY(daemon.members().contains(QStringLiteral("GetProperties")));
    QTRY_VERIFY(isKnown(adapter.get()));

    daemon.hold(QStringLiteral("SetProperty"));
    page.power->click();
    QTRY_VERIFY(page.isStarting());
    QCOMPARE(stateWritten(daemon), QVariantList{QStringLiteral("on")});
    QVERIFY(isRadioOn());
    daemon.release(QStringLiteral("SetProperty"));
    daemon.setState(QStringLiteral("on"));
    daemon.emitPropertyChanged(QStringLiteral("State"), QStringLiteral("on"));
    QTRY_VERIFY(page.isOn());

    QTRY_VERIFY(isKnown(adapter.get()));
    page.power->click();
    QVERIFY(page.isOff());
    QCOMPARE(stateWritten(daemon), QVariantList({QStringLiteral("on"), QStringLiteral("off")}));
    QVERIFY(!isRadioOn());
}

void TestNfcSettingsView::asynchronousSwitchStartsAnAbsentDaemon()
{
    FakeDaemon daemon;
    daemon.makeActivatable();
    const std::unique_ptr<NfcAdapter> adapter(NfcAdapter::defaultAdapterAsync());
    const Page page(adapter.get());
    page.power->click();
    QVERIFY(page.power->isChecked());
    QVERIFY(!daemon.isOnBus());
    QTRY_VERIFY(page.isWatched() && page.power->isChecked() && !page.row->showProgressIndicator());
    QVERIFY(daemon.isOnBus());
}

void TestNfcSettingsView::asynchronousSwitchThatIsSwitchedBackAsksForNothing()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.hold(QStringLiteral("GetProperties"));
    daemon.start();
    const std::unique_ptr<NfcAdapter> adapter(NfcAdapter::defaultAdapterAsync());
    const Page page(adapter.get());
    QTRY_VERIFY(adapter->isValid());
    page.power->click();
    QVERIFY(page.power->isChecked());
    page.power->click();
    daemon.release(QStringLiteral("GetProperties"));
    QTRY_VERIFY(isKnown(adapter.get()));
    QCoreApplication::processEvents();
    QVERIFY(page.isOff());
    QCOMPARE(stateWritten(daemon), QVariantList());
}

void TestNfcSettingsView::asynchronousPageDoesNotWaitForTheConnectionManager()
{
    FlightMode flight;
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    const std::unique_ptr<NfcAdapter> adapter(NfcAdapter::defaultAdapterAsync());
    const Page page(adapter.get());
    QTRY_VERIFY(isKnown(adapter.get()));

    // Switched back before the manager has answered: nothing is asked, nothing is switched.
    flight.hold(QStringLiteral("GetProperties"));
    page.power->click();
    QTRY_COMPARE(flight.calls(QStringLiteral("GetProperties")).size(), 1);
    page.power->click();
    flight.release(QStringLiteral("GetProperties"));
    QCoreApplication::processEvents();
    QVERIFY(page.isOff());
    QCOMPARE(page.dialogs(), QList<MDialog *>());

    flight.hold(QStringLiteral("GetProperties"));
    page.power->click();
    QTRY_COMPARE(flight.calls(QStringLiteral("GetProperties")).size(), 2);
    QCOMPARE(page.dialogs(), QList<MDialog *>());
    flight.release(QStringLiteral("GetProperties"));
    QTRY_COMPARE(page.dialogs().size(), 1);
    QVERIFY(qobject_cast<NfcEnableDialog *>(page.dialogs().constFirst()));
    QCOMPARE(page.dialogs().constFirst()->title(), qtTrId("qtn_nfc_start_flightmode_tit"));
    QCOMPARE(flight.calls(QStringLiteral("GetProperties")).size(), 2);
    QCOMPARE(stateWritten(daemon), QVariantList());
}

void TestNfcSettingsView::asynchronousLackOfPowerFails()
{
    FakeDaemon daemon;
    daemon.setState(QStringLiteral("off"));
    daemon.start();
    const std::unique_ptr<NfcAdapter> adapter(NfcAdapter::defaultAdapterAsync());
    const Page page(adapter.get());
    QTRY_VERIFY(adapter->isValid());
    QTRY_VERIFY(isKnown(adapter.get()));
    page.power->click();
    QTRY_VERIFY(!isKnown(adapter.get()));
    page.letTimePass();
    QTRY_COMPARE(page.dialogs().size(), 1);
    QVERIFY(page.isOff());
}

void TestNfcSettingsView::asynchronousAnswerMayOutliveThePage()
{
    FakeDaemon daemon;
    daemon.hold(QStringLiteral("GetProperties"));
    daemon.start();
    const std::unique_ptr<NfcAdapter> adapter(NfcAdapter::defaultAdapterAsync());
    {
        const Page page(adapter.get());
        QTRY_VERIFY(daemon.members().contains(QStringLiteral("GetProperties")));
    }
    daemon.release(QStringLiteral("GetProperties"));
    QTRY_VERIFY(isKnown(adapter.get()));
}

QTEST_MAIN(TestNfcSettingsView)
#include "tst_nfcsettingsview.moc"
