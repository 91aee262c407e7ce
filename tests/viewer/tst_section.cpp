// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QNdefMessage>
#include <QNdefNfcSmartPosterRecord>
#include <QNdefNfcTextRecord>
#include <QNdefNfcUriRecord>
#include <QTest>
#include <QUrl>

#include "section.h"

class TestSection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void recordBecomesASection_data();
    void recordBecomesASection();
    void everyRecordIsShown();
    void posterShowsItsParts();
    void nothingIsShownOfNoMessage_data();
    void nothingIsShownOfNoMessage();
};

namespace {

QNdefRecord record(QNdefRecord::TypeNameFormat format, const QByteArray &type, const QByteArray &payload)
{
    QNdefRecord record;
    record.setTypeNameFormat(format);
    record.setType(type);
    record.setPayload(payload);
    return record;
}

QNdefNfcTextRecord textRecord(const QString &text, QNdefNfcTextRecord::Encoding encoding)
{
    QNdefNfcTextRecord record;
    record.setEncoding(encoding);
    record.setText(text);
    return record;
}

} // namespace

void TestSection::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestSection::recordBecomesASection_data()
{
    QTest::addColumn<QNdefRecord>("record");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("text");
    const QString hello = QStringLiteral("Grüße");
    QTest::newRow("text") << QNdefRecord(textRecord(hello, QNdefNfcTextRecord::Utf8)) << int(Section::Text)
                          << hello;
    QTest::newRow("text in UTF-16") << QNdefRecord(textRecord(hello, QNdefNfcTextRecord::Utf16))
                                    << int(Section::Text) << hello;
    QTest::newRow("plain text") << record(QNdefRecord::Mime, "Text/Plain", hello.toUtf8())
                                << int(Section::Text) << hello;
    QTest::newRow("abbreviated link") << record(QNdefRecord::NfcRtd, "U",
                                                "\x04"
                                                "a.org/")
                                      << int(Section::Link) << QStringLiteral("https://a.org/");
    QTest::newRow("absolute link") << record(QNdefRecord::Uri, "tel:+1", QByteArray()) << int(Section::Link)
                                   << QStringLiteral("tel:+1");
    QTest::newRow("contact card") << record(QNdefRecord::Mime, "text/vcard", "BEGIN:VCARD")
                                  << int(Section::ContactCard) << QString();
    QTest::newRow("contact card of old")
        << record(QNdefRecord::Mime, "text/X-vCard", "BEGIN:VCARD") << int(Section::ContactCard) << QString();
    QTest::newRow("picture") << record(QNdefRecord::Mime, "image/png", "\x89PNG") << int(Section::Data)
                             << QStringLiteral("image/png");
    QTest::newRow("external type") << record(QNdefRecord::ExternalRtd, "a.org:x", "1") << int(Section::Data)
                                   << QStringLiteral("a.org:x");
    QTest::newRow("unknown type") << record(QNdefRecord::Unknown, QByteArray(), "1") << int(Section::Data)
                                  << QString();
}

void TestSection::recordBecomesASection()
{
    QFETCH(QNdefRecord, record);
    QFETCH(int, kind);
    QFETCH(QString, text);
    const QList<Section> sections = readSections(QNdefMessage(record).toByteArray());
    QCOMPARE(sections.size(), 1);
    QCOMPARE(int(sections[0].kind), kind);
    QCOMPARE(sections[0].text, text);
    QCOMPARE(sections[0].payload, record.payload());
}

void TestSection::everyRecordIsShown()
{
    const QNdefMessage message(
        QList<QNdefRecord>{textRecord(QStringLiteral("one"), QNdefNfcTextRecord::Utf8),
                           record(QNdefRecord::Mime, "image/png", "x"),
                           textRecord(QStringLiteral("two"), QNdefNfcTextRecord::Utf8)});
    const QList<Section> sections = readSections(message.toByteArray());
    QCOMPARE(sections.size(), 3);
    QCOMPARE(sections[0].text, QStringLiteral("one"));
    QCOMPARE(sections[1].text, QStringLiteral("image/png"));
    QCOMPARE(sections[2].text, QStringLiteral("two"));
}

void TestSection::posterShowsItsParts()
{
    const QNdefMessage parts(QList<QNdefRecord>{record(QNdefRecord::NfcRtd, "U",
                                                       "\x04"
                                                       "a.org/"),
                                                textRecord(QStringLiteral("A"), QNdefNfcTextRecord::Utf8)});
    const QNdefMessage poster(QList<QNdefRecord>{record(QNdefRecord::NfcRtd, "Sp", parts.toByteArray())});
    const QList<Section> sections = readSections(poster.toByteArray());
    QCOMPARE(sections.size(), 2);
    QCOMPARE(sections[0].text, QStringLiteral("https://a.org/"));
    QCOMPARE(sections[1].text, QStringLiteral("A"));
    // One without parts is data.
    const QNdefMessage hollow(QList<QNdefRecord>{record(QNdefRecord::NfcRtd, "Sp", QByteArray())});
    QCOMPARE(readSections(hollow.toByteArray()).size(), 1);
}

void TestSection::nothingIsShownOfNoMessage_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("no bytes") << QByteArray();
    QTest::newRow("empty record") << QByteArray::fromHex("d00000");
}

void TestSection::nothingIsShownOfNoMessage()
{
    QFETCH(QByteArray, message);
    QCOMPARE(readSections(message).size(), 0);
}

QTEST_GUILESS_MAIN(TestSection)
#include "tst_section.moc"
