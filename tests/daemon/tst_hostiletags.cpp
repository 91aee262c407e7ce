// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>
#include <functional>
#include <memory>

#include <QRegularExpression>
#include <QTest>

#include "daemon/tags/tagaccess.h"
#include "tagexchange.h"
#include "virtualtype2.h"
#include "virtualtype4.h"

namespace {

using Making = std::function<std::unique_ptr<VirtualTag>()>;

const QByteArray webLink = QByteArray::fromHex("d1010455036f7267");

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

Making sticker(int address = 0, const QByteArray &bytes = {})
{
    return [=] {
        auto tag = std::make_unique<VirtualType2>(VirtualType2::sticker(webLink));
        tag->memory.replace(address, bytes.size(), bytes);
        return tag;
    };
}

Making formatted(const QByteArray &data, int size = 144)
{
    return [=] { return std::make_unique<VirtualType2>(VirtualType2::formatted(data, size)); };
}

Making file(int offset = 0, const QByteArray &bytes = {})
{
    return [=] {
        auto tag = std::make_unique<VirtualType4>(VirtualType4::holding(webLink));
        tag->files[VirtualType4::messageFile].replace(offset, bytes.size(), bytes);
        return tag;
    };
}

// A tag with its message in a file that must not be one of a tag's.
Making reservedFile(quint16 identifier)
{
    return [=] {
        auto tag = std::make_unique<VirtualType4>(VirtualType4::holding(webLink));
        tag->files.insert(identifier, tag->files.take(VirtualType4::messageFile));
        QByteArray &container = tag->files[VirtualType4::containerFile];
        container[9] = char(identifier >> 8);
        container[10] = char(identifier);
        return tag;
    };
}

Making container(int offset, const QByteArray &bytes)
{
    return [=] {
        auto tag = std::make_unique<VirtualType4>(VirtualType4::holding(webLink));
        tag->files[VirtualType4::containerFile].replace(offset, bytes.size(), bytes);
        return tag;
    };
}

// The commands by their numbers: the UID is asked first, then comes what these name.
constexpr int firstRead = 1; // of a Type 2 tag: its capability container
constexpr int secondRead = 2;
constexpr int selectApplication = 1;
constexpr int selectContainer = 2;
constexpr int readContainer = 3;
constexpr int selectFile = 4;
constexpr int readLength = 5;
constexpr int readMessage = 6;

TagExchange::Lie answers(int which, const QByteArray &lie)
{
    return [=](int number, const QByteArray &, const QByteArray &truth) {
        return number == which ? lie : truth;
    };
}

TagExchange::Lie cuts(int which, int bytes)
{
    return [=](int number, const QByteArray &, const QByteArray &truth) {
        return number == which ? truth.first(std::max(qsizetype(0), truth.size() - 2 - bytes)) + hex("9000")
                               : truth;
    };
}

TagExchange::Lie adds(int which, int bytes)
{
    return [=](int number, const QByteArray &, const QByteArray &truth) {
        return number == which ? QByteArray(bytes, 'a') + truth : truth;
    };
}

} // namespace

/** Tags that mean no good, each by its name. */
class TestHostileTags : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void tagIsSeenThrough_data();
    void tagIsSeenThrough();
    void everyStatusIsSeenThrough_data();
    void everyStatusIsSeenThrough();
    void tagIsWrittenOrLeft_data();
    void tagIsWrittenOrLeft();

private:
    struct Hostile
    {
        Making make;
        TagExchange::Lie lie;
        TagStatus status = TagStatus::Malformed;
        int milliseconds = 10; // that an answer takes
    };

    void add(const char *name, const Making &make, TagStatus status, const TagExchange::Lie &lie = {},
             int milliseconds = 10);
    void addType2Capabilities();
    void addBlocks();
    void addType2Answers();
    void addContainers();
    void addFiles();
    void addType4Answers();
    TagReading readHostile(const Hostile &hostile);

    QList<Hostile> hostiles;
};

void TestHostileTags::add(const char *name, const Making &make, TagStatus status, const TagExchange::Lie &lie,
                          int milliseconds)
{
    QTest::newRow(name) << int(hostiles.size());
    hostiles.append({make, lie, status, milliseconds});
}

void TestHostileTags::addType2Capabilities()
{
    add("magic number of zero", sticker(12, hex("00")), TagStatus::NotFormatted);
    add("magic number that is another", sticker(12, hex("e2")), TagStatus::NotFormatted);
    add("version 0", sticker(13, hex("00")), TagStatus::Unsupported);
    add("version 2", sticker(13, hex("20")), TagStatus::Unsupported);
    add("version 15", sticker(13, hex("ff")), TagStatus::Unsupported);
    add("size of zero", sticker(14, hex("00")), TagStatus::Malformed);
    add("size that ends within the message", sticker(14, hex("01")), TagStatus::Malformed);
    add("size beyond the memory", sticker(14, hex("ff")), TagStatus::Done);
    add("size beyond the memory, full of nothing", formatted(QByteArray(0, '\0'), 2040),
        TagStatus::Unsupported);
    add("reading is forbidden", sticker(15, hex("f0")), TagStatus::Unsupported);
    add("reading takes a password", sticker(15, hex("80")), TagStatus::Unsupported);
}

void TestHostileTags::addBlocks()
{
    add("message without a length", formatted(QByteArray(143, '\0') + hex("03")), TagStatus::Malformed);
    add("message of no bytes", formatted(hex("0300")), TagStatus::Empty);
    add("message that is a byte too long", formatted(hex("038f")), TagStatus::Malformed);
    add("message as long as a byte tells", formatted(hex("03fe")), TagStatus::Malformed);
    add("long length of no bytes", formatted(hex("03ff0000")), TagStatus::Empty);
    add("long length of the most bytes", formatted(hex("03ffffff")), TagStatus::Malformed);
    add("long length that is cut", formatted(QByteArray(141, '\0') + hex("03ff01")), TagStatus::Malformed);
    add("long length at the very end", formatted(QByteArray(142, '\0') + hex("03ff")), TagStatus::Malformed);
    add("unknown block that is too long", formatted(hex("fdfe")), TagStatus::Malformed);
    add("unknown block of the most bytes", formatted(hex("fdffffff")), TagStatus::Malformed);
    add("unknown blocks of no bytes, to the end", formatted(hex("fd00").repeated(72)), TagStatus::Empty);
    add("control of locks without a value", formatted(hex("01000304") + webLink), TagStatus::Malformed);
    add("control of locks with a long value", formatted(hex("0104a00c34000308") + webLink),
        TagStatus::Malformed);
    add("control of locks that is cut", formatted(QByteArray(141, '\0') + hex("0103a0")),
        TagStatus::Malformed);
    add("all memory is of another kind", formatted(hex("02030f00040308") + webLink), TagStatus::Empty);
    add("locks on the message's own length", formatted(hex("01031608040308") + webLink),
        TagStatus::Malformed);
    add("locks far outside", formatted(hex("0103ff000f0308") + webLink), TagStatus::Done);
    add("memory of another kind behind the first block to the end",
        formatted(hex("02031500040308") + webLink), TagStatus::Empty);
    add("message that runs into memory of another kind", formatted(hex("02033c04040326"), 48),
        TagStatus::Malformed);
    add("controls to the end", formatted(hex("0103000000").repeated(28)), TagStatus::Empty);
    add("two messages, the first of no bytes", formatted(hex("03000308") + webLink), TagStatus::Empty);
    add("message that is no message", formatted(hex("0304d1010155")), TagStatus::Malformed);
    add("message with a byte behind it", formatted(hex("0309") + webLink + hex("00")), TagStatus::Malformed);
    add("message with a second end", formatted(hex("0310") + webLink + webLink), TagStatus::Malformed);
}

void TestHostileTags::addType2Answers()
{
    add("UID of one byte", sticker(), TagStatus::Done, answers(0, hex("019000")));
    add("UID of 64 KiB", sticker(), TagStatus::Unsupported,
        answers(0, QByteArray(0x10000, 'a') + hex("9000")));
    add("capabilities of no bytes", sticker(), TagStatus::Gone, answers(firstRead, {}));
    add("capabilities of one byte", sticker(), TagStatus::Unsupported, answers(firstRead, hex("90")));
    add("capabilities that are a status alone", sticker(), TagStatus::Unsupported,
        answers(firstRead, hex("9000")));
    add("capabilities that are cut", sticker(), TagStatus::Unsupported, cuts(firstRead, 1));
    add("capabilities with a byte more", sticker(), TagStatus::Unsupported, adds(firstRead, 1));
    add("block of no bytes", sticker(), TagStatus::Gone, answers(secondRead, {}));
    add("block of one byte", sticker(), TagStatus::Malformed, answers(secondRead, hex("90")));
    add("block that is cut", sticker(), TagStatus::Malformed, cuts(secondRead, 1));
    add("block with a byte more", sticker(), TagStatus::Malformed, adds(secondRead, 1));
    add("block of 64 KiB", sticker(), TagStatus::Unsupported, adds(secondRead, 0x10000));
    add("answers that take 100 ms each", formatted(hex("03ff03ec") + QByteArray(1004, 'a'), 2040),
        TagStatus::Unsupported, {}, 100);
    add("answer that takes ten seconds", sticker(), TagStatus::Unsupported, {}, 10000);
}

void TestHostileTags::addContainers()
{
    add("container's length of zero", container(0, hex("0000")), TagStatus::Malformed);
    add("container's length a byte too short", container(0, hex("000e")), TagStatus::Malformed);
    add("container's length of the most bytes", container(0, hex("ffff")), TagStatus::Done);
    add("container's version 0", container(2, hex("00")), TagStatus::Unsupported);
    add("container's version 4", container(2, hex("40")), TagStatus::Unsupported);
    add("container's version 15", container(2, hex("ff")), TagStatus::Unsupported);
    add("longest answer of zero", container(3, hex("0000")), TagStatus::Malformed);
    add("longest answer a byte too short", container(3, hex("000e")), TagStatus::Malformed);
    add("longest answer of the most bytes", container(3, hex("ffff")), TagStatus::Done);
    add("longest command of zero", container(5, hex("0000")), TagStatus::Malformed);
    add("control block of no type", container(7, hex("00")), TagStatus::Malformed);
    add("control block of a proprietary file", container(7, hex("05")), TagStatus::Malformed);
    add("control block of an extended file", container(7, hex("0608")), TagStatus::Unsupported);
    add("control block of no length", container(8, hex("00")), TagStatus::Malformed);
    add("control block that is too long", container(8, hex("ff")), TagStatus::Malformed);
    add("file 0000", reservedFile(0x0000), TagStatus::Malformed);
    add("file E102", reservedFile(0xe102), TagStatus::Malformed);
    add("file that is the container", container(9, hex("e103")), TagStatus::Malformed);
    add("file that is the master", reservedFile(0x3f00), TagStatus::Malformed);
    add("file FFFF", reservedFile(0xffff), TagStatus::Malformed);
    add("file that does not exist", container(9, hex("0001")), TagStatus::Malformed);
    add("file's size of zero", container(11, hex("0000")), TagStatus::Malformed);
    add("file's size a byte too small", container(11, hex("0004")), TagStatus::Malformed);
    add("file's size below the message's", container(11, hex("0009")), TagStatus::Malformed);
    add("file's size of the most bytes", container(11, hex("ffff")), TagStatus::Malformed);
    add("file that may not be read", container(13, hex("ff")), TagStatus::Unsupported);
    add("file that takes a password", container(13, hex("80")), TagStatus::Unsupported);
}

void TestHostileTags::addFiles()
{
    add("file with a message of no bytes", file(0, hex("0000")), TagStatus::Empty);
    add("file with a message that is a byte too long", file(0, hex("07ff")), TagStatus::Malformed);
    add("file with a message of the most bytes", file(0, hex("ffff")), TagStatus::Malformed);
    add(
        "file that is shorter than it tells",
        [] {
            auto tag = std::make_unique<VirtualType4>(VirtualType4::holding(QByteArray(500, 'a')));
            tag->files[VirtualType4::messageFile].truncate(300);
            return tag;
        },
        TagStatus::Malformed);
    add("file with a message that is no message", file(2, hex("00")), TagStatus::Malformed);
    add("file with a message without an end", file(2, hex("91")), TagStatus::Malformed);
}

void TestHostileTags::addType4Answers()
{
    add("application's answer of no bytes", file(), TagStatus::Gone, answers(selectApplication, {}));
    add("application's answer of one byte", file(), TagStatus::Unsupported,
        answers(selectApplication, hex("90")));
    add("application's answer of 200 bytes", file(), TagStatus::Done, adds(selectApplication, 200));
    add("application's answer of 64 KiB", file(), TagStatus::Unsupported, adds(selectApplication, 0x10000));
    add("container's selection answered by one byte", file(), TagStatus::Malformed,
        answers(selectContainer, hex("90")));
    add("container of no bytes", file(), TagStatus::Gone, answers(readContainer, {}));
    add("container that is a status alone", file(), TagStatus::Malformed,
        answers(readContainer, hex("9000")));
    add("container that is cut", file(), TagStatus::Malformed, cuts(readContainer, 1));
    add("container with a byte more", file(), TagStatus::Malformed, adds(readContainer, 1));
    add("file's selection answered by one byte", file(), TagStatus::Malformed,
        answers(selectFile, hex("90")));
    add("message's length of no bytes", file(), TagStatus::Gone, answers(readLength, {}));
    add("message's length of one byte", file(), TagStatus::Malformed, cuts(readLength, 1));
    add("message's length of three bytes", file(), TagStatus::Malformed, adds(readLength, 1));
    add("message's part of no bytes", file(), TagStatus::Malformed, answers(readMessage, hex("9000")));
    add("message's part that is cut", file(), TagStatus::Malformed, cuts(readMessage, 1));
    add("message's part with a byte more", file(), TagStatus::Malformed, adds(readMessage, 1));
    add(
        "message in more parts than are asked for",
        [] { return std::make_unique<VirtualType4>(VirtualType4::holding(QByteArray(8000, 'a'), 9000, 15)); },
        TagStatus::Unsupported);
    add("answers of a tag of Type 4 that take a second each", file(), TagStatus::Unsupported, {}, 1000);
}

void TestHostileTags::tagIsSeenThrough_data()
{
    hostiles.clear();
    QTest::addColumn<int>("number");
    addType2Capabilities();
    addBlocks();
    addType2Answers();
    addContainers();
    addFiles();
    addType4Answers();
    QVERIFY(hostiles.size() >= 60);
}

TagReading TestHostileTags::readHostile(const Hostile &hostile)
{
    const std::unique_ptr<VirtualTag> tag = hostile.make();
    TagExchange exchange(*tag);
    exchange.lie = hostile.lie;
    const auto clock = [&] { return qint64(exchange.commands.size()) * hostile.milliseconds; };
    const TagReading reading = readTag(exchange, cardKind(tag->atr(), {}), clock);
    // None begins after the limits.
    if (exchange.commands.size() > 300 || clock() - hostile.milliseconds >= 5000)
        QTest::qFail("the tag has dragged it out", __FILE__, __LINE__);
    return reading;
}

void TestHostileTags::tagIsSeenThrough()
{
    QFETCH(int, number);
    const Hostile &hostile = hostiles.at(number);
    const TagReading reading = readHostile(hostile);
    QCOMPARE(reading.contents.status, hostile.status);
    QCOMPARE(reading.contents.message, hostile.status == TagStatus::Done ? webLink : QByteArray());
}

void TestHostileTags::everyStatusIsSeenThrough_data()
{
    QTest::addColumn<QByteArray>("status");
    for (const char *status : {"6110", "6200", "6281", "6282", "6283", "6300", "6381", "63c0", "6400", "6581",
                               "6700", "6800", "6881", "6882", "6900", "6981", "6982", "6983", "6984", "6985",
                               "6986", "6a00", "6a80", "6a81", "6a82", "6a83", "6a84", "6a86", "6a88", "6b00",
                               "6c0f", "6d00", "6e00", "6f00", "9001", "9100", "91af", "0000", "ffff"})
        QTest::newRow(status) << hex(status);
}

void TestHostileTags::everyStatusIsSeenThrough()
{
    QFETCH(QByteArray, status);
    const auto statusAt = [&](const Making &make, int which) {
        return readHostile({make, answers(which, status)}).contents.status;
    };
    QCOMPARE(statusAt(sticker(), firstRead), TagStatus::Unsupported);
    QCOMPARE(statusAt(sticker(), secondRead), TagStatus::Malformed);
    QCOMPARE(statusAt(file(), selectApplication), TagStatus::Unsupported);
    for (const int which : {selectContainer, readContainer, selectFile, readLength, readMessage})
        QCOMPARE(statusAt(file(), which), TagStatus::Malformed);
}

void TestHostileTags::tagIsWrittenOrLeft_data()
{
    tagIsSeenThrough_data();
}

// Either the message is there afterwards, or the caller learns that it is not.
void TestHostileTags::tagIsWrittenOrLeft()
{
    QFETCH(int, number);
    const Hostile &hostile = hostiles.at(number);
    const QByteArray text = hex("d10105540265654869");
    const std::unique_ptr<VirtualTag> tag = hostile.make();
    TagExchange exchange(*tag);
    exchange.lie = hostile.lie;
    const auto clock = [&] { return qint64(exchange.commands.size()) * hostile.milliseconds; };
    const CardKind kind = cardKind(tag->atr(), {});
    const bool isWritten = writeTag(exchange, kind, text, clock).contents.status == TagStatus::Done;
    QVERIFY(exchange.commands.size() <= 600);

    TagExchange honest(*tag);
    const TagContents contents = readTag(honest, kind, [] { return 0; }).contents;
    QCOMPARE(contents.message == text, isWritten);
}

QTEST_GUILESS_MAIN(TestHostileTags)

#include "tst_hostiletags.moc"
