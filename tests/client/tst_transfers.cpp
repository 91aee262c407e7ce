// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QTemporaryFile>
#include <QTest>

#include "catalogue.h"
#include "core/questionqueue.h"
#include "core/transfers.h"
#include "fakedaemon.h"
#include "fakeface.h"
#include "fakeservice.h"

namespace {

constexpr uint number = 3;
constexpr uint shownAs = 7; // the number that the desktop gives
const auto notifications = QStringLiteral("org.freedesktop.Notifications");
const auto notify = QStringLiteral("Notify");
const auto closeNotification = QStringLiteral("CloseNotification");
const auto completed = QStringLiteral("completed");
const auto canceled = QStringLiteral("canceled");
// Of Notify.
constexpr int replaces = 1;
constexpr int title = 3;
constexpr int text = 4;
constexpr int actions = 5;
constexpr int milliseconds = 7;

} // namespace

class TestTransfers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void fileThatIsPutAwayIsANotification();
    void pressedNotificationShowsTheSheetAgain();
    void otherNotificationsAreNobodysBusiness();
    void notificationGoesWithTheDaemon();
    void notificationGoesAlthoughTheDesktopIsSlow();
    void notificationGoesWhoseNumberHasJustCome();
    void endReplacesTheNotification_data();
    void endReplacesTheNotification();
    void endThatOutrunsTheDesktopReplacesTheNotification();
    void endIsANoticeWithoutADesktop();
    void desktopIsNotStarted();
    void nameIsNoMarkup_data();
    void nameIsNoMarkup();
    void receivedFileIsOpenedAfterUnlocking();
    void failureIsANoticeInFront();
    void failureIsANotificationBehindOtherWindows();
    void cancelingIsNoFailure();
    void numberThatIsUsedAgainEndsTheFileBefore();
    void failuresDoNotFillTheDesktop();

private:
    void announce(const QString &member, const QVariantList &arguments);
    void start(const QString &name = QStringLiteral("film.mkv"));
    void end(const QString &outcome, const QString &path = {});
    void putAway(const QString &name = QStringLiteral("film.mkv"));
    QVariantList shown(int calls = 1);
    void press(uint which);

    std::unique_ptr<FakeService> desktop;
    std::unique_ptr<FakeDaemon> daemon;
    std::unique_ptr<FakeFace> face;
    std::unique_ptr<QuestionQueue> queue;
    std::unique_ptr<Transfers> transfers;
};

void TestTransfers::initTestCase()
{
    static const Catalogue catalogue;
}

void TestTransfers::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    desktop = std::make_unique<FakeService>(QDBusConnection::SessionBus, notifications);
    desktop->reply(notify, {shownAs});
    desktop->reply(QStringLiteral("GetCapabilities"), {QStringList{QStringLiteral("actions")}});
    desktop->start();
    daemon = std::make_unique<FakeDaemon>();
    daemon->start();
    face = std::make_unique<FakeFace>();
    face->inFront = false;
    queue = std::make_unique<QuestionQueue>(face.get());
    transfers = std::make_unique<Transfers>(FakeDaemon::adapterPath(), queue.get());
}

void TestTransfers::cleanup()
{
    transfers.reset();
    queue.reset();
    // A reply that is here closes its notification, and not one of the next test's desktop.
    QCoreApplication::processEvents();
    face.reset();
    daemon.reset();
    desktop.reset();
}

void TestTransfers::announce(const QString &member, const QVariantList &arguments)
{
    daemon->emitSignal(FakeDaemon::adapterPath(), QStringLiteral("com.tavix.nfc.Transfers"), member,
                       arguments);
}

void TestTransfers::start(const QString &name)
{
    announce(QStringLiteral("TransferStarted"), {number, QStringLiteral("Ada"), name, quint64(100)});
    QTRY_VERIFY(face->shown);
}

void TestTransfers::end(const QString &outcome, const QString &path)
{
    announce(QStringLiteral("TransferEnded"), {number, outcome, path});
}

void TestTransfers::putAway(const QString &name)
{
    start(name);
    face->answer(Answer::Yes);
}

// Returns the arguments of the last call, once the desktop has answered it.
QVariantList TestTransfers::shown(int calls)
{
    if (!QTest::qWaitFor([&] { return desktop->calls(notify).size() == calls; }))
        return {};
    // Answered before that question was.
    QCoreApplication::processEvents();
    return desktop->calls(notify).constLast().arguments;
}

void TestTransfers::press(uint which)
{
    desktop->emitSignal(QStringLiteral("/org/freedesktop/Notifications"), notifications,
                        QStringLiteral("ActionInvoked"), {which, QStringLiteral("default")});
}

void TestTransfers::fileThatIsPutAwayIsANotification()
{
    putAway();
    const QVariantList arguments = shown();
    QCOMPARE(arguments.value(title).toString(), QStringLiteral("Receiving file"));
    QCOMPARE(arguments.value(text).toString(), QStringLiteral("From Ada\nfilm.mkv"));
    QCOMPARE(arguments.value(actions).toStringList(),
             (QStringList{QStringLiteral("default"), QStringLiteral("Show"), QStringLiteral("grant"),
                          QStringLiteral("Show")}));
    QCOMPARE(arguments.value(milliseconds).toInt(), 0);
}

void TestTransfers::pressedNotificationShowsTheSheetAgain()
{
    putAway();
    QVERIFY(!shown().isEmpty());
    QVERIFY(!face->shown);
    press(shownAs);
    QTRY_VERIFY(face->shown);
    QCOMPARE(face->shown->kind, Question::Receiving);
    QCOMPARE(transfers->hidden(), 0U);
    QTRY_COMPARE(desktop->calls(closeNotification).size(), 1);
    QCOMPARE(desktop->calls(closeNotification).constFirst().arguments, QVariantList{shownAs});
}

void TestTransfers::otherNotificationsAreNobodysBusiness()
{
    putAway();
    QVERIFY(!shown().isEmpty());
    press(shownAs + 1);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QVERIFY(!face->shown);
}

void TestTransfers::notificationGoesWithTheDaemon()
{
    putAway();
    QVERIFY(!shown().isEmpty());
    transfers.reset();
    QTRY_COMPARE(desktop->calls(closeNotification).size(), 1);
}

void TestTransfers::notificationGoesAlthoughTheDesktopIsSlow()
{
    desktop->hold(notify);
    putAway();
    QVERIFY(!shown().isEmpty());
    transfers->showHidden();
    desktop->release(notify);
    QTRY_COMPARE(desktop->calls(closeNotification).size(), 1);
    QCOMPARE(desktop->calls(closeNotification).constFirst().arguments, QVariantList{shownAs});
}

void TestTransfers::notificationGoesWhoseNumberHasJustCome()
{
    desktop->hold(notify);
    putAway();
    QVERIFY(!shown().isEmpty());
    // The reply is here, but no event was processed since.
    desktop->release(notify);
    transfers.reset();
    QTRY_COMPARE(desktop->calls(closeNotification).size(), 1);
    QCOMPARE(desktop->calls(closeNotification).constFirst().arguments, QVariantList{shownAs});
}

void TestTransfers::endReplacesTheNotification_data()
{
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<bool>("isKept");
    QTest::addColumn<QString>("told");
    QTest::newRow("received") << completed << true << QStringLiteral("File received");
    QTest::newRow("received and gone") << completed << false << QStringLiteral("File received");
    QTest::newRow("failed") << canceled << false << QStringLiteral("File not received");
}

void TestTransfers::endReplacesTheNotification()
{
    QFETCH(QString, outcome);
    QFETCH(bool, isKept);
    QFETCH(QString, told);
    QTemporaryFile file;
    QVERIFY(file.open());
    putAway();
    QVERIFY(!shown().isEmpty());
    end(outcome, isKept ? file.fileName() : QString());
    const QVariantList arguments = shown(2);
    QCOMPARE(arguments.value(replaces).toUInt(), shownAs);
    QCOMPARE(arguments.value(title).toString(), told);
    QCOMPARE(arguments.value(text).toString(), QStringLiteral("From Ada\nfilm.mkv"));
    QCOMPARE(arguments.value(actions).toStringList().contains(QStringLiteral("Open")), isKept);
    QCOMPARE(arguments.value(milliseconds).toInt(), -1);
    QVERIFY(!face->shown);
    QCOMPARE(desktop->calls(closeNotification).size(), 0);
}

void TestTransfers::endThatOutrunsTheDesktopReplacesTheNotification()
{
    desktop->hold(notify);
    putAway();
    QVERIFY(!shown().isEmpty());
    end(completed);
    QTRY_COMPARE(transfers->hidden(), 0U);
    desktop->release(notify);
    QCOMPARE(shown(2).value(replaces).toUInt(), shownAs);
}

void TestTransfers::endIsANoticeWithoutADesktop()
{
    desktop->stop();
    putAway();
    end(completed);
    QTRY_COMPARE(face->title(), QStringLiteral("File received"));
}

void TestTransfers::desktopIsNotStarted()
{
    desktop->kill();
    desktop->makeActivatable();
    putAway();
    end(completed);
    QTRY_COMPARE(face->title(), QStringLiteral("File received"));
    QVERIFY(!desktop->isOnBus());
}

void TestTransfers::nameIsNoMarkup_data()
{
    QTest::addColumn<QString>("capability");
    QTest::addColumn<QString>("shownName");
    QTest::newRow("markup") << QStringLiteral("body-markup") << QStringLiteral("&lt;b&gt;a&amp;b.txt");
    QTest::newRow("plain") << QStringLiteral("body") << QStringLiteral("<b>a&b.txt");
}

void TestTransfers::nameIsNoMarkup()
{
    QFETCH(QString, capability);
    QFETCH(QString, shownName);
    desktop->reply(QStringLiteral("GetCapabilities"), {QStringList{capability}});
    putAway(QStringLiteral("<b>a&b.txt"));
    QCOMPARE(shown().value(text).toString(), QLatin1String("From Ada\n") + shownName);
}

void TestTransfers::receivedFileIsOpenedAfterUnlocking()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    putAway();
    QVERIFY(!shown().isEmpty());
    end(completed, file.fileName());
    QVERIFY(!shown(2).isEmpty());
    queue->setPaused(true);
    press(shownAs);
    QTRY_COMPARE(desktop->calls(closeNotification).size(), 1);
    QVERIFY(!face->shown);
    queue->setPaused(false);
    QCOMPARE(face->title(), QStringLiteral("File received"));
}

void TestTransfers::failureIsANoticeInFront()
{
    face->inFront = true;
    start();
    end(canceled);
    QTRY_COMPARE(face->title(), QStringLiteral("File not received"));
    QCOMPARE(desktop->calls(notify).size(), 0);
}

void TestTransfers::failureIsANotificationBehindOtherWindows()
{
    start();
    end(canceled);
    QCOMPARE(shown().value(title).toString(), QStringLiteral("File not received"));
    QVERIFY(!face->shown);
}

void TestTransfers::cancelingIsNoFailure()
{
    face->inFront = true;
    start();
    face->answer(Answer::No);
    QTRY_COMPARE(daemon->calls(QStringLiteral("CancelTransfer")).size(), 1);
    end(canceled);
    // The next one comes after it.
    start(QStringLiteral("other.mkv"));
    QCOMPARE(desktop->calls(notify).size(), 0);
    QVERIFY(!face->history.contains(QStringLiteral("File not received")));
}

void TestTransfers::numberThatIsUsedAgainEndsTheFileBefore()
{
    face->inFront = true;
    start();
    start(QStringLiteral("other.mkv"));
    QTRY_COMPARE(face->title(), QStringLiteral("File not received"));
    QCOMPARE(face->shown->data, QStringLiteral("film.mkv"));
    face->answer(Answer::No);
    QCOMPARE(face->shown->data, QStringLiteral("other.mkv"));
    end(canceled);
    QTRY_COMPARE(face->title(), QStringLiteral("File not received"));
    face->answer(Answer::No);
    // The sheet of the one before is not left.
    QVERIFY(!face->shown);
}

void TestTransfers::failuresDoNotFillTheDesktop()
{
    for (int failures = 1; failures <= QuestionQueue::capacity; ++failures) {
        start();
        end(canceled);
        QVERIFY(!shown(failures).isEmpty());
    }
    QCOMPARE(desktop->calls(closeNotification).size(), 0);
    start();
    end(canceled);
    QTRY_COMPARE(desktop->calls(closeNotification).size(), 1);
}

QTEST_GUILESS_MAIN(TestTransfers)
#include "tst_transfers.moc"
