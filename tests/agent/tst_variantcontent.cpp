// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <functional>
#include <limits>
#include <time.h>
#include <unistd.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <QtTest>

#include "agent/variantcontent.h"

using ConnUi::contentHash;
using ConnUi::sameContent;

namespace {

// A D-Bus structure of whatever fill() appends.
QVariant structure(const std::function<void(QDBusArgument &)> &fill)
{
    QDBusArgument argument;
    argument.beginStructure();
    fill(argument);
    argument.endStructure();
    return QVariant::fromValue(argument);
}

QVariant handover(const char *path, const char *text)
{
    return structure([=](QDBusArgument &argument) {
        argument << QDBusObjectPath(QLatin1String(path)) << QString::fromLatin1(text);
    });
}

template <typename List>
QVariant list(const List &values)
{
    QDBusArgument argument;
    argument << values;
    return QVariant::fromValue(argument);
}

QVariant variants(const QVariantList &values)
{
    return list(values);
}

QVariant dictionary(const QVariantMap &values)
{
    return QVariant(values);
}

struct Pipe
{
    Pipe()
    {
        if (::pipe(ends) != 0)
            qFatal("no pipe");
    }
    ~Pipe()
    {
        ::close(ends[0]);
        ::close(ends[1]);
    }
    Q_DISABLE_COPY_MOVE(Pipe)
    QVariant end(int index) const { return QVariant::fromValue(QDBusUnixFileDescriptor(ends[index])); }
    int ends[2];
};

qint64 threadTime()
{
    timespec now;
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return now.tv_sec * 1000000000LL + now.tv_nsec;
}

} // namespace

/** Takes in what another connection sends. */
class Receiver : public QObject
{
    Q_OBJECT

public:
    QVariant value;
    int calls = 0;

public Q_SLOTS:
    void take(const QDBusVariant &sent)
    {
        value = sent.variant();
        ++calls;
    }
};

class TestVariantContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void copyMatchesHoweverOftenItIsCompared_data();
    void copyMatchesHoweverOftenItIsCompared();
    void sameValueSentTwiceMatches_data();
    void sameValueSentTwiceMatches();
    void differentContentDoesNotMatch();
    void sameTextOfAnotherTypeDoesNotMatch();
    void readingTheValueDoesNotSpoilTheMatch();
    void comparingLeavesTheValueReadable();
    void comparingCostsTheSameEachTime();
    void descriptorsInsideAStructureAreToldApart();
    void valueThatWasNeverSentDoesNotMatch();
    void invalidValueMatchesNoOther();
    void valuesThatMatchHaveTheSameHash_data();
    void valuesThatMatchHaveTheSameHash();
    void equalNumbersOfDifferentTypesHaveTheSameHash();
    void hashTellsKeysApart();

private:
    QVariant received(const QVariant &value);
    QList<QPair<const char *, QVariant>> values() const;
    void addValues() const;

    QDBusConnection sender = QDBusConnection(QString());
    Receiver receiver;
    Pipe pipe;
};

void TestVariantContent::initTestCase()
{
    qDBusRegisterMetaType<QList<QList<int>>>();
    qDBusRegisterMetaType<QMap<QString, QString>>();
    qDBusRegisterMetaType<QMap<int, QList<int>>>();
    qDBusRegisterMetaType<QList<QDBusVariant>>();
    QVERIFY(QDBusConnection::sessionBus().registerObject(QStringLiteral("/receiver"), &receiver,
                                                         QDBusConnection::ExportAllSlots));
    sender = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("sender"));
    QVERIFY(sender.isConnected());
}

void TestVariantContent::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

// The value as it looks after a way over the bus.
QVariant TestVariantContent::received(const QVariant &value)
{
    const int before = receiver.calls;
    QDBusMessage call =
        QDBusMessage::createMethodCall(QDBusConnection::sessionBus().baseService(),
                                       QStringLiteral("/receiver"), QString(), QStringLiteral("take"));
    call << QVariant::fromValue(QDBusVariant(value));
    if (!sender.send(call) || !QTest::qWaitFor([&] { return receiver.calls > before; }))
        qFatal("value did not arrive");
    return receiver.value;
}

QList<QPair<const char *, QVariant>> TestVariantContent::values() const
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    return {
        {"empty string", QString()},
        {"string", QStringLiteral("00:11:22")},
        {"byte array", QByteArray("00:11:22")},
        {"byte array with NUL", QByteArray("\0\1", 2)},
        {"string list", QStringList{QStringLiteral("a"), QStringLiteral("b")}},
        {"empty string list", QStringList()},
        {"boolean", true},
        {"byte", QVariant::fromValue(uchar(2))},
        {"int16", QVariant::fromValue(short(-3))},
        {"uint16", QVariant::fromValue(ushort(4))},
        {"int32", -5},
        {"uint32", 6U},
        {"int64", std::numeric_limits<qint64>::min()},
        {"uint64", std::numeric_limits<quint64>::max()},
        {"double", 0.5},
        {"NaN", nan},
        {"object path", QVariant::fromValue(QDBusObjectPath(QStringLiteral("/a")))},
        {"signature", QVariant::fromValue(QDBusSignature(QStringLiteral("(os)")))},
        {"descriptor", pipe.end(0)},
        {"variant in variant", QVariant::fromValue(QDBusVariant(QStringLiteral("a")))},
        {"three variants deep",
         QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(QStringLiteral("a")))))},
        {"structure in variant", QVariant::fromValue(QDBusVariant(handover("/a", "b")))},
        {"structure", handover("/a", "b")},
        {"structure with another end", handover("/a", "c")},
        {"structure with another beginning", handover("/b", "b")},
        {"structure of two strings",
         structure([](QDBusArgument &a) { a << QStringLiteral("ab") << QStringLiteral("c"); })},
        {"structure of the same letters",
         structure([](QDBusArgument &a) { a << QStringLiteral("a") << QStringLiteral("bc"); })},
        {"structure of bytes", structure([](QDBusArgument &a) { a << QByteArray("abc") << uchar('d'); })},
        {"structure of a string list", structure([](QDBusArgument &a) {
             a << QStringList{QStringLiteral("a"), QStringLiteral("bc")};
         })},
        {"structure of NaN", structure([=](QDBusArgument &a) { a << nan; })},
        {"structure of a signature",
         structure([](QDBusArgument &a) { a << QDBusSignature(QStringLiteral("s")); })},
        {"structure of another signature",
         structure([](QDBusArgument &a) { a << QDBusSignature(QStringLiteral("u")); })},
        {"structure of variants", structure([](QDBusArgument &a) {
             a << QDBusVariant(1) << QDBusVariant(handover("/a", "b")) << QDBusVariant(QByteArray("c"));
         })},
        {"structure of a variant of NaN", structure([=](QDBusArgument &a) { a << QDBusVariant(nan); })},
        {"structure in a structure", structure([](QDBusArgument &a) {
             a.beginStructure();
             a << 1 << 2;
             a.endStructure();
             a << 3;
         })},
        {"structure split elsewhere", structure([](QDBusArgument &a) {
             a << 1;
             a.beginStructure();
             a << 2 << 3;
             a.endStructure();
         })},
        {"array", list(QList<int>{1, 2})},
        {"longer array", list(QList<int>{1, 2, 3})},
        {"array of another order", list(QList<int>{2, 1})},
        {"empty array of int32", list(QList<int>())},
        {"empty array of doubles", list(QList<double>())},
        {"nested arrays", list(QList<QList<int>>{{1}, {2}})},
        {"nested arrays split elsewhere", list(QList<QList<int>>{{1, 2}})},
        {"nested arrays with an empty one", list(QList<QList<int>>{{}, {1, 2}})},
        {"nested arrays ending in an empty one", list(QList<QList<int>>{{1, 2}, {}})},
        {"array of variants", list(QList<QDBusVariant>{QDBusVariant(1), QDBusVariant(QStringLiteral("2"))})},
        {"array of an array of variants and a number", variants({variants({1}), 2})},
        {"array of an array of variants", variants({variants({1, 2})})},
        {"dictionary", dictionary({{QStringLiteral("a"), 1}, {QStringLiteral("b"), QStringLiteral("2")}})},
        {"dictionary of another value", dictionary({{QStringLiteral("a"), 1}, {QStringLiteral("b"), 2}})},
        {"dictionary of another key", dictionary({{QStringLiteral("a"), 1}, {QStringLiteral("c"), 2}})},
        {"dictionary of structures", dictionary({{QStringLiteral("a"), handover("/a", "b")}})},
        {"dictionary of strings", list(QMap<QString, QString>{{QStringLiteral("a"), QStringLiteral("b")}})},
        {"dictionary of arrays", list(QMap<int, QList<int>>{{1, {2}}, {3, {}}})},
        {"empty dictionary", dictionary({})},
        {"empty dictionary of strings", list(QMap<QString, QString>())},
    };
}

void TestVariantContent::addValues() const
{
    QTest::addColumn<QVariant>("value");
    for (const auto &[name, value] : values())
        QTest::newRow(name) << value;
}

void TestVariantContent::copyMatchesHoweverOftenItIsCompared_data()
{
    addValues();
}

void TestVariantContent::copyMatchesHoweverOftenItIsCompared()
{
    QFETCH(QVariant, value);
    const QVariant stored = received(value);
    const QVariant copy = stored;
    for (int i = 0; i < 100; ++i)
        QVERIFY2(sameContent(stored, copy), qPrintable(QString::number(i)));
}

void TestVariantContent::sameValueSentTwiceMatches_data()
{
    addValues();
}

void TestVariantContent::sameValueSentTwiceMatches()
{
    QFETCH(QVariant, value);
    const QVariant first = received(value);
    const QVariant second = received(value);
    QVERIFY(sameContent(first, second));
    QVERIFY(sameContent(second, first));
}

void TestVariantContent::differentContentDoesNotMatch()
{
    QList<QPair<const char *, QVariant>> all = values();
    for (auto &entry : all)
        entry.second = received(entry.second);
    for (qsizetype i = 0; i < all.size(); ++i) {
        for (qsizetype j = 0; j < all.size(); ++j) {
            const QByteArray pair = QByteArray(all[i].first) + " and " + all[j].first;
            QVERIFY2(sameContent(all[i].second, all[j].second) == (i == j), pair.constData());
        }
    }
}

void TestVariantContent::sameTextOfAnotherTypeDoesNotMatch()
{
    const QVariant text = received(QStringLiteral("/a"));
    QVERIFY(!sameContent(text, received(QVariant::fromValue(QDBusObjectPath(QStringLiteral("/a"))))));
    QVERIFY(!sameContent(text, received(QByteArray("/a"))));
    QVERIFY(!sameContent(text, received(QVariant::fromValue(QDBusVariant(QStringLiteral("/a"))))));
    const QVariant paths = received(handover("/a", "/a"));
    QVERIFY(!sameContent(paths, received(structure([](QDBusArgument &a) {
                             a << QStringLiteral("/a") << QStringLiteral("/a");
                         }))));
}

void TestVariantContent::readingTheValueDoesNotSpoilTheMatch()
{
    const QVariant stored = received(handover("/a", "b"));
    const QVariant copy = stored;
    for (int i = 0; i < 3; ++i) {
        const auto argument = copy.value<QDBusArgument>();
        QDBusObjectPath path;
        QString text;
        argument.beginStructure();
        argument >> path >> text;
        argument.endStructure();
        QCOMPARE(text, QStringLiteral("b"));
        QVERIFY(sameContent(stored, copy));
    }
}

void TestVariantContent::comparingLeavesTheValueReadable()
{
    const QVariant stored = received(list(QList<int>{1, 2}));
    const QVariant copy = stored;
    QVERIFY(sameContent(stored, copy));
    QCOMPARE(qdbus_cast<QList<int>>(stored), (QList<int>{1, 2}));
    QVERIFY(sameContent(stored, copy));
    QCOMPARE(qdbus_cast<QList<int>>(copy), (QList<int>{1, 2}));
}

void TestVariantContent::comparingCostsTheSameEachTime()
{
    const QVariant stored = received(handover("/a", "b"));
    const QVariant copy = stored;
    const auto fastestOfTen = [&] {
        qint64 fastest = std::numeric_limits<qint64>::max();
        for (int round = 0; round < 10; ++round) {
            const qint64 start = threadTime();
            for (int i = 0; i < 100; ++i)
                if (!sameContent(stored, copy))
                    return qint64(0);
            fastest = qMin(fastest, threadTime() - start);
        }
        return fastest;
    };
    const qint64 early = fastestOfTen();
    for (int i = 0; i < 20; ++i)
        QVERIFY(fastestOfTen() > 0);
    const qint64 late = fastestOfTen();
    QVERIFY2(late < 4 * early, qPrintable(QStringLiteral("%1 ns, then %2 ns").arg(early).arg(late)));
}

void TestVariantContent::descriptorsInsideAStructureAreToldApart()
{
    const auto pair = [](const QVariant &descriptor) {
        return structure([&](QDBusArgument &a) {
            a << QStringLiteral("carrier") << descriptor.value<QDBusUnixFileDescriptor>();
        });
    };
    const Pipe other;
    const QVariant stored = received(pair(pipe.end(0)));
    const QVariant copy = stored;
    QVERIFY(sameContent(stored, copy));
    QVERIFY(sameContent(stored, received(pair(pipe.end(0)))));
    QVERIFY(!sameContent(stored, received(pair(other.end(0)))));
}

void TestVariantContent::valueThatWasNeverSentDoesNotMatch()
{
    const QVariant written = handover("/a", "b");
    QVERIFY(!sameContent(received(written), written));
    QVERIFY(!sameContent(received(written), QVariant::fromValue(QDBusArgument())));
}

void TestVariantContent::invalidValueMatchesNoOther()
{
    QVERIFY(!sameContent(QVariant(), received(QString())));
    QVERIFY(!sameContent(received(QStringList()), QVariant()));
}

void TestVariantContent::valuesThatMatchHaveTheSameHash_data()
{
    addValues();
}

void TestVariantContent::valuesThatMatchHaveTheSameHash()
{
    QFETCH(QVariant, value);
    const QVariant first = received(value);
    const QVariant copy = first;
    const QVariant second = received(value);
    QCOMPARE(contentHash(first), contentHash(first));
    QCOMPARE(contentHash(copy), contentHash(first));
    QCOMPARE(contentHash(second), contentHash(first));
}

void TestVariantContent::equalNumbersOfDifferentTypesHaveTheSameHash()
{
    const QVariant numbers[] = {1, 1U, 1LL, 1ULL, 1.0, QVariant::fromValue(short(1)), true};
    for (const QVariant &number : numbers) {
        QVERIFY(sameContent(number, numbers[0]));
        QCOMPARE(contentHash(number), contentHash(numbers[0]));
        QCOMPARE(contentHash(QVariant::fromValue(QDBusVariant(number))),
                 contentHash(QVariant::fromValue(QDBusVariant(numbers[0]))));
    }
}

void TestVariantContent::hashTellsKeysApart()
{
    QSet<size_t> hashes;
    for (int i = 0; i < 100; ++i) {
        const QByteArray text = "/tag" + QByteArray::number(i);
        hashes << contentHash(QString::fromLatin1(text)) << contentHash(text)
               << contentHash(QVariant::fromValue(QDBusObjectPath(QString::fromLatin1(text))))
               << contentHash(received(handover(text, "oob")));
    }
    // Text and bytes may share a number, and chance may have it once more.
    QVERIFY2(hashes.size() >= 290, qPrintable(QString::number(hashes.size())));
}

QTEST_GUILESS_MAIN(TestVariantContent)
#include "tst_variantcontent.moc"
