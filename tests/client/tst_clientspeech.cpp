// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QApplication>
#include <QtTest>

#include <MWindow>

#include "catalogue.h"
#include "core/notices.h"
#include "screen/screenface.h"
#include "screenreader.h"

namespace {

const auto announcement = QStringLiteral("object:announcement");
const auto focused = QStringLiteral("object:state-changed:focused");
constexpr int polite = 1;

Question received()
{
    Question question = notice(qtTrId("qtn_nfc_received_tit"),
                               qtTrId("qtn_nfc_receive_text").arg(QStringLiteral("Anna's phone")));
    question.data = QStringLiteral("Holiday.jpeg");
    question.yes = qtTrId("qtn_nfc_tags_open");
    question.no = qtTrId("qtn_comm_close");
    return question;
}

} // namespace

// Listens to the client as a user does who does not see the screen.
class TestClientSpeech : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void finishedTransferIsHeard();
    void errorIsHeard();
    void waitingCountIsAnnouncedPolitely();

private:
    std::unique_ptr<Catalogue> texts;
    std::unique_ptr<ScreenReader> reader;
    std::unique_ptr<ScreenFace> face;
    std::unique_ptr<MWindow> window;
};

void TestClientSpeech::initTestCase()
{
    texts = std::make_unique<Catalogue>();
    reader = std::make_unique<ScreenReader>();
}

void TestClientSpeech::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    window = std::make_unique<MWindow>();
    window->show();
    window->activateWindow();
    QApplication::setActiveWindow(window.get());
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    face = std::make_unique<ScreenFace>();
    (void)reader->events();
}

void TestClientSpeech::cleanup()
{
    face.reset();
    window.reset();
}

void TestClientSpeech::cleanupTestCase()
{
    reader.reset();
    texts.reset();
}

void TestClientSpeech::finishedTransferIsHeard()
{
    const Question question = received();
    face->show(question);
    QVERIFY(reader->hears(focused, question.title));
    const SpokenNode tree = reader->tree();
    QCOMPARE(tree.find("dialog")->name, question.title);
    QVERIFY(tree.find("dialog")->description.contains(QStringLiteral("Holiday.jpeg")));
    QVERIFY(tree.find("dialog")->description.contains(QStringLiteral("Anna's phone")));
    QCOMPARE(tree.names("push button"), QStringList({question.yes, question.no}));
}

void TestClientSpeech::errorIsHeard()
{
    const Question question = unreadableTagNotice();
    face->show(question);
    QVERIFY(reader->hears(focused, question.title));
    QCOMPARE(reader->tree().find("dialog")->description, question.notes.join(QLatin1Char('\n')));
}

void TestClientSpeech::waitingCountIsAnnouncedPolitely()
{
    face->show(unreadableTagNotice());
    for (const int waiting : {2, 1}) {
        const QString count = qtTrId("qtn_nfc_waiting_more", waiting).arg(waiting);
        face->setWaiting(waiting);
        QVERIFY(reader->hears(announcement, count));
        const QList<SpokenEvent> events = reader->events();
        for (const SpokenEvent &event : events)
            if (event.type == announcement)
                QCOMPARE(event.detail, polite);
        // It can be found again.
        QVERIFY(reader->tree().names("label").contains(count));
    }
}

QTEST_MAIN(TestClientSpeech)
#include "tst_clientspeech.moc"
