// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QDBusError>
#include <QEventLoop>
#include <QPointer>
#include <QTest>
#include <QVariant>

#include "bus/nfcpendingcall_p.h"
#include "nfcpendingcall.h"
#include "outcome.h"

using ConnUi::NfcPendingCall;
using ConnUi::NfcPendingCallPrivate;

namespace {

const QDBusError failure(QDBusError::AccessDenied, QStringLiteral("No"));

} // namespace

class TestNfcPendingCall : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void newCallIsNotFinished();
    void successHasAValue();
    void failureHasNameTextAndValue();
    void finishedCallDeletesItself();
    void knownOutcomeIsAnnouncedFromTheEventLoop();
    void callBelongsToItsMakerOrTheApplication();
    void deletedCallIsSilent();
    void slotMayDeleteTheCall();
    void slotMayWaitInAnEventLoop();
};

void TestNfcPendingCall::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestNfcPendingCall::newCallIsNotFinished()
{
    const std::unique_ptr<NfcPendingCall> call(NfcPendingCallPrivate::create());
    QVERIFY(!call->isFinished());
    QVERIFY(!call->isError());
    QVERIFY(!call->value().isValid());
}

void TestNfcPendingCall::successHasAValue()
{
    const Outcome outcome(NfcPendingCallPrivate::create());
    NfcPendingCallPrivate::finish(outcome.call, 7, {});
    QCOMPARE(outcome.times, 1);
    QCOMPARE(outcome.value, QVariant(7));
    QVERIFY(outcome.call->isFinished());
    QVERIFY(!outcome.call->isError());
}

void TestNfcPendingCall::failureHasNameTextAndValue()
{
    const Outcome outcome(NfcPendingCallPrivate::create());
    NfcPendingCallPrivate::finish(outcome.call, false, failure);
    QCOMPARE(outcome.times, 1);
    QCOMPARE(outcome.value, QVariant(false));
    QCOMPARE(outcome.error, QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"));
    QCOMPARE(outcome.message, QStringLiteral("No"));
    QVERIFY(outcome.call->isFinished());
    QVERIFY(outcome.call->isError());
}

void TestNfcPendingCall::finishedCallDeletesItself()
{
    const Outcome outcome(NfcPendingCallPrivate::create());
    NfcPendingCallPrivate::finish(outcome.call, {}, {});
    QTRY_VERIFY(!outcome.call);
    QCOMPARE(outcome.times, 1);
}

void TestNfcPendingCall::knownOutcomeIsAnnouncedFromTheEventLoop()
{
    const Outcome outcome(NfcPendingCallPrivate::createFinished(nullptr, true, failure));
    QVERIFY(outcome.call->isFinished());
    QVERIFY(outcome.call->isError());
    QCOMPARE(outcome.call->value(), QVariant(true));
    QCOMPARE(outcome.times, 0);
    QTRY_VERIFY(!outcome.call);
    QCOMPARE(outcome.times, 1);
    QCOMPARE(outcome.value, QVariant(true));
    QCOMPARE(outcome.message, QStringLiteral("No"));
}

void TestNfcPendingCall::callBelongsToItsMakerOrTheApplication()
{
    auto maker = std::make_unique<QObject>();
    const Outcome made(NfcPendingCallPrivate::createFinished(maker.get(), true));
    maker.reset();
    QVERIFY(!made.call);
    QCoreApplication::processEvents();
    QCOMPARE(made.times, 0);

    const std::unique_ptr<NfcPendingCall> call(NfcPendingCallPrivate::create());
    QCOMPARE(call->parent(), QCoreApplication::instance());
}

void TestNfcPendingCall::deletedCallIsSilent()
{
    const Outcome outcome(NfcPendingCallPrivate::create());
    delete outcome.call;
    NfcPendingCallPrivate::finish(outcome.call, true, {});
    QCOMPARE(outcome.times, 0);
}

void TestNfcPendingCall::slotMayDeleteTheCall()
{
    const QPointer<NfcPendingCall> call(NfcPendingCallPrivate::create());
    connect(call, &NfcPendingCall::finished, this, [](NfcPendingCall *finished) { delete finished; });
    NfcPendingCallPrivate::finish(call, {}, {});
    QVERIFY(!call);
}

void TestNfcPendingCall::slotMayWaitInAnEventLoop()
{
    QPointer<NfcPendingCall> call(NfcPendingCallPrivate::createFinished(nullptr, 7));
    QVariant value;
    connect(call, &NfcPendingCall::finished, this, [&value](const NfcPendingCall *finished) {
        QEventLoop loop;
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        loop.exec();
        value = finished->value();
    });
    QTRY_VERIFY(!call);
    QCOMPARE(value, QVariant(7));
}

QTEST_GUILESS_MAIN(TestNfcPendingCall)

#include "tst_nfcpendingcall.moc"
