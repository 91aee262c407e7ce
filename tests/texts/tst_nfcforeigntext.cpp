// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QTest>
#include <QTextBoundaryFinder>

#include <NfcForeignText>

using ConnUi::foreignName;

class TestNfcForeignText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void ordinaryNameStays_data();
    void ordinaryNameStays();
    void hostileNameIsMadeFit_data();
    void hostileNameIsMadeFit();
    void longNameKeepsItsEnds_data();
    void longNameKeepsItsEnds();
    void lengthHoldsWhereTheEndsMeet();
};

void TestNfcForeignText::ordinaryNameStays_data()
{
    QTest::addColumn<QString>("name");
    const auto row = [](const char *name) { QTest::newRow(name) << QString::fromUtf8(name); };
    row("Headset");
    row("Ada's phone");
    row("beach.jpg");
    row("My file (2).tar.gz");
    row("00:16:41:7A:0F:11");
    row("Größe – Übersicht.pdf");
    row("Ελένη");
    row("Анна");
    row("写真.png");
    row("한국어");
    row("हिन्दी");
    row("क्‍ष");
    row("👩‍👩‍👧 phone");
    row("❤️");
    row("1️⃣");
    row("e\u0301te\u0301");
    row("%1 %2");
    row("<b>bold</b>");
    row("a & b");
    row("100%");
}

void TestNfcForeignText::ordinaryNameStays()
{
    QFETCH(QString, name);
    QCOMPARE(foreignName(name, QStringLiteral("-")), name);
}

void TestNfcForeignText::hostileNameIsMadeFit_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *label, const QString &name, const QString &shown) {
        QTest::newRow(label) << name << shown;
    };
    const auto mark = QStringLiteral("\ufffd");
    row("nothing", QString(), QStringLiteral("-"));
    row("blanks", QStringLiteral("  \t\n "), QStringLiteral("-"));
    row("odd blanks", QStringLiteral("\u00a0\u2003\u3000"), QStringLiteral("-"));
    row("line", QStringLiteral("Headset\nTrusted by your bank"),
        QStringLiteral("Headset Trusted by your bank"));
    row("lines", QStringLiteral("Headset\r\n\r\n\r\n\r\nx"), QStringLiteral("Headset x"));
    row("line separator", QStringLiteral("a\u2028b"), QStringLiteral("a b"));
    row("paragraph separator", QStringLiteral("a\u2029b"), QStringLiteral("a b"));
    row("tab", QStringLiteral("a\tb"), QStringLiteral("a%1b").arg(mark));
    row("many blanks", QStringLiteral("a") + QString(200, QLatin1Char(' ')) + QStringLiteral("b"),
        QStringLiteral("a b"));
    row("length variants", QStringLiteral("long\u009cshort"), QStringLiteral("long%1short").arg(mark));
    row("escape", QStringLiteral("\u001b[31mred"), mark + QStringLiteral("[31mred"));
    row("bell", QStringLiteral("a\u0007"), QStringLiteral("a") + mark);
    row("zero", QStringLiteral("a") + QChar(0) + QStringLiteral("b"), QStringLiteral("a%1b").arg(mark));
    row("override", QStringLiteral("exe\u202egpj"), QStringLiteral("exe%1gpj").arg(mark));
    row("embedding", QStringLiteral("\u202aabc\u202c"), mark + QStringLiteral("abc") + mark);
    row("isolate", QStringLiteral("\u2066abc\u2069"), mark + QStringLiteral("abc") + mark);
    row("end of an isolate", QStringLiteral("abc\u2069 is safe"), QStringLiteral("abc%1 is safe").arg(mark));
    row("mark", QStringLiteral("a\u200fb"), QStringLiteral("a%1b").arg(mark));
    row("zero width space", QStringLiteral("a\u200bb"), QStringLiteral("a%1b").arg(mark));
    row("joiner between letters", QStringLiteral("a\u200db"), QStringLiteral("a%1b").arg(mark));
    row("word joiner", QStringLiteral("a\u2060b"), QStringLiteral("a%1b").arg(mark));
    row("byte order mark", QStringLiteral("\ufeffa"), mark + QStringLiteral("a"));
    row("soft hyphen", QStringLiteral("a\u00adb"), QStringLiteral("a%1b").arg(mark));
    row("filler", QStringLiteral("a\u3164b"), QStringLiteral("a%1b").arg(mark));
    row("tag", QStringLiteral("a\U000e0041b"), QStringLiteral("a%1b").arg(mark));
    row("lone surrogate", QStringLiteral("a") + QChar(0xd800) + QStringLiteral("b"),
        QStringLiteral("a%1b").arg(mark));
    row("heap of marks", QStringLiteral("a") + QString(500, QChar(0x0301)) + QStringLiteral("b"),
        QStringLiteral("a") + QString(4, QChar(0x0301)) + QStringLiteral("b"));
    row("right to left", QStringLiteral("שלום"), QStringLiteral("\u2068שלום\u2069"));
    row("arabic", QStringLiteral("هاتف (2)"), QStringLiteral("\u2068هاتف (2)\u2069"));
    row("mixed", QStringLiteral("a שלום b"), QStringLiteral("\u2068a שלום b\u2069"));
    row("arabic digits", QStringLiteral("a ١٢"), QStringLiteral("\u2068a ١٢\u2069"));
}

void TestNfcForeignText::hostileNameIsMadeFit()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    QCOMPARE(foreignName(name, QStringLiteral("-")), shown);
}

void TestNfcForeignText::longNameKeepsItsEnds_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("end");
    QTest::newRow("extension") << QString(300, QLatin1Char('a')) + QStringLiteral(".pdf")
                               << QStringLiteral("aaaaaa.pdf");
    QTest::newRow("two extensions") << QString(300, QLatin1Char('a')) + QStringLiteral(".jpg") +
                                           QString(300, QLatin1Char(' ')) + QStringLiteral(".exe")
                                    << QStringLiteral(".jpg .exe");
    QTest::newRow("long extension") << QStringLiteral("a.") + QString(300, QLatin1Char('b'))
                                    << QString(20, QLatin1Char('b'));
    QTest::newRow("no extension") << QString(300, QLatin1Char('a')) << QString(10, QLatin1Char('a'));
    QTest::newRow("emoji") << QStringLiteral("👩‍👩‍👧").repeated(100) + QStringLiteral(".png")
                           << QStringLiteral(".png");
}

void TestNfcForeignText::longNameKeepsItsEnds()
{
    QFETCH(QString, name);
    QFETCH(QString, end);
    const QString shown = foreignName(name, QStringLiteral("-"));
    QVERIFY2(shown.endsWith(end), qPrintable(shown));
    QVERIFY(shown.contains(QChar(0x2026)));
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, shown);
    int count = 0;
    while (finder.toNextBoundary() > 0)
        ++count;
    QCOMPARE(count, 64);
}

// Whether U+180F is a character of its own depends on the characters before it.
void TestNfcForeignText::lengthHoldsWhereTheEndsMeet()
{
    const QByteArray name = QByteArray::fromBase64(
        "cMIrv8KAjOGgjx3C9fL19eHh/////////xOgjyH18vX1JfXhoI/19fX19eGAjOGgjx3C9fL19eHh/////////xOgjy"
        "H18vX1JfXhoI/19fX19eHhoI+t9fXCrcKt4aCPAw319QEAMmS/wq3hoI+dwvX84aCP9fX19eGgjx3CXcKtIOGgj631"
        "9cKtwq3hoI8DDfX1AQAyZL/CreGgj53C9fzhoI/19fX14aCPHcJdwq0grQ==");
    const QString fit = foreignName(QString::fromUtf8(name), QString());
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, fit);
    int characters = 0;
    while (finder.toNextBoundary() > 0)
        ++characters;
    QVERIFY2(characters <= 64, QByteArray::number(characters));
}

QTEST_APPLESS_MAIN(TestNfcForeignText)
#include "tst_nfcforeigntext.moc"
