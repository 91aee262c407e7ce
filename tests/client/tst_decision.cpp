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

using namespace Qt::Literals::StringLiterals;

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

// What the guide's table calls the content of a tag.
QByteArray tag(const QString &name)
{
    const QNdefRecord link = uri("https://www.example.org");
    const QHash<QString, QByteArray> tags = {
        {u"nothing"_s, {}},
        {u"an empty record"_s, bytes({record(QNdefRecord::Empty, {}, {})})},
        {u"no message"_s, "nonsense"},
        {u"bytes behind the end"_s, bytes({text(u"Hello"_s)}) + '\0'},
        {u"text"_s, bytes({text(u"Hello"_s)})},
        {u"contact card"_s, bytes({card()})},
        {u"web link"_s, bytes({link})},
        {u"smart poster"_s, bytes({poster({link, text(u"Title"_s)})})},
        {u"smart poster with more"_s, bytes({poster({link, record(QNdefRecord::Mime, "a/b", "?")})})},
        {u"smart poster with two links"_s, bytes({poster({link, uri("tel:112")})})},
        {u"text and number"_s, bytes({text(u"Hello"_s), uri("tel:112")})},
        {u"number"_s, bytes({uri("tel:112")})},
        {u"message"_s, bytes({uri("sms:112?body=Hi")})},
        {u"other link"_s, bytes({uri("geo:1,2")})},
        {u"store link"_s, bytes({record(QNdefRecord::ExternalRtd, "example.org:ruvostore:link", "1")})},
        {u"other data"_s, bytes({record(QNdefRecord::Mime, "application/x-notes", "1")})},
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
        if (line.startsWith("| on the tag |"_L1))
            isInside = true;
        else if (isInside && !line.startsWith(u'|'))
            break;
        else if (isInside && !line.startsWith("| ---"_L1))
            rows.append(cells(line));
    return rows;
}

QStringList names(const QString &cell)
{
    return cell == "-"_L1 ? QStringList() : cell.split(u", "_s);
}

QString words(Question::Kind kind)
{
    const QHash<Question::Kind, QString> words = {
        {Question::Link, u"web link"_s},        {Question::Number, u"number"_s},
        {Question::Message, u"message"_s},      {Question::Text, u"text"_s},
        {Question::ContactCard, u"contact"_s},  {Question::StoreLink, u"store link"_s},
        {Question::OtherContent, u"content"_s},
    };
    return words.value(kind);
}

QString words(const Decision &decision)
{
    switch (decision.outcome) {
    case Decision::Refuse:
        return u"told, rejected"_s;
    case Decision::AcceptEmpty:
        return u"told, granted"_s;
    case Decision::Forward:
        return u"unasked to "_s + decision.applications.join(u", "_s);
    case Decision::Ask:
        break;
    }
    const QString asked =
        u"asked as %1, offers %2"_s.arg(words(decision.question), decision.applications.join(u", "_s));
    return decision.hasDirectAction ? asked + u", or to act"_s : asked;
}

} // namespace

class TestDecision : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void isAsTheGuideSays_data();
    void isAsTheGuideSays();
    void applicationIsOfferedOnce();
    void schemeInCapitalsIsTheSame_data();
    void schemeInCapitalsIsTheSame();
};

void TestDecision::isAsTheGuideSays_data()
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
        circumstances.desktop = row[3] == "-"_L1 ? QString() : row[3];
        circumstances.wantsToBeAsked = row[4] == "yes"_L1;
        circumstances.isLocked = row[5] == "yes"_L1;
        QTest::newRow(qPrintable(row.join(u", "_s))) << tag(row[0]) << circumstances << row[6];
    }
}

void TestDecision::isAsTheGuideSays()
{
    QFETCH(QByteArray, message);
    QFETCH(Circumstances, circumstances);
    QFETCH(QString, outcome);
    QCOMPARE(words(decide(readTag(message), circumstances)), outcome);
}

void TestDecision::applicationIsOfferedOnce()
{
    Circumstances circumstances;
    circumstances.handlers = {u"a"_s, u"b"_s, u"a"_s};
    circumstances.inFront = 1;
    QCOMPARE(decide(readTag(tag(u"other data"_s)), circumstances).applications,
             (QStringList{u"b"_s, u"a"_s}));
}

void TestDecision::schemeInCapitalsIsTheSame_data()
{
    QTest::addColumn<QByteArray>("uri");
    QTest::addColumn<QString>("outcome");
    QTest::newRow("web") << "HTTPS://www.example.org"_ba << u"asked as web link, offers a"_s;
    QTest::newRow("number") << "TEL:112"_ba << u"asked as number, offers a, or to act"_s;
    QTest::newRow("old number") << "CallTo:112"_ba << u"asked as number, offers a, or to act"_s;
    QTest::newRow("message") << "Sms:112"_ba << u"asked as message, offers a, or to act"_s;
    QTest::newRow("blanks") << " \t\ntel:112"_ba << u"asked as number, offers a, or to act"_s;
    QTest::newRow("no scheme") << "www.example.org"_ba << u"asked as web link, offers a"_s;
    QTest::newRow("looks like the web") << "httpx://www.example.org"_ba << u"asked as content, offers a"_s;
}

void TestDecision::schemeInCapitalsIsTheSame()
{
    QFETCH(QByteArray, uri);
    QFETCH(QString, outcome);
    Circumstances circumstances;
    circumstances.handlers = QStringList{u"a"_s};
    circumstances.desktop = u"d"_s;
    QCOMPARE(words(decide(readTag(bytes({::uri(uri)})), circumstances)), outcome);
}

QTEST_GUILESS_MAIN(TestDecision)
#include "tst_decision.moc"
