// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <csignal>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include "core/terminationsignals.h"

namespace {

constexpr int notEnded = 99;

int runApplication()
{
    QTimer::singleShot(20000, qApp, [] { QCoreApplication::exit(notEnded); });
    return QCoreApplication::exec();
}

} // namespace

/** Whether a signal ends the program, whenever it comes. */
class TestTerminationSignals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void signalBeforeTheWatchEndsTheApplication_data() { addSignals(); }
    void signalBeforeTheWatchEndsTheApplication();
    void signalInALoopBeforeThatOfTheApplicationEndsBoth_data() { addSignals(); }
    void signalInALoopBeforeThatOfTheApplicationEndsBoth();
    void signalEndsLoopsInEachOther();

private:
    static void addSignals();
};

void TestTerminationSignals::addSignals()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGHUP") << SIGHUP;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void TestTerminationSignals::signalBeforeTheWatchEndsTheApplication()
{
    QFETCH(int, number);
    TerminationSignals termination;
    std::raise(number);
    termination.watch();
    QCOMPARE(runApplication(), 0);
}

void TestTerminationSignals::signalInALoopBeforeThatOfTheApplicationEndsBoth()
{
    QFETCH(int, number);
    TerminationSignals termination;
    termination.watch();
    std::raise(number);
    QEventLoop early;
    QTimer::singleShot(20000, &early, [&early] { early.exit(notEnded); });
    QCOMPARE(early.exec(), 0);
    QCOMPARE(runApplication(), 0);
}

void TestTerminationSignals::signalEndsLoopsInEachOther()
{
    TerminationSignals termination;
    termination.watch();
    int inner = notEnded;
    QTimer::singleShot(0, qApp, [&inner] {
        QEventLoop loop;
        std::raise(SIGTERM);
        inner = loop.exec();
    });
    QCOMPARE(runApplication(), 0);
    QCOMPARE(inner, 0);
}

QTEST_GUILESS_MAIN(TestTerminationSignals)

#include "tst_terminationsignals.moc"
