// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QBuffer>
#include <QDir>
#include <QStandardPaths>
#include <QtTest>

#include <ContactExporter>

using ConnUi::ContactExporter;

namespace {

QString cardPath(const QString &id)
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/contacts/%1.vcf").arg(id);
}

void writeCard(const QString &path, const QByteArray &content)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray card(const QByteArray &version, const QByteArray &lines)
{
    return "BEGIN:VCARD\r\nVERSION:" + version + "\r\n" + lines + "END:VCARD\r\n";
}

QImage picture()
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

// A picture in base64, in lines that continue with a blank.
QByteArray foldedPicture()
{
    QBuffer png;
    picture().save(&png, "PNG");
    QByteArray base64 = png.data().toBase64();
    for (int i = 40; i < base64.size(); i += 43)
        base64.insert(i, "\r\n ");
    return base64;
}

} // namespace

class TestContactExporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void libraryOfCardsIsLoadedForTheFirstCard();
    void cardFileIsAPrivateCopyRemovedWithItsObject();
    void whatIsNoContactGivesAnEmptyFile_data();
    void whatIsNoContactGivesAnEmptyFile();
    void missingContactGivesAnEmptyFile();
    void hugeCardIsRefused();
    void nameIsRead_data();
    void nameIsRead();
    void emptyFileHasNoName();
    void unreadableFileHasNoName();
    void otherFileHasNoName();
    void cutCardKeepsWhatItHas_data();
    void cutCardKeepsWhatItHas();
    void avatarIsRead_data();
    void avatarIsRead();
    void avatarIsMissing_data();
    void avatarIsMissing();
    void avatarOfNoContactIsMissing();
};

void TestContactExporter::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    QVERIFY(QDir(QFileInfo(cardPath(QStringLiteral("1"))).path()).removeRecursively());
}

void TestContactExporter::libraryOfCardsIsLoadedForTheFirstCard()
{
    const auto isLoaded = [] {
        QFile maps(QStringLiteral("/proc/self/maps"));
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("/libebook-contacts");
    };
    QVERIFY(!isLoaded());
    writeCard(cardPath(QStringLiteral("1")), card("3.0", "N:Doe;Jane\r\n"));
    QString first;
    QString second;
    ContactExporter::resolveContactInfo(QFileInfo(cardPath(QStringLiteral("1"))), first, second);
    QCOMPARE(first, QStringLiteral("Jane"));
    QVERIFY(isLoaded());
}

void TestContactExporter::cardFileIsAPrivateCopyRemovedWithItsObject()
{
    const QByteArray content = card("3.0", "N:Virtanen;Aino;;;\r\n");
    writeCard(cardPath(QStringLiteral("1")), content);
    QTemporaryFile *file = ContactExporter::createContactCardFile(QStringLiteral("contact:1"));
    const QString path = file->fileName();
    QVERIFY(path != cardPath(QStringLiteral("1")));
    QVERIFY(path.endsWith(QStringLiteral(".vcf")));
    QCOMPARE(QFileInfo(path).permissions() &
                 (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
             QFile::Permissions());

    QFile copy(path);
    QVERIFY(copy.open(QIODevice::ReadOnly));
    QCOMPARE(copy.readAll(), content);

    QString first, second;
    ContactExporter::resolveContactInfo(QFileInfo(*file), first, second);
    QCOMPARE(first, QStringLiteral("Aino"));
    delete file;
    QVERIFY(!QFile::exists(path));
    QVERIFY(QFile::exists(cardPath(QStringLiteral("1"))));
}

void TestContactExporter::whatIsNoContactGivesAnEmptyFile_data()
{
    QTest::addColumn<QString>("contact");
    QTest::newRow("empty") << QString();
    QTest::newRow("other scheme") << QStringLiteral("file:1");
    QTest::newRow("capital scheme") << QStringLiteral("Contact:1");
    QTest::newRow("no id") << QStringLiteral("contact:");
    QTest::newRow("parent folder") << QStringLiteral("contact:../1");
    QTest::newRow("dots") << QStringLiteral("contact:..");
    QTest::newRow("slash") << QStringLiteral("contact:folder/1");
}

void TestContactExporter::whatIsNoContactGivesAnEmptyFile()
{
    QFETCH(QString, contact);
    // Each would be found if its name were taken as a path.
    const QString folder = QFileInfo(cardPath(QStringLiteral("1"))).path();
    writeCard(folder + QStringLiteral("/../1.vcf"), card("3.0", "N:Outside;;;;\r\n"));
    writeCard(folder + QStringLiteral("/folder/1.vcf"), card("3.0", "N:Deeper;;;;\r\n"));
    writeCard(folder + QStringLiteral("/.vcf"), card("3.0", "N:Nameless;;;;\r\n"));
    writeCard(folder + QStringLiteral("/1.vcf"), card("3.0", "N:One;;;;\r\n"));
    writeCard(folder + QStringLiteral("/...vcf"), card("3.0", "N:Dots;;;;\r\n"));

    QTest::ignoreMessage(QtWarningMsg,
                         qUtf8Printable(QStringLiteral("ContactExporter: %1 is not a contact").arg(contact)));
    const std::unique_ptr<QFile> file(ContactExporter::createContactCardFile(contact));
    QCOMPARE(QFileInfo(*file).size(), 0);
}

void TestContactExporter::missingContactGivesAnEmptyFile()
{
    QTest::ignoreMessage(
        QtWarningMsg,
        qUtf8Printable(QStringLiteral("ContactExporter: unable to read %1: No such file or directory")
                           .arg(cardPath(QStringLiteral("7")))));
    const std::unique_ptr<QFile> file(ContactExporter::createContactCardFile(QStringLiteral("contact:7")));
    QVERIFY(QFileInfo::exists(file->fileName()));
    QCOMPARE(QFileInfo(*file).size(), 0);
}

void TestContactExporter::hugeCardIsRefused()
{
    const QString path = cardPath(QStringLiteral("1"));
    const QByteArray warning =
        QStringLiteral("ContactExporter: unable to read %1: too large for a contact card").arg(path).toUtf8();
    writeCard(path, card("3.0", "N:Virtanen;Aino;;;\r\nNOTE:" + QByteArray(5 << 20, 'x') + "\r\n"));
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    QString first, second;
    ContactExporter::resolveContactInfo(QFileInfo(path), first, second);
    QCOMPARE(first, QString());

    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    const std::unique_ptr<QFile> file(ContactExporter::createContactCardFile(QStringLiteral("contact:1")));
    QCOMPARE(QFileInfo(*file).size(), 0);
}

void TestContactExporter::nameIsRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");

    QTest::newRow("plain") << card("3.0", "N:Virtanen;Aino;;;\r\n") << QStringLiteral("Aino")
                           << QStringLiteral("Virtanen");
    QTest::newRow("utf-8") << card("3.0", "N:M\xc3\xa4kel\xc3\xa4;\xe6\x84\x9b;;;\r\n")
                           << QStringLiteral(u"\u611b") << QStringLiteral(u"M\u00e4kel\u00e4");
    QTest::newRow("folded") << card("3.0", "N:Virta\r\n nen;Ai\r\n\tno;;;\r\n") << QStringLiteral("Aino")
                            << QStringLiteral("Virtanen");
    QTest::newRow("folded inside a character")
        << card("3.0", "N:M\xc3\r\n \xa4kel\xc3\xa4;Aino;;;\r\n") << QStringLiteral("Aino")
        << QStringLiteral(u"M\u00e4kel\u00e4");
    QTest::newRow("escaped") << card("3.0", "N:A\\;B\\,C;D\\\\E;;;\r\n") << QStringLiteral("D\\E")
                             << QStringLiteral("A;B,C");
    QTest::newRow("quoted-printable")
        << card("2.1", "N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:M=C3=A4kel=C3=A4;Veikko;;;\r\n")
        << QStringLiteral("Veikko") << QStringLiteral(u"M\u00e4kel\u00e4");
    QTest::newRow("quoted-printable, soft break")
        << card("2.1", "N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:M=C3=A4ke=\r\nl=C3=A4;Veik=\r\nko;;;\r\n")
        << QStringLiteral("Veikko") << QStringLiteral(u"M\u00e4kel\u00e4");
    QTest::newRow("quoted-printable, Latin-1")
        << card("2.1", "N;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:M=E4kel=E4;Veikko;;;\r\n")
        << QStringLiteral("Veikko") << QStringLiteral(u"M\u00e4kel\u00e4");
    QTest::newRow("short form of the encoding") << card("2.1", "N;QUOTED-PRINTABLE:=41ho;Veikko\r\n")
                                                << QStringLiteral("Veikko") << QStringLiteral("Aho");
    QTest::newRow("given name only") << card("3.0", "N:;Aino;;;\r\n") << QStringLiteral("Aino") << QString();
    QTest::newRow("family name only")
        << card("3.0", "N:Virtanen\r\n") << QString() << QStringLiteral("Virtanen");
    QTest::newRow("formatted name") << card("3.0", "FN:Aino Virtanen\r\n") << QStringLiteral("Aino Virtanen")
                                    << QString();
    QTest::newRow("empty name") << card("3.0", "N:;;;;\r\nFN:Aino\r\n") << QStringLiteral("Aino")
                                << QString();
    QTest::newRow("no name") << card("3.0", "TEL:123\r\n") << QString() << QString();
    QTest::newRow("small letters, group, bare line feeds")
        << QByteArray("begin:vcard\nversion:3.0\nitem1.n:Virtanen;Aino\nend:vcard\n")
        << QStringLiteral("Aino") << QStringLiteral("Virtanen");
    QTest::newRow("byte order mark") << "\xef\xbb\xbf" + card("3.0", "N:Virtanen;Aino;;;\r\n")
                                     << QStringLiteral("Aino") << QStringLiteral("Virtanen");
}

void TestContactExporter::nameIsRead()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, first);
    QFETCH(QString, second);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("card.vcf"));
    writeCard(path, content);
    QString given = QStringLiteral("stale");
    QString family = QStringLiteral("stale");
    ContactExporter::resolveContactInfo(QFileInfo(path), given, family);
    QCOMPARE(given, first);
    QCOMPARE(family, second);
}

void TestContactExporter::emptyFileHasNoName()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    QString first = QStringLiteral("stale");
    QString second = QStringLiteral("stale");
    ContactExporter::resolveContactInfo(QFileInfo(file), first, second);
    QCOMPARE(first + second, QString());
}

void TestContactExporter::unreadableFileHasNoName()
{
    QTest::ignoreMessage(QtWarningMsg,
                         "ContactExporter: unable to read /nowhere/card.vcf: No such file or directory");
    QString first = QStringLiteral("stale");
    QString second = QStringLiteral("stale");
    ContactExporter::resolveContactInfo(QFileInfo(QStringLiteral("/nowhere/card.vcf")), first, second);
    QCOMPARE(first + second, QString());
}

void TestContactExporter::otherFileHasNoName()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(QByteArray("\xff\xfe\0:::;;\r\n N:A;B", 15));
    QVERIFY(file.flush());
    QTest::ignoreMessage(
        QtWarningMsg,
        qUtf8Printable(
            QStringLiteral("ContactExporter: unable to read %1: not a contact card").arg(file.fileName())));
    QString first, second;
    ContactExporter::resolveContactInfo(QFileInfo(file), first, second);
    QCOMPARE(first + second, QString());
}

void TestContactExporter::cutCardKeepsWhatItHas_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("after a letter") << QByteArray();
    QTest::newRow("at a soft line break") << QByteArray("=");
    QTest::newRow("inside of a character") << QByteArray("=C");
    QTest::newRow("between the bytes of a character") << QByteArray("=C3");
    QTest::newRow("after a line") << QByteArray("\r\n");
    QTest::newRow("by a byte of zero") << QByteArray("=\0=C3\r\nEND:VCARD\r\n", 17);
}

void TestContactExporter::cutCardKeepsWhatItHas()
{
    QFETCH(QByteArray, end);
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("BEGIN:VCARD\r\nVERSION:2.1\r\nN;ENCODING=QUOTED-PRINTABLE:Virtanen;Aino" + end);
    QVERIFY(file.flush());
    QString first, second;
    ContactExporter::resolveContactInfo(QFileInfo(file), first, second);
    QCOMPARE(second, QStringLiteral("Virtanen"));
    QVERIFY2(first.startsWith(QStringLiteral("Aino")), qUtf8Printable(first));
}

void TestContactExporter::avatarIsRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("3.0") << card("3.0", "N:A;B;;;\r\nPHOTO;ENCODING=b;TYPE=PNG:" + foldedPicture() + "\r\n");
    QTest::newRow("2.1") << card("2.1",
                                 "N:A;B\r\nPHOTO;ENCODING=BASE64;PNG:\r\n " + foldedPicture() + "\r\n\r\n");
    QTest::newRow("short form of the encoding")
        << card("2.1", "PHOTO;BASE64;PNG:" + foldedPicture() + "\r\n");
}

void TestContactExporter::avatarIsRead()
{
    QFETCH(QByteArray, content);
    writeCard(cardPath(QStringLiteral("1")), content);
    QImage avatar;
    QVERIFY(ContactExporter::resolveContactAvatar(QStringLiteral("contact:1"), avatar));
    QCOMPARE(avatar.convertToFormat(QImage::Format_RGB32), picture());
    QCOMPARE(QImage::fromData(ContactExporter::contactPhoto(QStringLiteral("contact:1"))), avatar);
}

void TestContactExporter::avatarIsMissing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no photo") << card("3.0", "N:A;B;;;\r\n");
    QTest::newRow("photo elsewhere") << card("3.0", "PHOTO;VALUE=uri:http://example.com/a.png\r\n");
    QTest::newRow("no picture") << card("3.0", "PHOTO;ENCODING=b;TYPE=PNG:AAAA\r\n");
    QTest::newRow("no base64") << card("3.0", "PHOTO;ENCODING=b;TYPE=PNG:====%%\r\n");
    QTest::newRow("empty") << card("3.0", "PHOTO;ENCODING=b;TYPE=PNG:\r\n");
}

void TestContactExporter::avatarIsMissing()
{
    QFETCH(QByteArray, content);
    writeCard(cardPath(QStringLiteral("1")), content);
    QImage avatar = picture();
    QVERIFY(!ContactExporter::resolveContactAvatar(QStringLiteral("contact:1"), avatar));
    QCOMPARE(avatar, picture());
}

void TestContactExporter::avatarOfNoContactIsMissing()
{
    QImage avatar;
    QVERIFY(!ContactExporter::resolveContactAvatar(QStringLiteral("contact:7"), avatar));
    QVERIFY(!ContactExporter::resolveContactAvatar(QStringLiteral("contact:../contacts/1"), avatar));
    QVERIFY(!ContactExporter::resolveContactAvatar(QString(), avatar));
}

QTEST_GUILESS_MAIN(TestContactExporter)
#include "tst_contactexporter.moc"
