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
    void questionSaysWhatTheDaemonAsks_data();
    void questionSaysWhatTheDaemonAsks();

private:
    std::unique_ptr<BluetoothRequest> requestFor(const QString &pin, Request::Kind kind = Request::Pairing);

    std::shared_ptr<ConnUi::NfcReplyOrder> order = std::make_shared<ConnUi::NfcReplyOrder>();
    QString reply;
};

std::unique_ptr<BluetoothRequest> TestBluetoothRequest::requestFor(const QString &pin, Request::Kind kind)
{
    const auto target = QStringLiteral("/target");
    reply.clear();
    const PendingReply replies(
        order, target, [this] { reply = QStringLiteral("granted"); },
        [this] { reply = QStringLiteral("rejected"); });
    const TouchedDevice device{QStringLiteral("00:11:22:33:44:55"), QStringLiteral("Headset"), 0x240404, pin};
    return std::make_unique<BluetoothRequest>(kind, target, device, replies);
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

void TestBluetoothRequest::questionSaysWhatTheDaemonAsks_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("asked");
    QTest::addColumn<QStringList>("words");
    QTest::newRow("pairing") << int(Request::Pairing) << int(Question::Pairing)
                             << QStringList{QStringLiteral("qtn_nfc_pair_tit"),
                                            QStringLiteral("qtn_nfc_pair_text"),
                                            QStringLiteral("qtn_nfc_pair")};
    QTest::newRow("connection") << int(Request::Connection) << int(Question::Connection)
                                << QStringList{QStringLiteral("qtn_nfc_connect_to_tit"),
                                               QStringLiteral("qtn_nfc_connect_text"),
                                               QStringLiteral("qtn_nfc_connect")};
    QTest::newRow("disconnection") << int(Request::Disconnection) << int(Question::Disconnection)
                                   << QStringList{QStringLiteral("qtn_nfc_disconnect_tit"),
                                                  QStringLiteral("qtn_nfc_disconnect_text"),
                                                  QStringLiteral("qtn_nfc_disconnect")};
}

void TestBluetoothRequest::questionSaysWhatTheDaemonAsks()
{
    QFETCH(int, kind);
    const std::unique_ptr<BluetoothRequest> request = requestFor(QString(), Request::Kind(kind));
    Question question;
    connect(request.get(), &Request::asks, this, [&](const Question &asked) { question = asked; });
    request->begin();
    QTEST(int(question.kind), "asked");
    const QStringList words{question.title, question.notes.value(0), question.yes};
    QTEST(words, "words");
    QCOMPARE(question.no, QStringLiteral("qtn_comm_cancel"));
    QCOMPARE(question.deviceClass, 0x240404U);
    request->decide({Answer::No, {}});
}

QTEST_GUILESS_MAIN(TestBluetoothRequest)

#include "tst_bluetoothrequest.moc"
