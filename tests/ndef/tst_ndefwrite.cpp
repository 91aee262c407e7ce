// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <array>
#include <memory>

#include <QProcess>
#include <QtTest>

#include "fakeservice.h"

class TestNdefWrite : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void uriIsPrintedInHex();
    void fileBecomesAMimeRecord();
    void messageIsWrittenToAFile();
    void severalUrisAreOneMessage();
    void nothingIsNoMessage();
    void fileThatCannotBeReadEndsTheProgram_data();
    void fileThatCannotBeReadEndsTheProgram();
    void lostOutputIsAFailure();
    void messageIsWrittenOntoATag();
    void nothingIsSaidWhileTheProgramEnds();

private:
    QByteArray run(const QStringList &arguments);

    std::unique_ptr<QTemporaryDir> folder;
    QProcess program;
};

void TestNdefWrite::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    folder = std::make_unique<QTemporaryDir>();
    QFile card(folder->filePath(QStringLiteral("card.vcf")));
    QVERIFY(card.open(QIODevice::WriteOnly));
    card.write("BEGIN:VCARD\r\n");
}

QByteArray TestNdefWrite::run(const QStringList &arguments)
{
    program.setWorkingDirectory(folder->path());
    program.start(QStringLiteral(NDEF_WRITE), arguments);
    if (!program.waitForFinished())
        qFatal("%s does not end", NDEF_WRITE);
    return program.readAllStandardOutput();
}

void TestNdefWrite::uriIsPrintedInHex()
{
    QCOMPARE(run({QStringLiteral("tel:12345")}), "d1 01 06 55 05 31 32 33 34 35\n");
    QCOMPARE(program.exitCode(), 0);
}

void TestNdefWrite::fileBecomesAMimeRecord()
{
    const QByteArray message = "\xD2\x0A\x0Dtext/vcardBEGIN:VCARD\r\n";
    QCOMPARE(run({QStringLiteral("card.vcf")}), message.toHex(' ') + '\n');
}

void TestNdefWrite::messageIsWrittenToAFile()
{
    QCOMPARE(run({QStringLiteral("-o"), QStringLiteral("x.ndef"), QStringLiteral("tel:1"),
                  QStringLiteral("card.vcf")}),
             "");
    QFile file(folder->filePath(QStringLiteral("x.ndef")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), "\x91\x01\x02U\x05\x31\x52\x0A\x0Dtext/vcardBEGIN:VCARD\r\n");
}

void TestNdefWrite::severalUrisAreOneMessage()
{
    QCOMPARE(run({QStringLiteral("tel:1"), QStringLiteral("urn:nfc:x")}),
             "91 01 02 55 05 31 51 01 02 55 23 78\n");
}

void TestNdefWrite::nothingIsNoMessage()
{
    QCOMPARE(run({}), "");
    QCOMPARE(program.readAllStandardError(), "ndef-write: There is no record\n");
    QCOMPARE(program.exitCode(), 1);
}

void TestNdefWrite::fileThatCannotBeReadEndsTheProgram_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("missing") << QStringLiteral("none.vcf")
                             << QByteArray("none.vcf: No such file or directory");
    QTest::newRow("unreadable") << QStringLiteral("/proc/self/mem")
                                << QByteArray("/proc/self/mem: Input/output error");
}

void TestNdefWrite::fileThatCannotBeReadEndsTheProgram()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, reason);
    QCOMPARE(run({QStringLiteral("tel:1"), file}), "");
    QCOMPARE(program.readAllStandardError(), "ndef-write: " + reason + '\n');
    QCOMPARE(program.exitCode(), 1);
}

void TestNdefWrite::lostOutputIsAFailure()
{
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(NDEF_WRITE), {QStringLiteral("tel:1")});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(), "ndef-write: standard output: No space left on device\n");
}

void TestNdefWrite::messageIsWrittenOntoATag()
{
    FakeService daemon(QDBusConnection::SystemBus, QStringLiteral("com.tavix.nfc"));
    daemon.start();
    const QStringList arguments = {QStringLiteral("--to-tag"), QStringLiteral("tel:12345")};
    QCOMPARE(run(arguments), "");
    QCOMPARE(program.exitCode(), 0);
    const QList<FakeCall> calls = daemon.calls(QStringLiteral("WriteNdef"));
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls[0].interface, QStringLiteral("com.tavix.nfc.TagWriter"));
    QCOMPARE(calls[0].arguments, QVariantList{QByteArray::fromHex("d1010655053132333435")});
    daemon.fail(QStringLiteral("WriteNdef"), QStringLiteral("com.tavix.nfc.Error.TooSmall"),
                QStringLiteral("The tag is too small"));
    QCOMPARE(run(arguments), "");
    QCOMPARE(program.exitCode(), 1);
    QCOMPARE(program.readAllStandardError(), "ndef-write: The tag is too small\n");
}

// QtDBus's thread reads until the very end, for longer where several programs run at once and the call has
// failed.
void TestNdefWrite::nothingIsSaidWhileTheProgramEnds()
{
    FakeService daemon(QDBusConnection::SystemBus, QStringLiteral("com.tavix.nfc"));
    daemon.start();
    daemon.fail(QStringLiteral("WriteNdef"), QStringLiteral("com.tavix.nfc.Error.TooSmall"),
                QStringLiteral("The tag is too small"));
    for (int i = 0; i < 15; ++i) {
        std::array<QProcess, 6> programs;
        for (QProcess &one : programs)
            one.start(QStringLiteral(NDEF_WRITE), {QStringLiteral("--to-tag"), QStringLiteral("tel:12345")});
        for (QProcess &one : programs) {
            QVERIFY(one.waitForFinished());
            QCOMPARE(one.readAllStandardError(), "ndef-write: The tag is too small\n");
        }
    }
}

QTEST_GUILESS_MAIN(TestNdefWrite)
#include "tst_ndefwrite.moc"
