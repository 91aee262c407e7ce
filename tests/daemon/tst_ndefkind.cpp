// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QRegularExpression>
#include <QTest>

#include "daemon/ndefkind.h"

class TestNdefKind : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void firstRecordDecides_data();
    void firstRecordDecides();
    void garbageIsUnknown();
};

void TestNdefKind::firstRecordDecides_data()
{
    const auto record = [](const char *header, const QByteArray &type, const QByteArray &payload) {
        return QByteArray::fromHex(header) + char(type.size()) + char(payload.size()) + type + payload;
    };
    const QByteArray uri = record("d1", "U", QByteArray::fromHex("05") + "+1");
    const QByteArray text = record("d1", "T", QByteArray::fromHex("02") + "enHi");

    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QString>("kind");
    QTest::newRow("URI") << uri << QStringLiteral("uri:tel:+1");
    QTest::newRow("text") << text << QStringLiteral("text/plain");
    QTest::newRow("smart poster") << record("d1", "Sp", uri) << QStringLiteral("uri:tel:+1");
    QTest::newRow("smart poster without link")
        << record("d1", "Sp", record("d1", "T", QByteArray::fromHex("02") + "enHi"))
        << QStringLiteral("unknown");
    QTest::newRow("other well-known type") << record("d1", "X", "1") << QStringLiteral("unknown");
    QTest::newRow("MIME type") << record("d2", "text/vcard", "1") << QStringLiteral("text/vcard");
    QTest::newRow("absolute URI") << record("d3", "https://a.org", "") << QStringLiteral("uri:https://a.org");
    QTest::newRow("external type") << record("d4", "a.org:t", "1") << QStringLiteral("urn:nfc:ext:a.org:t");
    QTest::newRow("unknown type") << record("d5", "", "1") << QStringLiteral("unknown");
    QTest::newRow("MIME type that is empty") << record("d2", "", "1") << QStringLiteral("unknown");
    QTest::newRow("empty record") << QByteArray::fromHex("d00000") << QStringLiteral("empty");
    QTest::newRow("no bytes") << QByteArray() << QStringLiteral("empty");
    QTest::newRow("second record does not count")
        << record("91", "T", QByteArray::fromHex("02") + "enHi") + record("51", "U", "1")
        << QStringLiteral("text/plain");
}

void TestNdefKind::firstRecordDecides()
{
    QFETCH(QByteArray, message);
    QFETCH(QString, kind);
    QCOMPARE(ndefKind(message), kind);
}

void TestNdefKind::garbageIsUnknown()
{
    // The decoder's own word.
    QTest::ignoreMessage(QtWarningMsg, "Unexpected end of message");
    QCOMPARE(ndefKind(QByteArray::fromHex("d101ff55")), QStringLiteral("unknown"));
}

QTEST_GUILESS_MAIN(TestNdefKind)
#include "tst_ndefkind.moc"
