// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <atomic>
#include <chrono>
#include <memory>
#include <winscard.h>

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include "daemon/pcsc/cardreaders.h"
#include "daemon/tags/cardcommand.h"
#include "daemon/tags/exchange.h"
#include "failingpcscd.h"
#include "heldtag.h"
#include "otherprogram.h"
#include "pcscdprocess.h"
#include "readers.h"
#include "virtualtype2.h"

using namespace std::chrono_literals;

namespace {

const QString firstReader = QStringLiteral("Virtual reader 0 00 00");
const QString secondReader = QStringLiteral("Virtual reader 1 01 00");

/** One talk: asks for the card's UID, and keeps the answer. */
class UidTalk
{
public:
    Reader::Talk talk()
    {
        return [result = result](Exchange &card) {
            result->answer = card.transceive(CardCommand::uid()).value_or(QByteArray());
            result->isOver = true;
        };
    }

    bool isOver() const { return result->isOver; }
    QByteArray answer() const { return result->answer; }

private:
    struct Result
    {
        QByteArray answer;
        std::atomic<bool> isOver = false;
    };
    const std::shared_ptr<Result> result = std::make_shared<Result>();
};

} // namespace

class TestCardReaders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void readersAreFound();
    void cardComesWithItsAnswerToReset();
    void cardThatLeavesIsMissed();
    void cardsInQuickSuccessionAreAllSeen();
    void cardThatLiesThereAtFirstIsTalkedTo();

    void cardIsTalkedTo();
    void cardsOnTwoReadersAreTalkedToAtOnce();
    void cardThatLeavesWhileTalkedToIsGone();
    void stoppedTalkSendsNothingMore();
    void cardThatHangsIsGivenUp();
    void nobodyWaitsForACardThatHangs();

    void cardOfAnotherProgramIsTalkedToLater_data();
    void cardOfAnotherProgramIsTalkedToLater();

    void cardIsSharedAndLeftWithAReset();

    void readersThatAreLetGoAreFoundAgain();
    void pulledReaderIsNoReader();
    void pcscdThatComesIsNotWaitedFor_data();
    void pcscdThatComesIsNotWaitedFor();
    void deathThatResetsAConnectionIsNoRefusal();
    void deathOfPcscdIsToldOnce();

private:
    void startReaders();

    const QByteArray uid = QByteArray::fromHex("04a1b2c3d4e5f69000");
    VirtualType2 tag = VirtualType2::sticker("");
    VirtualType2 otherTag = VirtualType2::sticker("");
    std::unique_ptr<CardReaders> readers;
};

void TestCardReaders::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    Readers::waitUntilEmpty();
    readers = std::make_unique<CardReaders>();
}

void TestCardReaders::cleanup()
{
    readers.reset();
}

void TestCardReaders::startReaders()
{
    readers->start();
    QTRY_COMPARE_WITH_TIMEOUT(readers->names(), (QStringList{firstReader, secondReader}), Readers::patience);
}

void TestCardReaders::readersAreFound()
{
    QCOMPARE(readers->backend(), CardReaders::Backend::Off);
    QCOMPARE(readers->names(), QStringList());
    startReaders();
    QCOMPARE(readers->backend(), CardReaders::Backend::Ready);
}

void TestCardReaders::cardComesWithItsAnswerToReset()
{
    startReaders();
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    const HeldTag held(tag, 1);
    QTRY_COMPARE_WITH_TIMEOUT(came, (QList<QVariantList>{{secondReader, tag.atr()}}), Readers::patience);
}

void TestCardReaders::cardThatLeavesIsMissed()
{
    startReaders();
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    QSignalSpy left(readers.get(), &CardReaders::cardLeft);
    {
        const HeldTag held(tag);
        QTRY_COMPARE_WITH_TIMEOUT(came.size(), 1, Readers::patience);
        QCOMPARE(left.size(), 0);
    }
    QTRY_COMPARE_WITH_TIMEOUT(left, (QList<QVariantList>{{firstReader}}), Readers::patience);
}

void TestCardReaders::cardsInQuickSuccessionAreAllSeen()
{
    startReaders();
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    QSignalSpy left(readers.get(), &CardReaders::cardLeft);
    constexpr int cards = 20;
    auto held = std::make_unique<HeldTag>(tag);
    QTRY_COMPARE_WITH_TIMEOUT(came.size(), 1, Readers::patience);
    for (int i = 2; i <= cards; ++i) {
        // The one waits at the door when the other leaves.
        auto next = std::make_unique<HeldTag>(tag);
        held = std::move(next);
        QTRY_COMPARE_WITH_TIMEOUT(came.size(), i, Readers::patience);
        QCOMPARE(left.size(), i - 1);
    }
}

void TestCardReaders::cardThatLiesThereAtFirstIsTalkedTo()
{
    const HeldTag held(tag);
    Readers::waitForCard(0);
    UidTalk talk;
    connect(readers.get(), &CardReaders::cardCame, this,
            [&](const QString &reader) { readers->talk(reader, talk.talk()); });
    readers->start();
    QTRY_COMPARE_WITH_TIMEOUT(talk.answer(), uid, Readers::patience);
}

void TestCardReaders::cardIsTalkedTo()
{
    startReaders();
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    HeldTag held(tag);
    QVERIFY(came.wait(Readers::patience));
    UidTalk talk;
    readers->talk(firstReader, talk.talk());
    QTRY_VERIFY_WITH_TIMEOUT(talk.isOver(), Readers::patience);
    QCOMPARE(talk.answer(), uid);
    QCOMPARE(held.commands(), 1);
}

void TestCardReaders::cardsOnTwoReadersAreTalkedToAtOnce()
{
    startReaders();
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    const HeldTag slow(tag, {-1, 0, 3s}, 0);
    const HeldTag quick(otherTag, 1);
    QTRY_COMPARE_WITH_TIMEOUT(came.size(), 2, Readers::patience);
    UidTalk slowTalk;
    UidTalk quickTalk;
    readers->talk(firstReader, slowTalk.talk());
    QTRY_COMPARE_WITH_TIMEOUT(slow.commands(), 1, Readers::patience);
    readers->talk(secondReader, quickTalk.talk());
    QTRY_VERIFY_WITH_TIMEOUT(quickTalk.isOver(), Readers::patience);
    QCOMPARE(quickTalk.answer(), uid);
    QVERIFY(!slowTalk.isOver());
    QTRY_VERIFY_WITH_TIMEOUT(slowTalk.isOver(), Readers::patience);
    QCOMPARE(slowTalk.answer(), uid);
}

void TestCardReaders::cardThatLeavesWhileTalkedToIsGone()
{
    startReaders();
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    QSignalSpy left(readers.get(), &CardReaders::cardLeft);
    UidTalk talk;
    {
        const HeldTag held(tag, {0, -1, {}});
        QVERIFY(came.wait(Readers::patience));
        readers->talk(firstReader, talk.talk());
        QTRY_VERIFY_WITH_TIMEOUT(talk.isOver(), Readers::patience);
        QCOMPARE(talk.answer(), QByteArray());
    }
    QTRY_COMPARE_WITH_TIMEOUT(left.size(), 1, Readers::patience);

    const HeldTag held(tag);
    QTRY_COMPARE_WITH_TIMEOUT(came.size(), 2, Readers::patience);
    UidTalk next;
    readers->talk(firstReader, next.talk());
    QTRY_COMPARE_WITH_TIMEOUT(next.answer(), uid, Readers::patience);
}

void TestCardReaders::stoppedTalkSendsNothingMore()
{
    startReaders();
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    HeldTag held(tag, {-1, 0, 500ms});
    QVERIFY(came.wait(Readers::patience));
    std::atomic<int> answers = 0;
    std::atomic<bool> isOver = false;
    readers->talk(firstReader, [&](Exchange &card) {
        while (card.transceive(CardCommand::uid()))
            ++answers;
        isOver = true;
    });
    QTRY_COMPARE_WITH_TIMEOUT(held.commands(), 1, Readers::patience);
    readers->endTalk(firstReader);
    QTRY_VERIFY_WITH_TIMEOUT(isOver.load(), Readers::patience);
    QCOMPARE(answers.load(), 0);
    QCOMPARE(held.commands(), 1);
}

void TestCardReaders::cardThatHangsIsGivenUp()
{
    startReaders();
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    QSignalSpy gaveUp(readers.get(), &CardReaders::gaveUp);
    auto held = std::make_unique<HeldTag>(tag, HeldTag::Fate{-1, 0, 1min});
    QVERIFY(came.wait(Readers::patience));
    UidTalk talk;
    QElapsedTimer time;
    time.start();
    readers->talk(firstReader, talk.talk());
    QTRY_COMPARE_WITH_TIMEOUT(gaveUp.size(), 1, 20000);
    const qint64 patience = time.elapsed();
    QVERIFY2(patience >= 5000, qPrintable(QString::number(patience)));
    QVERIFY(!talk.isOver());

    held.reset();
    QTRY_VERIFY_WITH_TIMEOUT(talk.isOver(), Readers::patience);
    QCOMPARE(talk.answer(), QByteArray());
    held = std::make_unique<HeldTag>(tag);
    QTRY_COMPARE_WITH_TIMEOUT(came.size(), 2, Readers::patience);
    UidTalk next;
    readers->talk(firstReader, next.talk());
    QTRY_COMPARE_WITH_TIMEOUT(next.answer(), uid, Readers::patience);
    QCOMPARE(gaveUp.size(), 1);
}

void TestCardReaders::nobodyWaitsForACardThatHangs()
{
    startReaders();
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    const HeldTag held(tag, {-1, 0, 4s});
    QVERIFY(came.wait(Readers::patience));
    UidTalk talk;
    readers->talk(firstReader, talk.talk());
    QTRY_COMPARE_WITH_TIMEOUT(held.commands(), 1, Readers::patience);
    readers.reset();
    QVERIFY(!talk.isOver());
    QTRY_VERIFY_WITH_TIMEOUT(talk.isOver(), Readers::patience);
    QCOMPARE(talk.answer(), QByteArray());
}

void TestCardReaders::cardOfAnotherProgramIsTalkedToLater_data()
{
    QTest::addColumn<int>("how");
    QTest::newRow("exclusive") << int(OtherProgram::Exclusive);
    QTest::newRow("in a transaction") << int(OtherProgram::InTransaction);
}

void TestCardReaders::cardOfAnotherProgramIsTalkedToLater()
{
    QFETCH(int, how);
    startReaders();
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    HeldTag held(tag);
    QVERIFY(came.wait(Readers::patience));
    auto other = std::make_unique<OtherProgram>(OtherProgram::How(how));
    UidTalk talk;
    readers->talk(firstReader, talk.talk());
    // Longer than one try takes.
    QTest::qWait(6000);
    QVERIFY(!talk.isOver());
    QCOMPARE(held.commands(), 0);
    other.reset();
    QTRY_VERIFY_WITH_TIMEOUT(talk.isOver(), 1500);
    QCOMPARE(talk.answer(), uid);
}

void TestCardReaders::cardIsSharedAndLeftWithAReset()
{
    startReaders();
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    const HeldTag held(tag);
    QVERIFY(came.wait(Readers::patience));
    // It has a connection, which an exclusive one would not be made beside.
    const OtherProgram other(OtherProgram::Sharing);
    UidTalk talk;
    readers->talk(firstReader, talk.talk());
    QTRY_VERIFY_WITH_TIMEOUT(talk.isOver(), Readers::patience);
    QCOMPARE(talk.answer(), uid);
    QTRY_VERIFY_WITH_TIMEOUT(other.findsAReset(), Readers::patience);
}

void TestCardReaders::readersThatAreLetGoAreFoundAgain()
{
    const HeldTag held(tag);
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    QSignalSpy left(readers.get(), &CardReaders::cardLeft);
    startReaders();
    QTRY_COMPARE_WITH_TIMEOUT(came.size(), 1, Readers::patience);
    readers->stop();
    QCOMPARE(left.size(), 1);
    QCOMPARE(readers->names(), QStringList());
    QCOMPARE(readers->backend(), CardReaders::Backend::Off);
    startReaders();
    QTRY_COMPARE_WITH_TIMEOUT(came.size(), 2, Readers::patience);
}

void TestCardReaders::pulledReaderIsNoReader()
{
    startReaders();
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    QSignalSpy left(readers.get(), &CardReaders::cardLeft);
    auto held = std::make_unique<HeldTag>(tag);
    QVERIFY(came.wait(Readers::patience));
    auto pulled = std::make_unique<PulledReader>();
    held.reset();
    QTRY_COMPARE_WITH_TIMEOUT(readers->names(), QStringList{secondReader}, Readers::patience);
    QCOMPARE(left.size(), 1);
    auto other = std::make_unique<PulledReader>(1);
    QTRY_COMPARE_WITH_TIMEOUT(readers->names(), QStringList(), Readers::patience);
    other.reset();
    QTRY_COMPARE_WITH_TIMEOUT(readers->names(), QStringList{secondReader}, Readers::patience);
    pulled.reset();
    QTRY_COMPARE_WITH_TIMEOUT(readers->names(), (QStringList{firstReader, secondReader}), Readers::patience);
    held = std::make_unique<HeldTag>(tag);
    QTRY_COMPARE_WITH_TIMEOUT(came.size(), 2, Readers::patience);
}

void TestCardReaders::pcscdThatComesIsNotWaitedFor_data()
{
    QTest::addColumn<bool>("folderGoesToo");
    QTest::addColumn<bool>("folderComesBefore");
    QTest::newRow("its socket comes") << false << false;
    QTest::newRow("its folder comes") << true << false;
    QTest::newRow("its folder comes, and its socket later") << true << true;
}

void TestCardReaders::pcscdThatComesIsNotWaitedFor()
{
    QFETCH(bool, folderGoesToo);
    QFETCH(bool, folderComesBefore);
    constexpr qint64 hour = 3600000; // ms
    readers = std::make_unique<CardReaders>(hour);
    startReaders();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^pcscd cannot be used: .+")));
    PcscdProcess::die();
    if (folderGoesToo)
        PcscdProcess::loseFolder();
    QTRY_COMPARE_WITH_TIMEOUT(readers->backend(), CardReaders::Backend::Absent, Readers::patience);
    if (folderComesBefore) {
        PcscdProcess::makeFolder();
        // Longer than a try takes.
        QTest::qWait(500);
        const FailingPcscd refusing(FailingPcscd::EstablishContext, LONG(SCARD_W_SECURITY_VIOLATION));
        QTRY_VERIFY_WITH_TIMEOUT(refusing.failures() > 0, Readers::patience);
    }
    PcscdProcess::come();
    QTRY_COMPARE_WITH_TIMEOUT(readers->names().size(), 2, Readers::patience);
}

void TestCardReaders::deathThatResetsAConnectionIsNoRefusal()
{
    constexpr qint64 hour = 3600000; // ms
    readers = std::make_unique<CardReaders>(hour);
    startReaders();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^pcscd cannot be used: .+")));
    PcscdProcess::send(SIGSTOP);
    // Longer than the list of readers is waited for: what asks for it again is never read.
    QTest::qWait(1500);
    PcscdProcess::die();
    QTRY_COMPARE_WITH_TIMEOUT(readers->backend(), CardReaders::Backend::Absent, Readers::patience);
    PcscdProcess::come();
    QTRY_COMPARE_WITH_TIMEOUT(readers->names().size(), 2, Readers::patience);
}

void TestCardReaders::deathOfPcscdIsToldOnce()
{
    startReaders();
    QSignalSpy left(readers.get(), &CardReaders::cardLeft);
    QSignalSpy came(readers.get(), &CardReaders::cardCame);
    auto held = std::make_unique<HeldTag>(tag);
    QVERIFY(came.wait(Readers::patience));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^pcscd cannot be used: .+")));
    PcscdProcess::die();
    QTRY_COMPARE_WITH_TIMEOUT(readers->backend(), CardReaders::Backend::Absent, Readers::patience);
    QCOMPARE(readers->names(), QStringList());
    QCOMPARE(left.size(), 1);
    // Several tries, none of which is worth a word.
    QTest::qWait(2000);
    held.reset();
    PcscdProcess::come();
    QTRY_COMPARE_WITH_TIMEOUT(readers->backend(), CardReaders::Backend::Ready, Readers::patience);
    QTRY_COMPARE_WITH_TIMEOUT(readers->names().size(), 2, Readers::patience);
    const HeldTag next(tag);
    QTRY_COMPARE_WITH_TIMEOUT(came.size(), 2, Readers::patience);
    PcscdProcess::die();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^pcscd cannot be used: .+")));
    QTRY_COMPARE_WITH_TIMEOUT(readers->backend(), CardReaders::Backend::Absent, Readers::patience);
}

QTEST_GUILESS_MAIN(TestCardReaders)

#include "tst_cardreaders.moc"
