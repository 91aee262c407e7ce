// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QRegularExpression>
#include <QTest>

#include "daemon/tags/limitedexchange.h"

namespace {

/** A tag whose answers are of one size and take one time. */
class SteadyTag : public Exchange
{
public:
    SteadyTag(qsizetype size, qint64 milliseconds) : size(size), milliseconds(milliseconds) {}

    std::optional<QByteArray> transceive(const QByteArray &) override
    {
        ++commands;
        now += milliseconds;
        return QByteArray(size, 'a');
    }

    LimitedExchange::Clock clock()
    {
        return [this] { return now; };
    }

    int commands = 0;

private:
    const qsizetype size;
    const qint64 milliseconds;
    qint64 now = 1000;
};

} // namespace

class TestLimitedExchange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void commandsAreCounted();
    void bytesAreCounted();
    void timeIsLimited();
    void lateAnswerDoesNotCount();
    void answerWithoutAByteEndsIt();

private:
    static int answers(LimitedExchange &exchange)
    {
        int count = 0;
        while (count < 100000 && exchange.transceive("?"))
            ++count;
        return count;
    }
};

void TestLimitedExchange::commandsAreCounted()
{
    SteadyTag tag(2, 1);
    LimitedExchange exchange(tag, tag.clock());
    QCOMPARE(answers(exchange), 300);
    QVERIFY(exchange.isExhausted());
    QCOMPARE(tag.commands, 300);
}

void TestLimitedExchange::bytesAreCounted()
{
    SteadyTag tag(1024, 1);
    LimitedExchange exchange(tag, tag.clock());
    QCOMPARE(answers(exchange), 64);
    QVERIFY(exchange.isExhausted());
}

void TestLimitedExchange::timeIsLimited()
{
    SteadyTag tag(2, 100);
    LimitedExchange exchange(tag, tag.clock());
    QCOMPARE(answers(exchange), 49);
    QVERIFY(exchange.isExhausted());
}

void TestLimitedExchange::lateAnswerDoesNotCount()
{
    SteadyTag tag(2, 5000);
    LimitedExchange exchange(tag, tag.clock());
    QCOMPARE(answers(exchange), 0);
    QVERIFY(exchange.isExhausted());
}

void TestLimitedExchange::answerWithoutAByteEndsIt()
{
    SteadyTag tag(0, 1);
    LimitedExchange exchange(tag, tag.clock());
    QCOMPARE(answers(exchange), 0);
    QCOMPARE(answers(exchange), 0);
    QVERIFY(!exchange.isExhausted());
    QCOMPARE(tag.commands, 1);
}

QTEST_GUILESS_MAIN(TestLimitedExchange)

#include "tst_limitedexchange.moc"
