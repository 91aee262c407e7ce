// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <ContactExporter>

#include "contactsfolder.h"

using ConnUi::ContactExporter;

class TestContactsFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void savedCardIsAContact();
    void anotherCardOfThatNameIsAnotherContact();
    void nameBecomesAFileName_data();
    void nameBecomesAFileName();
    void failureIsReported();

private:
    static QByteArray contents(const QString &file);

    std::unique_ptr<QTemporaryDir> home;
};

namespace {

const QByteArray card = "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Ada Byron\r\nEND:VCARD\r\n";

} // namespace

void TestContactsFolder::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    home = std::make_unique<QTemporaryDir>();
    qputenv("XDG_DATA_HOME", QFile::encodeName(home->filePath(QStringLiteral("data"))));
}

QByteArray TestContactsFolder::contents(const QString &file)
{
    QFile opened(file);
    return opened.open(QFile::ReadOnly) ? opened.readAll() : QByteArray();
}

void TestContactsFolder::savedCardIsAContact()
{
    const QString file = ContactsFolder::save(card, QStringLiteral("Ada Byron"));
    QCOMPARE(file, home->filePath(QStringLiteral("data/contacts/Ada-Byron.vcf")));
    QCOMPARE(contents(file), card);
    QCOMPARE(QFile::permissions(file) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    const std::unique_ptr<QTemporaryFile> copy(
        ContactExporter::createContactCardFile(QStringLiteral("contact:Ada-Byron")));
    QCOMPARE(contents(copy->fileName()), card);
}

void TestContactsFolder::anotherCardOfThatNameIsAnotherContact()
{
    const QString first = ContactsFolder::save(card, QStringLiteral("Ada"));
    const QString second = ContactsFolder::save("BEGIN:VCARD\r\n", QStringLiteral("Ada"));
    QCOMPARE(second, home->filePath(QStringLiteral("data/contacts/Ada-2.vcf")));
    QCOMPARE(contents(first), card);
    QCOMPARE(contents(second), "BEGIN:VCARD\r\n");
}

void TestContactsFolder::nameBecomesAFileName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    QTest::newRow("letters of the world") << QStringLiteral("Zoë Ωmega") << QStringLiteral("Zoë-Ωmega");
    QTest::newRow("none") << QString() << QStringLiteral("contact");
    QTest::newRow("another folder") << QStringLiteral("../../etc/passwd") << QStringLiteral("etc-passwd");
    QTest::newRow("hidden file") << QStringLiteral(".profile") << QStringLiteral("profile");
    QTest::newRow("signs alone") << QStringLiteral("/\\\n:*") << QStringLiteral("contact");
    QTest::newRow("long") << QString(300, QLatin1Char('a')) << QString(60, QLatin1Char('a'));
    QTest::newRow("cut in a character")
        << QStringLiteral("../../b") + QString(52, QLatin1Char('a')) + QStringLiteral("😀")
        << QLatin1Char('b') + QString(52, QLatin1Char('a'));
}

void TestContactsFolder::nameBecomesAFileName()
{
    QFETCH(QString, name);
    QFETCH(QString, file);
    QCOMPARE(ContactsFolder::save(card, name),
             home->filePath(QStringLiteral("data/contacts/%1.vcf").arg(file)));
}

void TestContactsFolder::failureIsReported()
{
    QFile inTheWay(home->filePath(QStringLiteral("data")));
    QVERIFY(inTheWay.open(QFile::WriteOnly));
    QTest::ignoreMessage(QtWarningMsg,
                         qUtf8Printable(QStringLiteral("nfc-viewer: cannot write %1/data/contacts/Ada.vcf: "
                                                       "Not a directory")
                                            .arg(home->path())));
    QCOMPARE(ContactsFolder::save(card, QStringLiteral("Ada")), QString());
}

QTEST_GUILESS_MAIN(TestContactsFolder)
#include "tst_contactsfolder.moc"
