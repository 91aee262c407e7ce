// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QRegularExpression>
#include <QTest>

#include "daemon/tags/cardcommand.h"
#include "daemon/tags/tagaccess.h"
#include "tagexchange.h"
#include "virtualtype2.h"
#include "virtualtype4.h"

class TestTagAccess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void tagsOfBothTypesAreRead();
    void cardsOfOthersGetNoCommand_data();
    void cardsOfOthersGetNoCommand();
    void unrecognizedCardIsAskedForItsUidAndPageThreeOnly();
    void unrecognizedTagIsRead();
    void uidIsReported();
    void randomUidIsNotReported();
    void tagWithoutUidIsRead();
    void otherBytesThanAMessageAreMalformed();
    void messageThatTakesTooLongIsUnsupported();

    void writtenMessageIsReadBack_data();
    void writtenMessageIsReadBack();
    void tagThatKeepsSomethingElseHasRefused();
    void tagThatLeavesBeforeItIsReadBackIsTorn();
    void unrecognizedTagIsWritten();
    void largestMessageIsWrittenWithinTheLimits();

private:
    TagReading read(TagExchange &exchange, CardKind kind)
    {
        return readTag(
            exchange, kind, [this] { return now++; });
    }

    TagStatus write(TagExchange &exchange, CardKind kind, const QByteArray &message)
    {
        return writeTag(
                   exchange, kind, message, [this] { return now++; })
            .contents.status;
    }

    qint64 now = 0;
    const QByteArray link = QByteArray::fromHex("d1010455036f7267");
    const QByteArray text = QByteArray::fromHex("d10105540265654869");
};

void TestTagAccess::tagsOfBothTypesAreRead()
{
    VirtualType2 type2 = VirtualType2::sticker(link);
    TagExchange first(type2);
    const TagReading second = read(first, CardKind::Type2);
    QCOMPARE(second.contents.status, TagStatus::Done);
    QCOMPARE(second.contents.message, link);

    VirtualType4 type4 = VirtualType4::holding(link);
    TagExchange fourth(type4);
    QCOMPARE(read(fourth, CardKind::Type4).contents.message, link);
}

void TestTagAccess::cardsOfOthersGetNoCommand_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("foreign") << int(CardKind::Foreign);
    QTest::newRow("unsupported") << int(CardKind::Unsupported);
}

void TestTagAccess::cardsOfOthersGetNoCommand()
{
    QFETCH(int, kind);
    VirtualType2 tag = VirtualType2::sticker(link);
    TagExchange exchange(tag);
    QCOMPARE(read(exchange, CardKind(kind)).contents.status, TagStatus::Unsupported);
    QCOMPARE(write(exchange, CardKind(kind), link), TagStatus::Unsupported);
    QCOMPARE(exchange.commands, QByteArrayList());
}

void TestTagAccess::unrecognizedCardIsAskedForItsUidAndPageThreeOnly()
{
    VirtualType4 card = VirtualType4::holding(link);
    TagExchange exchange(card);
    QCOMPARE(read(exchange, CardKind::Untold).kind, CardKind::Foreign);
    const QByteArrayList asked = {CardCommand::uid(), CardCommand::readPages(3)};
    QCOMPARE(exchange.commands, asked);
    QCOMPARE(write(exchange, CardKind::Untold, link), TagStatus::Unsupported);
    QCOMPARE(exchange.commands, asked + asked);
}

void TestTagAccess::unrecognizedTagIsRead()
{
    VirtualType2 tag = VirtualType2::sticker(link);
    TagExchange exchange(tag);
    const TagReading reading = read(exchange, CardKind::Untold);
    QCOMPARE(reading.kind, CardKind::Type2);
    QCOMPARE(reading.contents.message, link);
}

void TestTagAccess::uidIsReported()
{
    VirtualType2 tag = VirtualType2::sticker(link);
    TagExchange exchange(tag);
    QCOMPARE(read(exchange, CardKind::Type2).uid, QByteArray::fromHex("04a1b2c3d4e5f6"));
}

void TestTagAccess::randomUidIsNotReported()
{
    VirtualType2 tag = VirtualType2::sticker(link);
    tag.setUid(QByteArray::fromHex("08010203"));
    TagExchange exchange(tag);
    const TagReading reading = read(exchange, CardKind::Type2);
    QCOMPARE(reading.uid, QByteArray());
    QCOMPARE(reading.contents.message, link);
}

void TestTagAccess::tagWithoutUidIsRead()
{
    VirtualType2 tag = VirtualType2::sticker(link);
    for (const char *answer : {"6a81", "9000", "90"}) {
        TagExchange exchange(tag);
        exchange.lie = [answer](int number, const QByteArray &, const QByteArray &truth) {
            return number == 0 ? QByteArray::fromHex(answer) : truth;
        };
        const TagReading reading = read(exchange, CardKind::Type2);
        QCOMPARE(reading.uid, QByteArray());
        QCOMPARE(reading.contents.message, link);
    }
}

void TestTagAccess::otherBytesThanAMessageAreMalformed()
{
    VirtualType2 tag = VirtualType2::sticker("what is this?");
    TagExchange exchange(tag);
    const TagReading reading = read(exchange, CardKind::Type2);
    QCOMPARE(reading.contents.status, TagStatus::Malformed);
    QCOMPARE(reading.contents.message, QByteArray());
}

void TestTagAccess::messageThatTakesTooLongIsUnsupported()
{
    const QByteArray message = QByteArray::fromHex("c10100001f4054") + QByteArray(8000, 'a');
    VirtualType4 tag = VirtualType4::holding(message, 9000, 15);
    TagExchange exchange(tag);
    QCOMPARE(read(exchange, CardKind::Type4).contents.status, TagStatus::Unsupported);
    QCOMPARE(exchange.commands.size(), 300);
}

void TestTagAccess::writtenMessageIsReadBack_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("type 2") << int(CardKind::Type2);
    QTest::newRow("type 4") << int(CardKind::Type4);
}

void TestTagAccess::writtenMessageIsReadBack()
{
    QFETCH(int, kind);
    VirtualType2 type2 = VirtualType2::sticker(link);
    VirtualType4 type4 = VirtualType4::holding(link);
    VirtualTag &tag = CardKind(kind) == CardKind::Type2 ? static_cast<VirtualTag &>(type2) : type4;
    TagExchange writing(tag);
    QCOMPARE(write(writing, CardKind(kind), text), TagStatus::Done);
    TagExchange reading(tag);
    QCOMPARE(read(reading, CardKind(kind)).contents.message, text);
    QCOMPARE(writing.commands.last(), reading.commands.last());
    const TagReading again = writeTag(writing, CardKind(kind), text, [this] { return now++; });
    QCOMPARE(again.contents.message, text);
    QVERIFY(!again.uid.isEmpty());
}

void TestTagAccess::tagThatKeepsSomethingElseHasRefused()
{
    VirtualType2 tag = VirtualType2::sticker(link);
    TagExchange exchange(tag);
    exchange.lie = [&tag, this](int, const QByteArray &command, const QByteArray &answer) {
        if (command.startsWith(QByteArray::fromHex("ffd6")))
            tag.memory = VirtualType2::sticker(link).memory;
        return answer;
    };
    QCOMPARE(write(exchange, CardKind::Type2, text), TagStatus::Refused);
}

void TestTagAccess::tagThatLeavesBeforeItIsReadBackIsTorn()
{
    VirtualType2 tag = VirtualType2::sticker(link);
    TagExchange whole(tag);
    QCOMPARE(write(whole, CardKind::Type2, text), TagStatus::Done);
    for (int i = 0; i < whole.commands.size(); ++i) {
        tag = VirtualType2::sticker(link);
        TagExchange exchange(tag);
        exchange.leavesAt = i;
        QCOMPARE(write(exchange, CardKind::Type2, text),
                 i < whole.firstWrite() ? TagStatus::Gone : TagStatus::Torn);
        TagExchange next(tag);
        const TagContents left = read(next, CardKind::Type2).contents;
        QVERIFY(left.status == TagStatus::Empty || left.message == link || left.message == text);
    }
}

void TestTagAccess::unrecognizedTagIsWritten()
{
    VirtualType2 tag = VirtualType2::sticker(link);
    TagExchange exchange(tag);
    QCOMPARE(write(exchange, CardKind::Untold, text), TagStatus::Done);
}

void TestTagAccess::largestMessageIsWrittenWithinTheLimits()
{
    const QByteArray message = QByteArray::fromHex("c101000003e554") + QByteArray(997, 'a');
    QCOMPARE(message.size(), 1004);
    VirtualType2 tag = VirtualType2::formatted(QByteArray::fromHex("0300fe"), 2040);
    TagExchange exchange(tag);
    QCOMPARE(write(exchange, CardKind::Type2, message), TagStatus::Done);
}

QTEST_GUILESS_MAIN(TestTagAccess)

#include "tst_tagaccess.moc"
