// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QRegularExpression>
#include <QTest>

#include "daemon/tags/type4tag.h"
#include "tagexchange.h"
#include "virtualtype4.h"

class TestType4Tag : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void messageIsRead_data();
    void messageIsRead();
    void filesAreSelectedAndReadInTurn();
    void lengthOfNothingIsEmpty();
    void fileThatTheContainerNamesIsRead();
    void containerWithAWrongLengthIsMalformed();
    void messageBehindTheReachOfOffsetsIsUnsupported();

    void writtenMessageIsRead_data();
    void writtenMessageIsRead();
    void lengthIsClearedFirstAndWrittenLast();
    void tagThatTakesNothingIsLeftAsItIs();
    void tagThatRefusesTheFirstBytesIsReadOnly();
    void refusalInMidWriteLeavesAnEmptyTag();
    void messageNeedsRoom();
    void messageThatTakesTooManyCommandsIsNotBegun();

    void tagThatLeavesWhileReadIsGone();
    void tagThatLeavesWhileWrittenIsOldEmptyOrNew();

private:
    static TagContents read(VirtualTag &tag)
    {
        TagExchange exchange(tag);
        return Type4Tag(exchange).read();
    }

    static TagStatus write(VirtualTag &tag, const QByteArray &message)
    {
        TagExchange exchange(tag);
        return Type4Tag(exchange).write(message);
    }
};

void TestType4Tag::messageIsRead_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("longest");
    QTest::newRow("one byte") << 1 << 0xf6;
    QTest::newRow("one part") << 0xf6 << 0xf6;
    QTest::newRow("a byte more than one part") << 0xf7 << 0xf6;
    QTest::newRow("small parts") << 1000 << 0x0f;
    QTest::newRow("parts longer than a short command carries") << 2000 << 0x1000;
    QTest::newRow("as far as offsets reach") << 0x7ffe << 0xff;
}

void TestType4Tag::messageIsRead()
{
    QFETCH(int, size);
    QFETCH(int, longest);
    QByteArray message;
    for (int i = 0; i < size; ++i)
        message += char(i * 7);
    VirtualType4 tag = VirtualType4::holding(message, size + 2 < 5 ? 5 : size + 2, longest);
    const TagContents contents = read(tag);
    QCOMPARE(contents.status, TagStatus::Done);
    QCOMPARE(contents.message, message);
}

void TestType4Tag::filesAreSelectedAndReadInTurn()
{
    VirtualType4 tag = VirtualType4::holding(QByteArray(20, 'a'));
    TagExchange exchange(tag);
    QCOMPARE(Type4Tag(exchange).read().status, TagStatus::Done);
    QByteArrayList expected;
    for (const char *command : {"00a4040007d276000085010100", "00a4000c02e103", "00b000000f",
                                "00a4000c02e104", "00b0000002", "00b0000214"})
        expected.append(QByteArray::fromHex(command));
    QCOMPARE(exchange.commands, expected);
}

void TestType4Tag::lengthOfNothingIsEmpty()
{
    VirtualType4 tag = VirtualType4::holding({});
    QCOMPARE(read(tag).status, TagStatus::Empty);
}

void TestType4Tag::fileThatTheContainerNamesIsRead()
{
    VirtualType4 tag = VirtualType4::holding("other");
    tag.files.insert(0x0042, QByteArray::fromHex("0003616263").leftJustified(2048, '\0'));
    tag.files[VirtualType4::containerFile].replace(9, 2, QByteArray::fromHex("0042"));
    QCOMPARE(read(tag).message, "abc");
}

void TestType4Tag::containerWithAWrongLengthIsMalformed()
{
    VirtualType4 tag = VirtualType4::holding("text");
    // The kind of the longer control value with the length of the shorter one.
    tag.files[VirtualType4::containerFile][7] = '\x06';
    QCOMPARE(read(tag).status, TagStatus::Malformed);
}

void TestType4Tag::messageBehindTheReachOfOffsetsIsUnsupported()
{
    VirtualType4 tag = VirtualType4::holding(QByteArray(0x7fff, 'a'), 0xfffe);
    QCOMPARE(read(tag).status, TagStatus::Unsupported);
}

void TestType4Tag::writtenMessageIsRead_data()
{
    messageIsRead_data();
}

void TestType4Tag::writtenMessageIsRead()
{
    QFETCH(int, size);
    QFETCH(int, longest);
    VirtualType4 tag = VirtualType4::holding("old", 0x8000, longest);
    QCOMPARE(write(tag, QByteArray(size, 'b')), TagStatus::Done);
    QCOMPARE(read(tag).message, QByteArray(size, 'b'));
}

void TestType4Tag::lengthIsClearedFirstAndWrittenLast()
{
    VirtualType4 tag = VirtualType4::holding("old", 2048, 3);
    tag.files[VirtualType4::containerFile].replace(3, 2, QByteArray::fromHex("00f6"));
    TagExchange exchange(tag);
    QCOMPARE(Type4Tag(exchange).write("12345"), TagStatus::Done);
    QCOMPARE(
        exchange.commands.mid(4),
        (QByteArrayList{QByteArray::fromHex("00d60000020000"), QByteArray::fromHex("00d6000203") + "123",
                        QByteArray::fromHex("00d6000502") + "45", QByteArray::fromHex("00d60000020005")}));
}

void TestType4Tag::tagThatTakesNothingIsLeftAsItIs()
{
    VirtualType4 tag = VirtualType4::holding("old");
    tag.files[VirtualType4::containerFile][14] = '\xff';
    QCOMPARE(write(tag, "new"), TagStatus::ReadOnly);
    QCOMPARE(read(tag).message, "old");
}

void TestType4Tag::tagThatRefusesTheFirstBytesIsReadOnly()
{
    VirtualType4 tag = VirtualType4::holding("old");
    TagExchange exchange(tag);
    exchange.lie = [](int, const QByteArray &command, const QByteArray &answer) {
        return command.startsWith(QByteArray::fromHex("00d6")) ? QByteArray::fromHex("6982") : answer;
    };
    QCOMPARE(Type4Tag(exchange).write("new"), TagStatus::ReadOnly);
}

void TestType4Tag::refusalInMidWriteLeavesAnEmptyTag()
{
    VirtualType4 tag = VirtualType4::holding("old", 100);
    tag.files[VirtualType4::containerFile].replace(11, 2, QByteArray::fromHex("0400"));
    QCOMPARE(write(tag, QByteArray(500, 'b')), TagStatus::Refused);
    QCOMPARE(read(tag).status, TagStatus::Empty);
}

void TestType4Tag::messageNeedsRoom()
{
    VirtualType4 tag = VirtualType4::holding("old", 100);
    QCOMPARE(write(tag, QByteArray(99, 'b')), TagStatus::TooSmall);
    QCOMPARE(read(tag).message, "old");
    QCOMPARE(write(tag, QByteArray(98, 'b')), TagStatus::Done);
}

void TestType4Tag::messageThatTakesTooManyCommandsIsNotBegun()
{
    VirtualType4 tag = VirtualType4::holding("old", 0x8000, 1);
    tag.files[VirtualType4::containerFile].replace(3, 2, QByteArray::fromHex("00ff"));
    QCOMPARE(write(tag, QByteArray(291, 'b')), TagStatus::TooSmall);
    QCOMPARE(read(tag).message, "old");
    TagExchange exchange(tag);
    QCOMPARE(Type4Tag(exchange).write(QByteArray(290, 'b')), TagStatus::Done);
    QVERIFY(exchange.commands.size() <= 300);
}

void TestType4Tag::tagThatLeavesWhileReadIsGone()
{
    VirtualType4 tag = VirtualType4::holding(QByteArray(1000, 'a'));
    TagExchange whole(tag);
    QCOMPARE(Type4Tag(whole).read().status, TagStatus::Done);
    for (int i = 0; i < whole.commands.size(); ++i) {
        TagExchange exchange(tag);
        exchange.leavesAt = i;
        const TagContents contents = Type4Tag(exchange).read();
        QCOMPARE(contents.status, TagStatus::Gone);
        QCOMPARE(contents.message, QByteArray());
        QCOMPARE(read(tag).message, QByteArray(1000, 'a'));
    }
}

void TestType4Tag::tagThatLeavesWhileWrittenIsOldEmptyOrNew()
{
    const VirtualType4 untouched = VirtualType4::holding(QByteArray(1000, 'a'));
    const QByteArray message(700, 'b');
    VirtualType4 tag = untouched;
    TagExchange whole(tag);
    QCOMPARE(Type4Tag(whole).write(message), TagStatus::Done);
    for (int i = 0; i < whole.commands.size(); ++i) {
        tag = untouched;
        TagExchange exchange(tag);
        exchange.leavesAt = i;
        QCOMPARE(Type4Tag(exchange).write(message),
                 i < whole.firstWrite() ? TagStatus::Gone : TagStatus::Torn);
        const TagContents left = read(tag);
        QVERIFY2(left.status == TagStatus::Empty || left.message == QByteArray(1000, 'a'),
                 qPrintable(QString::number(i)));
        QCOMPARE(write(tag, message), TagStatus::Done);
        QCOMPARE(read(tag).message, message);
    }
}

QTEST_GUILESS_MAIN(TestType4Tag)

#include "tst_type4tag.moc"
