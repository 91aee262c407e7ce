// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QRegularExpression>
#include <QTest>

#include "daemon/tags/type2tag.h"
#include "tagexchange.h"
#include "virtualtype2.h"

class TestType2Tag : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void messageIsFound_data();
    void messageIsFound();
    void messageIsFoundAroundReservedBytes();
    void messageEndsBeforeReservedBytes();
    void eachSixteenBytesAreReadOnce();
    void emptyTagsAreEmpty_data();
    void emptyTagsAreEmpty();
    void otherMemoryIsNotFormatted_data();
    void otherMemoryIsNotFormatted();
    void messageBehindThePagesThatCanBeReadIsUnsupported();

    void writtenMessageIsRead_data();
    void writtenMessageIsRead();
    void nothingElseIsWritten();
    void reservedBytesKeepTheirValues();
    void tagThatTakesNothingIsLeftAsItIs_data();
    void tagThatTakesNothingIsLeftAsItIs();
    void refusalInMidWriteLeavesAnEmptyTag();
    void messageNeedsRoom();

    void tagThatLeavesWhileReadIsGone();
    void tagThatLeavesWhileWrittenIsOldEmptyOrNew_data();
    void tagThatLeavesWhileWrittenIsOldEmptyOrNew();
    void readerThatReportsAnErrorForATagThatLeftIsUnderstood();

private:
    static TagContents read(VirtualTag &tag)
    {
        TagExchange exchange(tag);
        return Type2Tag(exchange).read();
    }

    static TagStatus write(VirtualTag &tag, const QByteArray &message)
    {
        TagExchange exchange(tag);
        return Type2Tag(exchange).write(message);
    }
};

void TestType2Tag::messageIsFound_data()
{
    const auto hex = [](const char *data) { return QByteArray::fromHex(data); };
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("first block") << hex("0302abcdfe") << hex("abcd");
    QTest::newRow("no terminator") << hex("0302abcd") << hex("abcd");
    QTest::newRow("behind nothing") << hex("00000000000302abcdfe") << hex("abcd");
    QTest::newRow("behind the control of locks") << hex("0103a00c340302abcdfe") << hex("abcd");
    QTest::newRow("behind the control of memory") << hex("0203f010350302abcdfe") << hex("abcd");
    QTest::newRow("behind an unknown block") << hex("fd03ffff030302abcdfe") << hex("abcd");
    QTest::newRow("long length for a short message") << hex("03ff0002abcdfe") << hex("abcd");
    QTest::newRow("first of two") << hex("0302abcd0301eefe") << hex("abcd");
    QTest::newRow("254 bytes") << hex("03fe") + QByteArray(254, 'a') << QByteArray(254, 'a');
    QTest::newRow("255 bytes") << hex("03ff00ff") + QByteArray(255, 'a') << QByteArray(255, 'a');
    QTest::newRow("up to the last byte") << hex("03ff01fc") + QByteArray(508, 'a') << QByteArray(508, 'a');
}

void TestType2Tag::messageIsFound()
{
    QFETCH(QByteArray, data);
    QFETCH(QByteArray, message);
    VirtualType2 tag = VirtualType2::formatted(data, 512);
    const TagContents contents = read(tag);
    QCOMPARE(contents.status, TagStatus::Done);
    QCOMPARE(contents.message, message);
}

void TestType2Tag::messageIsFoundAroundReservedBytes()
{
    // The four bytes from 2 * 16 on are memory of another kind, the one at 2 * 16 + 5 is of locks.
    VirtualType2 tag =
        VirtualType2::formatted(QByteArray::fromHex("020320040401032508040306abcd1234eeeeeeee56ee78fe"));
    QCOMPARE(tag.memory.mid(32, 6), QByteArray::fromHex("eeeeeeee56ee"));
    const TagContents contents = read(tag);
    QCOMPARE(contents.status, TagStatus::Done);
    QCOMPARE(contents.message, QByteArray::fromHex("abcd12345678"));
}

void TestType2Tag::messageEndsBeforeReservedBytes()
{
    // The last four bytes of 48 are memory of another kind, so that there are 37 for the message.
    const QByteArray control = QByteArray::fromHex("02033c0404");
    VirtualType2 fits =
        VirtualType2::formatted(control + QByteArray::fromHex("0325") + QByteArray(37, 'a'), 48);
    QCOMPARE(read(fits).message, QByteArray(37, 'a'));
    VirtualType2 runsOver =
        VirtualType2::formatted(control + QByteArray::fromHex("0326") + QByteArray(37, 'a'), 48);
    runsOver.memory += QByteArray(16, 'x');
    QCOMPARE(read(runsOver).status, TagStatus::Malformed);
}

void TestType2Tag::eachSixteenBytesAreReadOnce()
{
    VirtualType2 tag = VirtualType2::sticker(QByteArray(100, 'a'));
    TagExchange exchange(tag);
    QCOMPARE(Type2Tag(exchange).read().status, TagStatus::Done);
    QByteArrayList expected;
    for (int page = 0; page < 32; page += 4)
        expected.append(QByteArray::fromHex("ffb000") + char(page) + '\x10');
    QCOMPARE(exchange.commands, expected);
}

void TestType2Tag::emptyTagsAreEmpty_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("message of no bytes") << QByteArray::fromHex("0300fe");
    QTest::newRow("message of no bytes, long length") << QByteArray::fromHex("03ff0000fe");
    QTest::newRow("nothing at all") << QByteArray();
    QTest::newRow("terminator first") << QByteArray::fromHex("fe0302abcd");
    QTest::newRow("other blocks only") << QByteArray::fromHex("0103a00c34fd0100fe");
    QTest::newRow("unknown block up to the end") << QByteArray::fromHex("fd8e") + QByteArray(142, 'a');
}

void TestType2Tag::emptyTagsAreEmpty()
{
    QFETCH(QByteArray, data);
    VirtualType2 tag = VirtualType2::formatted(data);
    const TagContents contents = read(tag);
    QCOMPARE(contents.status, TagStatus::Empty);
    QCOMPARE(contents.message, QByteArray());
}

void TestType2Tag::otherMemoryIsNotFormatted_data()
{
    QTest::addColumn<QByteArray>("capabilities");
    QTest::newRow("as delivered") << QByteArray::fromHex("00000000");
    QTest::newRow("counter of a ticket") << QByteArray::fromHex("0003ffff");
}

void TestType2Tag::otherMemoryIsNotFormatted()
{
    QFETCH(QByteArray, capabilities);
    VirtualType2 tag = VirtualType2::sticker("abc");
    tag.memory.replace(12, 4, capabilities);
    const QByteArray memory = tag.memory;
    QCOMPARE(read(tag).status, TagStatus::NotFormatted);
    QCOMPARE(write(tag, "abc"), TagStatus::NotFormatted);
    QCOMPARE(tag.memory, memory);
}

void TestType2Tag::messageBehindThePagesThatCanBeReadIsUnsupported()
{
    VirtualType2 tag =
        VirtualType2::formatted(QByteArray(1020, '\0') + QByteArray::fromHex("0302abcd"), 1904);
    QCOMPARE(read(tag).status, TagStatus::Unsupported);
    QCOMPARE(write(tag, "abc"), TagStatus::Unsupported);
}

void TestType2Tag::writtenMessageIsRead_data()
{
    const auto hex = [](const char *data) { return QByteArray::fromHex(data); };
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("size");
    for (const int size : {1, 2, 3, 4, 100, 254, 255, 256, 400}) {
        const auto row = [size](const char *name, const QByteArray &data) {
            QTest::addRow("%d bytes %s", size, name) << data << size;
        };
        row("over an empty message", hex("0300fe"));
        row("behind the control of locks", hex("0103a00c340300fe"));
        row("over a shorter message", hex("0302abcdfe"));
        row("over a longer message", hex("03ff01c2") + QByteArray(450, 'a'));
        row("over a message that is longer than the tag", hex("03ff0f00"));
        row("where nothing is", {});
        row("where the terminator is", hex("fe0302abcd"));
        row("where the terminator ends a page", hex("000000fe0302abcd"));
        row("where the terminator ends a page behind another block", hex("fd01eefe0302abcdfe"));
        row("behind another block", hex("fd02eeee"));
        row("where type and length are in two pages", hex("0000000300fe"));
        row("where a long length goes on in the next page", hex("00000300fe"));
    }
}

void TestType2Tag::writtenMessageIsRead()
{
    QFETCH(QByteArray, data);
    QFETCH(int, size);
    const QByteArray message(size, 'b');
    VirtualType2 tag = VirtualType2::formatted(data, 512);
    QCOMPARE(write(tag, message), TagStatus::Done);
    const TagContents contents = read(tag);
    QCOMPARE(contents.status, TagStatus::Done);
    QCOMPARE(contents.message, message);
}

void TestType2Tag::nothingElseIsWritten()
{
    VirtualType2 tag =
        VirtualType2::formatted(QByteArray::fromHex("fd02777700000302abcdfe") + QByteArray(60, 'a'));
    const QByteArray before = tag.memory;
    QCOMPARE(write(tag, "12345"), TagStatus::Done);
    QCOMPARE(tag.memory.size(), before.size());
    QCOMPARE(tag.memory.first(16 + 6), before.first(16 + 6));
    QCOMPARE(tag.memory.mid(16 + 6, 8), QByteArray::fromHex("03053132333435fe"));
    QCOMPARE(tag.memory.mid(16 + 6 + 8), before.mid(16 + 6 + 8));

    VirtualType2 other = VirtualType2::formatted(QByteArray::fromHex("fd02eeee"));
    QCOMPARE(write(other, "12345"), TagStatus::Done);
    QCOMPARE(other.memory.mid(16, 12), QByteArray::fromHex("fd02eeee03053132333435fe"));
}

void TestType2Tag::reservedBytesKeepTheirValues()
{
    VirtualType2 tag = VirtualType2::formatted(QByteArray::fromHex("02032004040300") + QByteArray(60, 'r'));
    QCOMPARE(write(tag, QByteArray(40, 'b')), TagStatus::Done);
    QCOMPARE(tag.memory.mid(32, 4), "rrrr");
    QCOMPARE(read(tag).message, QByteArray(40, 'b'));
}

void TestType2Tag::tagThatTakesNothingIsLeftAsItIs_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("firstLocked");
    QTest::newRow("access of the capability container") << 15 << 0x0f << 1000;
    QTest::newRow("lock of page 4") << 10 << 0x10 << 1000;
    QTest::newRow("lock of page 15") << 11 << 0x80 << 1000;
    QTest::newRow("locks that only show when written") << 15 << 0x00 << 4;
}

void TestType2Tag::tagThatTakesNothingIsLeftAsItIs()
{
    QFETCH(int, address);
    QFETCH(int, value);
    QFETCH(int, firstLocked);
    VirtualType2 tag = VirtualType2::sticker("abc");
    tag.memory[address] = char(value);
    tag.lockFrom(firstLocked);
    const QByteArray before = tag.memory;
    QCOMPARE(write(tag, "12345"), TagStatus::ReadOnly);
    QCOMPARE(tag.memory, before);
    QCOMPARE(read(tag).message, "abc");
}

void TestType2Tag::refusalInMidWriteLeavesAnEmptyTag()
{
    VirtualType2 tag = VirtualType2::sticker("abc");
    tag.lockFrom(20);
    QCOMPARE(write(tag, QByteArray(100, 'b')), TagStatus::Refused);
    QCOMPARE(read(tag).status, TagStatus::Empty);
}

void TestType2Tag::messageNeedsRoom()
{
    VirtualType2 small = VirtualType2::formatted(QByteArray::fromHex("0300"), 48);
    QCOMPARE(write(small, QByteArray(47, 'b')), TagStatus::TooSmall);
    QCOMPARE(read(small).status, TagStatus::Empty);
    QCOMPARE(write(small, QByteArray(46, 'b')), TagStatus::Done);
    QCOMPARE(read(small).message, QByteArray(46, 'b'));

    // The last of the pages that can be addressed ends 1,008 bytes behind the capability container.
    VirtualType2 large = VirtualType2::formatted(QByteArray::fromHex("0300"), 2040);
    QCOMPARE(write(large, QByteArray(1005, 'b')), TagStatus::TooSmall);
    QCOMPARE(write(large, QByteArray(1004, 'b')), TagStatus::Done);
    QCOMPARE(read(large).message, QByteArray(1004, 'b'));
}

void TestType2Tag::tagThatLeavesWhileReadIsGone()
{
    VirtualType2 tag = VirtualType2::formatted(QByteArray::fromHex("03ff012c") + QByteArray(300, 'a'), 504);
    TagExchange whole(tag);
    QCOMPARE(Type2Tag(whole).read().status, TagStatus::Done);
    for (int i = 0; i < whole.commands.size(); ++i) {
        TagExchange exchange(tag);
        exchange.leavesAt = i;
        const TagContents contents = Type2Tag(exchange).read();
        QCOMPARE(contents.status, TagStatus::Gone);
        QCOMPARE(contents.message, QByteArray());
        QCOMPARE(read(tag).message, QByteArray(300, 'a'));
    }
}

void TestType2Tag::tagThatLeavesWhileWrittenIsOldEmptyOrNew_data()
{
    const auto hex = [](const char *data) { return QByteArray::fromHex(data); };
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("size");
    for (const int size : {2, 100, 300}) {
        const auto row = [size](const char *name, const QByteArray &data) {
            QTest::addRow("%d bytes %s", size, name) << data << size;
        };
        row("over another message", hex("03ff01c2") + QByteArray(450, 'a'));
        row("over a short message", hex("0103a00c340302abcdfe"));
        row("where type and length are in two pages", hex("0000000302abcdfe"));
        row("where a long length goes on in the next page", hex("000003ff0002abcdfe"));
        row("where nothing is", {});
        row("where the terminator ends a page and hides a message", hex("000000fe0302abcdfe"));
        row("where the terminator hides a message", hex("fe000302abcdfe"));
        row("where the terminator ends a page behind another block", hex("fd01eefe0302abcdfe"));
    }
}

void TestType2Tag::tagThatLeavesWhileWrittenIsOldEmptyOrNew()
{
    QFETCH(QByteArray, data);
    QFETCH(int, size);
    const VirtualType2 untouched = VirtualType2::formatted(data, 512);
    const QByteArray message(size, 'b');
    VirtualType2 tag = untouched;
    const TagContents old = read(tag);
    TagExchange whole(tag);
    QCOMPARE(Type2Tag(whole).write(message), TagStatus::Done);

    for (int i = 0; i < whole.commands.size(); ++i) {
        tag = untouched;
        TagExchange exchange(tag);
        exchange.leavesAt = i;
        QCOMPARE(Type2Tag(exchange).write(message),
                 i < whole.firstWrite() ? TagStatus::Gone : TagStatus::Torn);
        const TagContents left = read(tag);
        QVERIFY2(left.status == TagStatus::Empty ||
                     (left.status == old.status && left.message == old.message),
                 qPrintable(QStringLiteral("after %1 commands: %2")
                                .arg(i)
                                .arg(QString::fromLatin1(left.message.toHex()))));
        QCOMPARE(write(tag, message), TagStatus::Done);
        QCOMPARE(read(tag).message, message);
    }
}

void TestType2Tag::readerThatReportsAnErrorForATagThatLeftIsUnderstood()
{
    VirtualType2 tag = VirtualType2::sticker(QByteArray(100, 'a'));
    TagExchange exchange(tag);
    exchange.lie = [](int number, const QByteArray &, const QByteArray &answer) {
        return number < 3 ? answer : QByteArray::fromHex("6300");
    };
    QCOMPARE(Type2Tag(exchange).read().status, TagStatus::Gone);

    // A tag that only refuses one page is there.
    TagExchange protectedPage(tag);
    protectedPage.lie = [](int, const QByteArray &command, const QByteArray &answer) {
        return command == QByteArray::fromHex("ffb0000c10") ? QByteArray::fromHex("6300") : answer;
    };
    QCOMPARE(Type2Tag(protectedPage).read().status, TagStatus::Malformed);
}

QTEST_GUILESS_MAIN(TestType2Tag)

#include "tst_type2tag.moc"
