// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QTest>

#include "catalogue.h"
#include "core/deliveries.h"
#include "core/questionqueue.h"
#include "fakeface.h"
#include "fakehandler.h"
#include "fakeohm.h"
#include "fakeservice.h"

using ConnUi::NdefMessageHandler;

namespace {

constexpr int longEnough = 20000; // milliseconds

const QDBusObjectPath tag(QStringLiteral("/tag"));

NdefMessageHandler viewer()
{
    return {QStringLiteral("viewer"), QStringLiteral("session"), QStringLiteral("org.example.Viewer"),
            QDBusObjectPath(QStringLiteral("/viewer"))};
}

NdefMessageHandler editor()
{
    return {QStringLiteral("editor"), QStringLiteral("session"), QStringLiteral("org.example.Editor"),
            QDBusObjectPath(QStringLiteral("/editor"))};
}

} // namespace

class TestDeliveries : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void handlerGetsIt();
    void quickHandlerIsNotTalkedAbout();
    void handlerThatTakesItsTimeIsShown();
    void userCanCloseWhatIsShown();
    void handlerThatHangsIsNamed();
    void handlerThatHangsIsNamedByTheDesktopBehindOtherWindows();
    void secondMessageWaitsForTheFirst();
    void otherHandlerDoesNotWait();

private:
    void deliver(const NdefMessageHandler &handler, const QByteArray &data);

    FakeOhm ohm;
    std::unique_ptr<FakeHandler> fake;
    std::unique_ptr<FakeFace> face;
    std::unique_ptr<QuestionQueue> queue;
    std::unique_ptr<Deliveries> deliveries;
    QList<QByteArray> handedOver;
};

void TestDeliveries::initTestCase()
{
    static const Catalogue catalogue;
    ohm.start();
}

void TestDeliveries::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    fake = std::make_unique<FakeHandler>();
    fake->start();
    face = std::make_unique<FakeFace>();
    queue = std::make_unique<QuestionQueue>(face.get());
    deliveries = std::make_unique<Deliveries>(queue.get());
    handedOver.clear();
}

void TestDeliveries::cleanup()
{
    deliveries.reset();
    queue.reset();
    fake.reset();
}

void TestDeliveries::deliver(const NdefMessageHandler &handler, const QByteArray &data)
{
    deliveries->deliver(
        handler, tag, data, [this, data] { handedOver.append(data); });
}

void TestDeliveries::handlerGetsIt()
{
    deliver(viewer(), "one");
    QVERIFY(handedOver.isEmpty());
    QTRY_COMPARE(handedOver, QList<QByteArray>{"one"});
    const FakeCall call = fake->calls(QStringLiteral("NDEFData")).constFirst();
    QCOMPARE(call.path, QStringLiteral("/viewer"));
    QCOMPARE(call.arguments.constLast().toByteArray(), QByteArray("one"));
}

void TestDeliveries::quickHandlerIsNotTalkedAbout()
{
    deliver(viewer(), "one");
    QTRY_COMPARE(handedOver.size(), 1);
    QVERIFY(face->history.isEmpty());
}

void TestDeliveries::handlerThatTakesItsTimeIsShown()
{
    fake->hold(QStringLiteral("NDEFData"));
    deliver(viewer(), "one");
    QTRY_COMPARE(face->title(), QStringLiteral("Opening with viewer…"));
    QVERIFY(handedOver.isEmpty());
    fake->release(QStringLiteral("NDEFData"));
    QTRY_VERIFY(!face->shown);
    QCOMPARE(handedOver.size(), 1);
    QCOMPARE(face->history.size(), 1);
}

void TestDeliveries::userCanCloseWhatIsShown()
{
    fake->hold(QStringLiteral("NDEFData"));
    deliver(viewer(), "one");
    QTRY_VERIFY(face->shown);
    face->answer(Answer::No);
    QVERIFY(!face->shown);
    fake->release(QStringLiteral("NDEFData"));
    QTRY_COMPARE(handedOver.size(), 1);
}

void TestDeliveries::handlerThatHangsIsNamed()
{
    fake->hold(QStringLiteral("NDEFData"));
    deliver(viewer(), "one");
    QTest::ignoreMessage(QtWarningMsg, "viewer does not answer");
    QTRY_COMPARE_WITH_TIMEOUT(face->title(), QStringLiteral("No answer"), longEnough);
    QCOMPARE(face->shown->notes,
             QStringList{QStringLiteral("viewer has not accepted the content of the tag.")});
    // The daemon does not wait any longer than the user.
    QCOMPARE(handedOver.size(), 1);
    fake->release(QStringLiteral("NDEFData"));
    deliver(viewer(), "two");
    QTRY_COMPARE(handedOver, (QList<QByteArray>{"one", "two"}));
}

void TestDeliveries::handlerThatHangsIsNamedByTheDesktopBehindOtherWindows()
{
    FakeService desktop(QDBusConnection::SessionBus, QStringLiteral("org.freedesktop.Notifications"));
    desktop.reply(QStringLiteral("Notify"), {7U});
    desktop.start();
    face->inFront = false;
    fake->hold(QStringLiteral("NDEFData"));
    deliver(viewer(), "one");
    QTest::ignoreMessage(QtWarningMsg, "viewer does not answer");
    QTRY_COMPARE_WITH_TIMEOUT(desktop.calls(QStringLiteral("Notify")).size(), 1, longEnough);
    const QVariantList shown = desktop.calls(QStringLiteral("Notify")).constFirst().arguments;
    QCOMPARE(shown.at(3).toString(), QStringLiteral("No answer"));
    QCOMPARE(shown.at(4).toString(), QStringLiteral("viewer has not accepted the content of the tag."));
    QVERIFY(!face->shown);
    QVERIFY(!face->history.contains(QStringLiteral("No answer")));
    fake->release(QStringLiteral("NDEFData"));
    deliver(viewer(), "two");
    QTRY_COMPARE(handedOver, (QList<QByteArray>{"one", "two"}));
}

void TestDeliveries::secondMessageWaitsForTheFirst()
{
    fake->hold(QStringLiteral("NDEFData"));
    deliver(viewer(), "one");
    deliver(viewer(), "two");
    QTRY_COMPARE(fake->calls(QStringLiteral("NDEFData")).size(), 1);
    QTRY_VERIFY(face->shown);
    QCOMPARE(fake->calls(QStringLiteral("NDEFData")).size(), 1);
    fake->release(QStringLiteral("NDEFData"));
    QTRY_COMPARE(handedOver, (QList<QByteArray>{"one", "two"}));
    QCOMPARE(fake->calls(QStringLiteral("NDEFData")).size(), 2);
}

void TestDeliveries::otherHandlerDoesNotWait()
{
    FakeHandler other(QDBusConnection::SessionBus, QStringLiteral("org.example.Editor"));
    other.start();
    fake->hold(QStringLiteral("NDEFData"));
    deliver(viewer(), "one");
    deliver(editor(), "two");
    QTRY_COMPARE(handedOver, QList<QByteArray>{"two"});
    fake->release(QStringLiteral("NDEFData"));
    QTRY_COMPARE(handedOver.size(), 2);
}

QTEST_GUILESS_MAIN(TestDeliveries)
#include "tst_deliveries.moc"
