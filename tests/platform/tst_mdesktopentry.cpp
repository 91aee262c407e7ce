// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <sys/stat.h>

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <MDesktopEntry>

class TestMDesktopEntry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { qunsetenv("LANGUAGE"); }

    void nameAndIconAreRead();
    void valuesAreInTheLanguageOfTheProcess_data();
    void valuesAreInTheLanguageOfTheProcess();
    void escapesAreResolved();
    void lengthVariantsAreKept();
    void missingOrMalformedFileGivesEmptyValues_data();
    void missingOrMalformedFileGivesEmptyValues();
    void fileOverTheLimitGivesEmptyValues();
    void pipeDoesNotBlock();
    void strangersEntriesAreRead();

private:
    QString write(const QByteArray &content);

    QTemporaryDir folder;
};

void TestMDesktopEntry::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

QString TestMDesktopEntry::write(const QByteArray &content)
{
    QFile file(folder.filePath(QStringLiteral("a.desktop")));
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName()
                                                                                    : QString();
}

void TestMDesktopEntry::nameAndIconAreRead()
{
    const MDesktopEntry entry(
        write("# Comment\n[Desktop Entry]\nType=Application\nName=Tag Reader\n"
              "Icon=/usr/share/pixmaps/reader.png\n[Desktop Action a]\nName=Other\nIcon=o\n"));
    QCOMPARE(entry.name(), QStringLiteral("Tag Reader"));
    QCOMPARE(entry.icon(), QStringLiteral("/usr/share/pixmaps/reader.png"));
}

void TestMDesktopEntry::valuesAreInTheLanguageOfTheProcess_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("icon");
    QTest::newRow("none") << QByteArray("C") << QStringLiteral("Reader") << QStringLiteral("reader");
    QTest::newRow("language") << QByteArray("fi") << QStringLiteral("Lukija") << QStringLiteral("lukija");
    QTest::newRow("country falls back")
        << QByteArray("fi_FI") << QStringLiteral("Lukija") << QStringLiteral("lukija");
    QTest::newRow("country") << QByteArray("pt_BR") << QStringLiteral("Leitor BR")
                             << QStringLiteral("reader");
    QTest::newRow("list") << QByteArray("xx:fi") << QStringLiteral("Lukija") << QStringLiteral("lukija");
    QTest::newRow("modifier") << QByteArray("sr@latin") << QStringLiteral("Čitač")
                              << QStringLiteral("reader");
}

void TestMDesktopEntry::valuesAreInTheLanguageOfTheProcess()
{
    QFETCH(QByteArray, language);
    QFETCH(QString, name);
    QFETCH(QString, icon);
    qputenv("LANGUAGE", language);
    qputenv("LC_ALL", "en_US.UTF-8");
    const MDesktopEntry entry(
        write("[Desktop Entry]\nName=Reader\nName[fi]=Lukija\nName[pt_BR]=Leitor BR\nName[pt]=Leitor\n"
              "Name[sr@latin]=Čitač\nName[sr]=Читач\nIcon=reader\nIcon[fi]=lukija\n"));
    QCOMPARE(entry.name(), name);
    QCOMPARE(entry.icon(), icon);
}

void TestMDesktopEntry::escapesAreResolved()
{
    const MDesktopEntry entry(write("[Desktop Entry]\nName=\\sA\\\\B\\tC\nIcon=i\n"));
    QCOMPARE(entry.name(), QStringLiteral(" A\\B\tC"));
}

void TestMDesktopEntry::lengthVariantsAreKept()
{
    const MDesktopEntry entry(write("[Desktop Entry]\nName=Tag Reader\xc2\x9cReader\nIcon=i\n"));
    QCOMPARE(entry.name(), QStringLiteral("Tag Reader\u009cReader"));
}

void TestMDesktopEntry::missingOrMalformedFileGivesEmptyValues_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no group") << QByteArray("Name=Reader\nIcon=i\n");
    QTest::newRow("other group") << QByteArray("[Other]\nName=Reader\nIcon=i\n");
    QTest::newRow("no key") << QByteArray("[Desktop Entry]\nType=Application\n");
    QTest::newRow("line without value") << QByteArray("[Desktop Entry]\nNonsense\nName=Reader\n");
    QTest::newRow("no UTF-8") << QByteArray("[Desktop Entry]\nName=R\xff\xfe\nIcon=\xff\n");
    QTest::newRow("binary") << QByteArray("\x7f\x45LF\0\0\1\2\xff", 9).repeated(1000);
    QTest::newRow("NUL") << QByteArray("[Desktop Entry]\nName=R\0e\n", 25);
}

void TestMDesktopEntry::missingOrMalformedFileGivesEmptyValues()
{
    QFETCH(QByteArray, content);
    const MDesktopEntry entry(write(content));
    QCOMPARE(entry.name(), QString());
    QCOMPARE(entry.icon(), QString());
    QCOMPARE(MDesktopEntry(QStringLiteral("/nowhere/a.desktop")).name(), QString());
    QCOMPARE(MDesktopEntry(folder.path()).name(), QString());
    QCOMPARE(MDesktopEntry(QString()).name(), QString());
}

void TestMDesktopEntry::fileOverTheLimitGivesEmptyValues()
{
    const QByteArray entry = "[Desktop Entry]\nName=Reader\nIcon=i\n";
    const QString path = write(entry + QByteArray(1 << 20, '#'));
    QCOMPARE(MDesktopEntry(path).name(), QString());
    QVERIFY(QFile::resize(path, 1LL << 40));
    QCOMPARE(MDesktopEntry(path).name(), QString());
    QCOMPARE(MDesktopEntry(write(entry)).name(), QStringLiteral("Reader"));
}

void TestMDesktopEntry::pipeDoesNotBlock()
{
    const QByteArray path = QFile::encodeName(folder.filePath(QStringLiteral("pipe.desktop")));
    QCOMPARE(mkfifo(path.constData(), 0600), 0);
    QCOMPARE(MDesktopEntry(QFile::decodeName(path)).name(), QString());
}

// Those of a root with other desktops: a machine's own may be anything.
void TestMDesktopEntry::strangersEntriesAreRead()
{
    if (!qEnvironmentVariableIsSet("CONNUI_APPLICATIONS"))
        QSKIP("CONNUI_APPLICATIONS names no folder of desktop files");
    qputenv("LANGUAGE", "C");
    const QDir applications(qEnvironmentVariable("CONNUI_APPLICATIONS"));
    const QRegularExpression firstValue(
        QStringLiteral("^\\[Desktop Entry\\](?:(?!^\\[).)*?^%1[ \\t]*=[ \\t]*([^\\n]*)"),
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    const auto valueIn = [&](const QString &text, const QString &key) {
        return QRegularExpression(firstValue.pattern().arg(key), firstValue.patternOptions())
            .match(text)
            .captured(1);
    };
    const QStringList files = applications.entryList({QStringLiteral("*.desktop")}, QDir::Files);
    QVERIFY(!files.isEmpty());
    for (const QString &name : files) {
        QFile file(applications.filePath(name));
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(name));
        const QString text = QString::fromUtf8(file.readAll());
        const MDesktopEntry entry(file.fileName());
        QCOMPARE(entry.name(), valueIn(text, QStringLiteral("Name")));
        QCOMPARE(entry.icon(), valueIn(text, QStringLiteral("Icon")));
        QVERIFY2(!entry.name().isEmpty(), qPrintable(name));
    }
}

QTEST_GUILESS_MAIN(TestMDesktopEntry)
#include "tst_mdesktopentry.moc"
