// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QTest>

#include "core/link.h"
#include "hostileuris.h"

class TestLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void leadsThere_data();
    void leadsThere();
    void encryptionIsKnown();
    void domainIsNeverCut_data();
    void domainIsNeverCut();
};

void TestLink::leadsThere_data()
{
    QTest::addColumn<QString>("uri");
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("domain");
    QTest::addColumn<int>("suspicion");
    QVERIFY(std::size(links) >= 80);
    for (const LinkRow &row : links)
        QTest::newRow(row.uri) << QString::fromUtf8(row.uri) << QString::fromUtf8(row.host)
                               << QString::fromUtf8(row.domain) << int(row.suspicion);
}

void TestLink::leadsThere()
{
    QFETCH(QString, uri);
    QFETCH(QString, host);
    QFETCH(QString, domain);
    QFETCH(int, suspicion);
    const Link link = readLink(uri);
    QCOMPARE(link.host, host);
    QCOMPARE(link.domain, domain);
    QCOMPARE(int(link.suspicion), suspicion);
}

void TestLink::encryptionIsKnown()
{
    QVERIFY(readLink(QStringLiteral("https://example.org")).isEncrypted);
    QVERIFY(!readLink(QStringLiteral("http://example.org")).isEncrypted);
}

void TestLink::domainIsNeverCut_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("shown");
    QTest::newRow("short") << QStringLiteral("www.example.org") << QStringLiteral("www.example.org");
    QTest::newRow("long") << QString(60, QLatin1Char('a')) + QStringLiteral(".evil.org")
                          << QStringLiteral("…") + QString(10, QLatin1Char('a')) +
                                 QStringLiteral(".evil.org");
    QTest::newRow("long domain") << QStringLiteral("www.") + QString(60, QLatin1Char('a')) +
                                        QStringLiteral(".org")
                                 << QStringLiteral("…") + QString(60, QLatin1Char('a')) +
                                        QStringLiteral(".org");
}

void TestLink::domainIsNeverCut()
{
    QFETCH(QString, host);
    QFETCH(QString, shown);
    const Link link = readLink(QStringLiteral("https://") + host);
    QCOMPARE(shortHost(link, 20), shown);
    QVERIFY(shortHost(link, 20).endsWith(link.domain));
}

QTEST_APPLESS_MAIN(TestLink)
#include "tst_link.moc"
