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
    void finishedTransferInterruptsNobody();
    void ourSentencesAreHeardFirst_data();
    void ourSentencesAreHeardFirst();
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
    failOnWarningsExceptOfThingsThatAreGone();
    window = std::make_unique<MWindow>();
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    reader->listen();
    face = std::make_unique<ScreenFace>();
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

// The user is in another window, and may be listening to something.
void TestClientSpeech::finishedTransferInterruptsNobody()
{
    QWidget other;
    other.show();
    other.activateWindow();
    QTRY_VERIFY(!window->isActiveWindow());
    (void)reader->events();
    const Question question = received();
    face->show(question);
    const QString told =
        QStringList{question.title, question.notes.constFirst(), question.data}.join(QLatin1Char('\n'));
    QVERIFY(reader->hears(announcement, told));
    const QList<SpokenEvent> events = reader->events();
    for (const SpokenEvent &event : events)
        if (event.type == announcement)
            QCOMPARE(event.detail, polite);
}

void TestClientSpeech::ourSentencesAreHeardFirst_data()
{
    QTest::addColumn<Question::Kind>("kind");
    QTest::newRow("text") << Question::Text;
    QTest::newRow("sharing") << Question::Sharing;
}

// As they are seen: a long text of somebody else does not keep the user from them.
void TestClientSpeech::ourSentencesAreHeardFirst()
{
    QFETCH(Question::Kind, kind);
    Question question;
    question.kind = kind;
    question.notes.append(QStringLiteral("Our sentence"));
    question.data = QStringLiteral("Their text");
    question.resources.append(QStringLiteral("/their.text"));
    question.yes = qtTrId("qtn_comm_send");
    question.no = qtTrId("qtn_comm_cancel");
    face->show(question);
    QVERIFY(reader->hears(focused, reader->tree().find("dialog")->name));
    const QString description = reader->tree().find("dialog")->description;
    QVERIFY2(description.startsWith(QStringLiteral("Our sentence\n")), qUtf8Printable(description));
    QVERIFY2(description.contains(QStringLiteral("Their text")), qUtf8Printable(description));
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
