// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QFile>
#include <QHash>
#include <QMetaEnum>
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QNdefNfcUriRecord>
#include <QTest>

#include "core/decision.h"

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

QString words(Question::Kind kind)
{
    const QHash<Question::Kind, QString> words = {
        {Question::Link, QStringLiteral("web link")},
        {Question::Number, QStringLiteral("number")},
        {Question::Message, QStringLiteral("message")},
        {Question::Text, QStringLiteral("text")},
        {Question::ContactCard, QStringLiteral("contact")},
        {Question::StoreLink, QStringLiteral("store link")},
        {Question::OtherContent, QStringLiteral("content")},
    };
    return words.value(kind);
}

QString words(const Decision &decision)
{
    switch (decision.outcome) {
    case Decision::Refuse:
        return QStringLiteral("notice, rejected");
    case Decision::AcceptEmpty:
        return QStringLiteral("notice, granted");
    case Decision::Forward:
        return QStringLiteral("unasked to ") + decision.applications.join(QStringLiteral(", "));
    case Decision::Ask:
        break;
    }
    const QString asked =
        QStringLiteral("asked as %1, offers %2")
            .arg(words(decision.question), decision.applications.join(QStringLiteral(", ")));
    return decision.hasDirectAction ? asked + QStringLiteral(", or to act") : asked;
}

// Each record: its kind, and its text or else its type.
QStringList words(const TagContent &content)
{
    QStringList words;
    for (const TagRecord &record : content.records) {
        const bool hasText = record.kind == TagRecord::Uri || record.kind == TagRecord::Text;
        const char *const kinds[] = {"Uri", "Text", "ContactCard", "StoreLink", "Other"};
        words.append(QLatin1String(kinds[record.kind]) + QLatin1Char(' ') +
                     (hasText ? record.text : record.type));
    }
    return words;
}

} // namespace

class TestDecision : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void decisionIsAsTheGuideSays_data();
    void decisionIsAsTheGuideSays();
    void applicationIsOfferedOnce();
    void schemeInCapitalsIsTheSame_data();
    void schemeInCapitalsIsTheSame();
    void publishedMessageIsUnderstood_data();
    void publishedMessageIsUnderstood();
};

void TestDecision::decisionIsAsTheGuideSays_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<Circumstances>("circumstances");
    QTest::addColumn<QString>("outcome");

    const QList<QStringList> rows = guideTable();
    QVERIFY(rows.size() > 20);
    for (const QStringList &row : rows) {
        QCOMPARE(row.size(), 7);
        const QStringList handlers = names(row[1]);
        Circumstances circumstances;
        circumstances.handlers = handlers;
        circumstances.inFront = int(handlers.indexOf(row[2]));
        circumstances.desktop = row[3] == QLatin1String("-") ? QString() : row[3];
        circumstances.wantsToBeAsked = row[4] == QLatin1String("yes");
        circumstances.isLocked = row[5] == QLatin1String("yes");
        QTest::newRow(qPrintable(row.join(QStringLiteral(", ")))) << tag(row[0]) << circumstances << row[6];
    }
}

void TestDecision::decisionIsAsTheGuideSays()
{
    QFETCH(QByteArray, message);
    QFETCH(Circumstances, circumstances);
    QFETCH(QString, outcome);
    QCOMPARE(words(decide(readTag(message), circumstances)), outcome);
}

void TestDecision::applicationIsOfferedOnce()
{
    Circumstances circumstances;
    circumstances.handlers = {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a")};
    circumstances.inFront = 1;
    QCOMPARE(decide(readTag(tag(QStringLiteral("other data"))), circumstances).applications,
             (QStringList{QStringLiteral("b"), QStringLiteral("a")}));
}

void TestDecision::schemeInCapitalsIsTheSame_data()
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

void TestDecision::schemeInCapitalsIsTheSame()
{
    QFETCH(QByteArray, uri);
    QFETCH(QString, outcome);
    Circumstances circumstances;
    circumstances.handlers = QStringList{QStringLiteral("a")};
    circumstances.desktop = QStringLiteral("d");
    QCOMPARE(words(decide(readTag(bytes({::uri(uri)})), circumstances)), outcome);
}

// Messages as the NFC Forum's and others' papers describe them, and those of QtNfc's tests.
void TestDecision::publishedMessageIsUnderstood_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QStringList>("content");
    QTest::addColumn<QString>("outcome");
    QTest::newRow("URI RTD 1.0: a simple URL") << QByteArrayLiteral("d1010855016e66632e636f6d")
                                               << QStringList{QStringLiteral("Uri http://www.nfc.com")}
                                               << QStringLiteral("asked as web link, offers a");
    QTest::newRow("URI RTD 1.0: a telephone number")
        << QByteArrayLiteral("d1010d55052b3335383931323334353637")
        << QStringList{QStringLiteral("Uri tel:+35891234567")}
        << QStringLiteral("asked as number, offers a, or to act");
    QTest::newRow("URI RTD 1.0: a scheme without a code")
        << QByteArrayLiteral("d1011f55006d6d733a2f2f6578616d706c652e636f6d2f646f776e6c6f61642e776d76")
        << QStringList{QStringLiteral("Uri mms://example.com/download.wmv")}
        << QStringLiteral("asked as content, offers a");
    QTest::newRow("Text RTD 1.0: English, UTF-8")
        << QByteArrayLiteral("d101105402656e48656c6c6f2c20776f726c6421")
        << QStringList{QStringLiteral("Text Hello, world!")} << QStringLiteral("asked as text, offers a");
    QTest::newRow("Smart Poster RTD 1.1: a link alone")
        << QByteArrayLiteral("d102125370d1010e55016e66632d666f72756d2e6f7267")
        << QStringList{QStringLiteral("Uri http://www.nfc-forum.org")}
        << QStringLiteral("asked as web link, offers a");
    QTest::newRow("Smart Poster RTD 1.1: titles, action, size, type")
        << QByteArrayLiteral(
               "d10253537091011655036578616d706c652e636f6d2f617564696f2e6d70331101085402656e4d7573696311010c5"
               "40266694d757369696b6b696111030161637400110104730000100051010a74617564696f2f6d706567")
        << QStringList{QStringLiteral("Uri http://example.com/audio.mp3")}
        << QStringLiteral("asked as web link, offers a");
    QTest::newRow("Smart Poster RTD 1.1: an icon")
        << QByteArrayLiteral(
               "d10224537091010c55016578616d706c652e636f6d520908696d6167652f706e6789504e470d0a1a0a")
        << QStringList{QStringLiteral("Uri http://www.example.com")}
        << QStringLiteral("asked as web link, offers a");
    QTest::newRow("NDEF 1.0: the empty message")
        << QByteArrayLiteral("d00000") << QStringList{} << QStringLiteral("notice, granted");
    QTest::newRow("NDEF 1.0: an absolute URI as the type")
        << QByteArrayLiteral("d31704687474703a2f2f7777772e6578616d706c652e6f72672f3c702f3e")
        << QStringList{QStringLiteral("Uri http://www.example.org/")}
        << QStringLiteral("asked as web link, offers a");
    QTest::newRow("NDEF 1.0: a payload of unknown type")
        << QByteArrayLiteral("d500020102") << QStringList{QStringLiteral("Other ")}
        << QStringLiteral("asked as content, offers a");
    QTest::newRow("NDEF 1.0: a record with an identifier, in the long form")
        << QByteArrayLiteral("c9010000000501543102656e4869") << QStringList{QStringLiteral("Text Hi")}
        << QStringLiteral("asked as text, offers a");
    QTest::newRow("Connection Handover 1.2: select, Bluetooth")
        << QByteArrayLiteral("91020a487312d102046163010130005a2008016170706c69636174696f6e2f766e642e626c75657"
                             "46f6f74682e65702e6f6f6230080003078088bf01")
        << QStringList{QStringLiteral("Other Hs"), QStringLiteral("Other application/vnd.bluetooth.ep.oob")}
        << QStringLiteral("asked as content, offers a");
    QTest::newRow("Bluetooth Secure Simple Pairing using NFC 1.0: a device's data alone")
        << QByteArrayLiteral(
               "d220086170706c69636174696f6e2f766e642e626c7565746f6f74682e65702e6f6f62080003078088bf01")
        << QStringList{QStringLiteral("Other application/vnd.bluetooth.ep.oob")}
        << QStringLiteral("asked as content, offers a");
    QTest::newRow("Connection Handover 1.2: request")
        << QByteArrayLiteral("910211487212910202637201025102046163010130005a2008016170706c69636174696f6e2f766"
                             "e642e626c7565746f6f74682e65702e6f6f6230080003078088bf01")
        << QStringList{QStringLiteral("Other Hr"), QStringLiteral("Other application/vnd.bluetooth.ep.oob")}
        << QStringLiteral("asked as content, offers a");
    QTest::newRow("Signature RTD 2.0: a signed link")
        << QByteArrayLiteral("91010c55026578616d706c652e636f6d510306536967200002000000")
        << QStringList{QStringLiteral("Uri https://www.example.com"), QStringLiteral("Other Sig")}
        << QStringLiteral("asked as web link, offers a");
    QTest::newRow("Wi-Fi Simple Configuration 2.0: a network")
        << QByteArrayLiteral("d217096170706c69636174696f6e2f766e642e7766612e777363100e00041026000101")
        << QStringList{QStringLiteral("Other application/vnd.wfa.wsc")}
        << QStringLiteral("asked as content, offers a");
    QTest::newRow("RFC 2426: a card")
        << QByteArrayLiteral("d20c2d746578742f782d7663617264424547494e3a56434152440d0a56455253494f4e3a332e300"
                             "d0a464e3a4164610d0a454e443a56434152440d0a")
        << QStringList{QStringLiteral("ContactCard text/x-vcard")}
        << QStringLiteral("asked as contact, offers a");
    QTest::newRow("RFC 6350: a card")
        << QByteArrayLiteral("d20a2d746578742f7663617264424547494e3a56434152440d0a56455253494f4e3a342e300d0a4"
                             "64e3a4164610d0a454e443a56434152440d0a")
        << QStringList{QStringLiteral("ContactCard text/vcard")}
        << QStringLiteral("asked as contact, offers a");
    QTest::newRow("RFC 5870: a place")
        << QByteArrayLiteral("d10118550067656f3a34382e323031302c31362e333639352c313833")
        << QStringList{QStringLiteral("Uri geo:48.2010,16.3695,183")}
        << QStringLiteral("asked as content, offers a");
    QTest::newRow("RFC 6068: a letter")
        << QByteArrayLiteral("d1011c55066c697374406578616d706c652e6f72673f7375626a6563743d4869")
        << QStringList{QStringLiteral("Uri mailto:list@example.org?subject=Hi")}
        << QStringLiteral("asked as content, offers a");
    QTest::newRow("RFC 5724: a message")
        << QByteArrayLiteral(
               "d101245500736d733a2b31353130353535303130313f626f64793d68656c6c6f2532307468657265")
        << QStringList{QStringLiteral("Uri sms:+15105550101?body=hello%20there")}
        << QStringLiteral("asked as message, offers a, or to act");
    QTest::newRow("an application's package behind a link, as phones write it")
        << QByteArrayLiteral("91010e55046578616d706c652e6f72672f61540f0f616e64726f69642e636f6d3a706b676f72672"
                             "e6578616d706c652e617070")
        << QStringList{QStringLiteral("Uri https://example.org/a"), QStringLiteral("Other android.com:pkg")}
        << QStringLiteral("asked as web link, offers a");
    QTest::newRow("QtNfc: text, en_US, UTF-8")
        << QByteArrayLiteral("d101115405656e5f55535465737420537472696e67")
        << QStringList{QStringLiteral("Text Test String")} << QStringLiteral("asked as text, offers a");
    QTest::newRow("QtNfc: text, en_US, UTF-16")
        << QByteArrayLiteral("d1011e5485656e5f5553feff005400650073007400200053007400720069006e0067")
        << QStringList{QStringLiteral("Text Test String")} << QStringLiteral("asked as text, offers a");
    QTest::newRow("QtNfc: text, ja_JP, UTF-8")
        << QByteArrayLiteral("d1011854056a615f4a50e38386e382b9e38388e69687e5ad97e58897")
        << QStringList{QStringLiteral("Text テスト文字列")} << QStringLiteral("asked as text, offers a");
    QTest::newRow("QtNfc: text, ja_JP, UTF-16")
        << QByteArrayLiteral("d1011454856a615f4a50feff30c630b930c865875b575217")
        << QStringList{QStringLiteral("Text テスト文字列")} << QStringLiteral("asked as text, offers a");
    QTest::newRow("QtNfc: link") << QByteArrayLiteral("d10110550371742d70726f6a6563742e6f72672f")
                                 << QStringList{QStringLiteral("Uri http://qt-project.org/")}
                                 << QStringLiteral("asked as web link, offers a");
    QTest::newRow("QtNfc: number") << QByteArrayLiteral("d1010c55052b31323334353637383930")
                                   << QStringList{QStringLiteral("Uri tel:+1234567890")}
                                   << QStringLiteral("asked as number, offers a, or to act");
    QTest::newRow("QtNfc: letter") << QByteArrayLiteral("d10111550674657374406578616d706c652e636f6d")
                                   << QStringList{QStringLiteral("Uri mailto:test@example.com")}
                                   << QStringLiteral("asked as content, offers a");
    QTest::newRow("QtNfc: name") << QByteArrayLiteral(
                                        "d1011c55136e66633a6578743a71742d70726f6a6563742e6f72673a74657374")
                                 << QStringList{QStringLiteral("Uri urn:nfc:ext:qt-project.org:test")}
                                 << QStringLiteral("asked as content, offers a");
    QTest::newRow("QtNfc: type and payload")
        << QByteArrayLiteral("d40407747970657061796c6f6164") << QStringList{QStringLiteral("Other type")}
        << QStringLiteral("asked as content, offers a");
}

void TestDecision::publishedMessageIsUnderstood()
{
    QFETCH(QByteArray, hex);
    QFETCH(QStringList, content);
    QFETCH(QString, outcome);
    const TagContent tag = readTag(QByteArray::fromHex(hex));
    QVERIFY(tag.isWellFormed);
    QCOMPARE(words(tag), content);

    Circumstances circumstances;
    circumstances.handlers = QStringList{QStringLiteral("a")};
    circumstances.desktop = QStringLiteral("d");
    QCOMPARE(words(decide(tag, circumstances)), outcome);
}

QTEST_GUILESS_MAIN(TestDecision)
#include "tst_decision.moc"
