// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>
#include <optional>

#include <QTest>

#include <NfcReplyOrder>

#include "core/bluetoothrequest.h"

class TestBluetoothRequest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pinIsShownWhereThereIsOne_data();
    void pinIsShownWhereThereIsOne();
    void answerIsReplied_data();
    void answerIsReplied();

private:
    std::unique_ptr<BluetoothRequest> requestFor(const QString &pin);

    std::shared_ptr<ConnUi::NfcReplyOrder> order = std::make_shared<ConnUi::NfcReplyOrder>();
    QString reply;
};

std::unique_ptr<BluetoothRequest> TestBluetoothRequest::requestFor(const QString &pin)
{
    const auto target = QStringLiteral("/target");
    reply.clear();
    const PendingReply replies(
        order, target, [this] { reply = QStringLiteral("granted"); },
        [this] { reply = QStringLiteral("rejected"); });
    const TouchedDevice device{QStringLiteral("00:11:22:33:44:55"), QStringLiteral("Headset"), 0, pin};
    return std::make_unique<BluetoothRequest>(Request::Pairing, target, device, replies);
}

// Without a catalogue the texts are their ids.
void TestBluetoothRequest::pinIsShownWhereThereIsOne_data()
{
    QTest::addColumn<QString>("pin");
    QTest::addColumn<qsizetype>("notes");
    QTest::newRow("none") << QString() << qsizetype(1);
    QTest::newRow("digits") << QStringLiteral("1234") << qsizetype(2);
}

void TestBluetoothRequest::pinIsShownWhereThereIsOne()
{
    QFETCH(QString, pin);
    QFETCH(qsizetype, notes);
    const std::unique_ptr<BluetoothRequest> request = requestFor(pin);
    std::optional<Question> asked;
    connect(request.get(), &Request::asks, this, [&](const Question &question) { asked = question; });
    request->begin();
    QVERIFY(asked);
    QCOMPARE(asked->kind, Question::Pairing);
    QCOMPARE(asked->notes.size(), notes);
    QVERIFY(asked->notes.constFirst().startsWith(QStringLiteral("qtn_nfc_pair_text")));
    QCOMPARE(asked->notes.constLast().startsWith(QStringLiteral("qtn_nfc_pair_pin")), notes == 2);
    request->decide({Answer::No, {}});
}

void TestBluetoothRequest::answerIsReplied_data()
{
    QTest::addColumn<int>("choice");
    QTest::addColumn<QString>("expected");
    QTest::newRow("yes") << int(Answer::Yes) << QStringLiteral("granted");
    QTest::newRow("no") << int(Answer::No) << QStringLiteral("rejected");
}

void TestBluetoothRequest::answerIsReplied()
{
    QFETCH(int, choice);
    QFETCH(QString, expected);
    const std::unique_ptr<BluetoothRequest> request = requestFor(QString());
    request->begin();
    QCOMPARE(reply, QString());
    request->decide({Answer::Choice(choice), {}});
    QCOMPARE(reply, expected);
}

QTEST_GUILESS_MAIN(TestBluetoothRequest)

#include "tst_bluetoothrequest.moc"
