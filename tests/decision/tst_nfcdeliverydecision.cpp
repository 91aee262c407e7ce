// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QFile>
#include <QHash>
#include <QMetaEnum>
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QNdefNfcUriRecord>
#include <QTest>

#include <NfcDeliveryDecision>

#include "publishedmessages.h"

using ConnUi::NfcDeliveryDecision;
using ConnUi::NfcTagContent;
using ConnUi::NfcTagRecord;

namespace {

QNdefRecord record(QNdefRecord::TypeNameFormat format, const QByteArray &type, const QByteArray &payload)
{
    QNdefRecord record;
    record.setTypeNameFormat(format);
    record.setType(type);
    record.setPayload(payload);
    return record;
}

QNdefRecord text(const QString &content)
{
    QNdefNfcTextRecord record;
    record.setText(content);
    return record;
}

QNdefRecord uri(const QByteArray &content)
{
    return record(QNdefRecord::NfcRtd, "U", QByteArray(1, 0) + content);
}

QNdefRecord poster(const QList<QNdefRecord> &content)
{
    return record(QNdefRecord::NfcRtd, "Sp", QNdefMessage(content).toByteArray());
}

QNdefRecord card()
{
    return record(QNdefRecord::Mime, "text/vcard", "BEGIN:VCARD\r\nEND:VCARD\r\n");
}

QByteArray bytes(const QList<QNdefRecord> &records)
{
    return QNdefMessage(records).toByteArray();
}

// The names of the contents of tags in the guide's table.
QByteArray tag(const QString &name)
{
    const QNdefRecord link = uri("https://www.example.org");
    const QHash<QString, QByteArray> tags = {
        {QStringLiteral("nothing"), {}},
        {QStringLiteral("an empty record"), bytes({record(QNdefRecord::Empty, {}, {})})},
        {QStringLiteral("no message"), "nonsense"},
        {QStringLiteral("bytes behind the end"), bytes({text(QStringLiteral("Hello"))}) + '\0'},
        {QStringLiteral("text"), bytes({text(QStringLiteral("Hello"))})},
        {QStringLiteral("contact card"), bytes({card()})},
        {QStringLiteral("web link"), bytes({link})},
        {QStringLiteral("suspicious link"), bytes({uri("https://www.example.org@evil.example")})},
        {QStringLiteral("service code"), bytes({uri("tel:%2A100%23")})},
        {QStringLiteral("smart poster"), bytes({poster({link, text(QStringLiteral("Title"))})})},
        {QStringLiteral("smart poster with more"),
         bytes({poster({link, record(QNdefRecord::Mime, "a/b", "?")})})},
        {QStringLiteral("smart poster with two links"), bytes({poster({link, uri("tel:112")})})},
        {QStringLiteral("text and number"), bytes({text(QStringLiteral("Hello")), uri("tel:112")})},
        {QStringLiteral("number"), bytes({uri("tel:112")})},
        {QStringLiteral("message"), bytes({uri("sms:112?body=Hi")})},
        {QStringLiteral("other link"), bytes({uri("geo:1,2")})},
        {QStringLiteral("store link"),
         bytes({record(QNdefRecord::ExternalRtd, "example.org:ruvostore:link", "1")})},
        {QStringLiteral("other data"), bytes({record(QNdefRecord::Mime, "application/x-notes", "1")})},
    };
    if (!tags.contains(name))
        qFatal("The guide speaks of a tag with %s", qPrintable(name));
    return tags.value(name);
}

QStringList cells(const QString &row)
{
    QStringList cells = row.mid(1, row.lastIndexOf(u'|') - 1).split(u'|');
    for (QString &cell : cells)
        cell = cell.trimmed();
    return cells;
}

// The rows of the table, without its head.
QList<QStringList> guideTable()
{
    QFile guide(QStringLiteral(CLIENT_GUIDE));
    if (!guide.open(QIODevice::ReadOnly))
        qFatal("No guide: %s", qPrintable(guide.errorString()));
    QList<QStringList> rows;
    bool isInside = false;
    const QStringList lines = QString::fromUtf8(guide.readAll()).split(u'\n');
    for (const QString &line : lines)
        if (line.startsWith(QLatin1String("| on the tag |")))
            isInside = true;
        else if (isInside && !line.startsWith(u'|'))
            break;
        else if (isInside && !line.startsWith(QLatin1String("| ---")))
            rows.append(cells(line));
    return rows;
}

QStringList names(const QString &cell)
{
    return cell == QLatin1String("-") ? QStringList() : cell.split(QStringLiteral(", "));
}

QString words(NfcDeliveryDecision::Question question)
{
    const QHash<NfcDeliveryDecision::Question, QString> words = {
        {NfcDeliveryDecision::Link, QStringLiteral("web link")},
        {NfcDeliveryDecision::Number, QStringLiteral("number")},
        {NfcDeliveryDecision::Message, QStringLiteral("message")},
        {NfcDeliveryDecision::Text, QStringLiteral("text")},
        {NfcDeliveryDecision::ContactCard, QStringLiteral("contact")},
        {NfcDeliveryDecision::StoreLink, QStringLiteral("store link")},
        {NfcDeliveryDecision::OtherContent, QStringLiteral("content")},
    };
    return words.value(question);
}

QString words(const NfcDeliveryDecision &decision)
{
    switch (decision.outcome()) {
    case NfcDeliveryDecision::Refuse:
        return QStringLiteral("notice, rejected");
    case NfcDeliveryDecision::AcceptEmpty:
        return QStringLiteral("notice, granted");
    case NfcDeliveryDecision::Forward:
        return QStringLiteral("unasked to ") + decision.applications().join(QStringLiteral(", "));
    case NfcDeliveryDecision::Ask:
        break;
    }
    const QString asked =
        QStringLiteral("asked as %1, offers %2")
            .arg(words(decision.question()), decision.applications().join(QStringLiteral(", ")));
    return decision.hasDirectAction() ? asked + QStringLiteral(", or to act") : asked;
}

// Each record: its kind, and its text or else its type.
QStringList words(const NfcTagContent &content)
{
    QStringList words;
    const QList<NfcTagRecord> records = content.records();
    for (const NfcTagRecord &record : records) {
        const bool hasText = record.kind() == NfcTagRecord::Uri || record.kind() == NfcTagRecord::Text;
        const char *const kinds[] = {"Uri", "Text", "ContactCard", "StoreLink", "Other"};
        words.append(QLatin1String(kinds[record.kind()]) + QLatin1Char(' ') +
                     (hasText ? record.text() : record.type()));
    }
    return words;
}

} // namespace

class TestNfcDeliveryDecision : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void decisionIsAsTheGuideSays_data();
    void decisionIsAsTheGuideSays();
    void applicationIsOfferedOnce();
    void handlerBeyondTheLastIsNotInFront();
    void copyIsDecidedApart();
    void schemeInCapitalsIsTheSame_data();
    void schemeInCapitalsIsTheSame();
    void publishedMessageIsUnderstood_data();
    void publishedMessageIsUnderstood();
};

void TestNfcDeliveryDecision::decisionIsAsTheGuideSays_data()
{
    QTest::addColumn<NfcDeliveryDecision>("decision");
    QTest::addColumn<QString>("outcome");

    const QList<QStringList> rows = guideTable();
    QVERIFY(rows.size() > 20);
    for (const QStringList &row : rows) {
        QCOMPARE(row.size(), 7);
        const QStringList handlers = names(row[1]);
        NfcDeliveryDecision decision{NfcTagContent(tag(row[0]))};
        decision.setHandlers(handlers);
        decision.setForegroundHandler(int(handlers.indexOf(row[2])));
        decision.setDefaultApplication(row[3] == QLatin1String("-") ? QString() : row[3]);
        decision.setConfirmationEnabled(row[4] == QLatin1String("yes"));
        decision.setSessionLocked(row[5] == QLatin1String("yes"));
        QTest::newRow(qPrintable(row.join(QStringLiteral(", ")))) << decision << row[6];
    }
}

void TestNfcDeliveryDecision::decisionIsAsTheGuideSays()
{
    QFETCH(NfcDeliveryDecision, decision);
    QFETCH(QString, outcome);
    QCOMPARE(words(decision), outcome);
}

void TestNfcDeliveryDecision::applicationIsOfferedOnce()
{
    NfcDeliveryDecision decision{NfcTagContent(tag(QStringLiteral("other data")))};
    decision.setHandlers({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a")});
    decision.setForegroundHandler(1);
    QCOMPARE(decision.applications(), (QStringList{QStringLiteral("b"), QStringLiteral("a")}));
}

void TestNfcDeliveryDecision::handlerBeyondTheLastIsNotInFront()
{
    NfcDeliveryDecision decision{NfcTagContent(tag(QStringLiteral("web link")))};
    decision.setHandlers({QStringLiteral("a"), QStringLiteral("b")});
    decision.setConfirmationEnabled(false);
    decision.setForegroundHandler(2);
    QCOMPARE(words(decision), QStringLiteral("asked as web link, offers a, b"));
}

void TestNfcDeliveryDecision::copyIsDecidedApart()
{
    NfcDeliveryDecision decision{NfcTagContent(tag(QStringLiteral("text")))};
    decision.setHandlers({QStringLiteral("a")});
    NfcDeliveryDecision unasked(decision);
    unasked.setConfirmationEnabled(false);
    QCOMPARE(words(decision), QStringLiteral("asked as text, offers a"));
    QCOMPARE(words(unasked), QStringLiteral("unasked to a"));
}

void TestNfcDeliveryDecision::schemeInCapitalsIsTheSame_data()
{
    QTest::addColumn<QByteArray>("uri");
    QTest::addColumn<QString>("outcome");
    QTest::newRow("web") << QByteArrayLiteral("HTTPS://www.example.org")
                         << QStringLiteral("asked as web link, offers a");
    QTest::newRow("number") << QByteArrayLiteral("TEL:112")
                            << QStringLiteral("asked as number, offers a, or to act");
    QTest::newRow("old number") << QByteArrayLiteral("CallTo:112")
                                << QStringLiteral("asked as number, offers a, or to act");
    QTest::newRow("message") << QByteArrayLiteral("Sms:112")
                             << QStringLiteral("asked as message, offers a, or to act");
    QTest::newRow("blanks") << QByteArrayLiteral(" \t\ntel:112")
                            << QStringLiteral("asked as number, offers a, or to act");
    QTest::newRow("no scheme") << QByteArrayLiteral("www.example.org")
                               << QStringLiteral("asked as web link, offers a");
    QTest::newRow("looks like the web")
        << QByteArrayLiteral("httpx://www.example.org") << QStringLiteral("asked as content, offers a");
}

void TestNfcDeliveryDecision::schemeInCapitalsIsTheSame()
{
    QFETCH(QByteArray, uri);
    QFETCH(QString, outcome);
    NfcDeliveryDecision decision{NfcTagContent(bytes({::uri(uri)}))};
    decision.setHandlers({QStringLiteral("a")});
    decision.setDefaultApplication(QStringLiteral("d"));
    QCOMPARE(words(decision), outcome);
}

void TestNfcDeliveryDecision::publishedMessageIsUnderstood_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("outcome");
    for (const PublishedMessage &message : publishedMessages)
        QTest::newRow(message.name) << QByteArray(message.hex) << QString::fromUtf8(message.content)
                                    << QString::fromUtf8(message.outcome);
}

void TestNfcDeliveryDecision::publishedMessageIsUnderstood()
{
    QFETCH(QByteArray, hex);
    QFETCH(QString, content);
    QFETCH(QString, outcome);
    const NfcTagContent tag(QByteArray::fromHex(hex));
    QVERIFY(tag.isWellFormed());
    QCOMPARE(words(tag).join(u'|'), content);

    NfcDeliveryDecision decision(tag);
    decision.setHandlers({QStringLiteral("a")});
    decision.setDefaultApplication(QStringLiteral("d"));
    QCOMPARE(words(decision), outcome);
}

QTEST_GUILESS_MAIN(TestNfcDeliveryDecision)
#include "tst_nfcdeliverydecision.moc"
