// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <glib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

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

QByteArray plainPicture()
{
    QBuffer png;
    picture().save(&png, "PNG");
    return png.data().toBase64();
}

// A picture in base64, in lines of 40 characters with something in between.
QByteArray foldedPicture(const QByteArray &fold = "\r\n ")
{
    QByteArray base64 = plainPicture();
    for (qsizetype i = 40; i < base64.size(); i += 40 + fold.size())
        base64.insert(i, fold);
    return base64;
}

QByteArray lines(std::initializer_list<QByteArray> lines)
{
    return QByteArrayList(lines).join("\r\n") + "\r\n";
}

int messagesOfGLib = 0;

GLogWriterOutput countMessage(GLogLevelFlags, const GLogField *, gsize, gpointer)
{
    ++messagesOfGLib;
    return G_LOG_WRITER_HANDLED;
}

} // namespace

class TestContactExporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void libraryOfCardsIsLoadedForTheFirstCard();
    void cardFileIsAPrivateCopyRemovedWithItsObject();
    void whatIsNoContactGivesAnEmptyFile_data();
    void whatIsNoContactGivesAnEmptyFile();
    void missingContactGivesAnEmptyFile();
    void hugeCardIsRefused();
    void nameIsRead_data();
    void nameIsRead();
    void exportedCardIsRead_data();
    void exportedCardIsRead();
    void cardCannotFillTheLog_data();
    void cardCannotFillTheLog();
    void pipeAsCardDoesNotBlock();
    void copiesOfEndedProcessesAreRemoved();
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

void TestContactExporter::initTestCase()
{
    g_log_set_writer_func(countMessage, nullptr, nullptr);
}

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
    QTest::newRow("colon between quotation marks") << card("4.0", "N;SORT-AS=\"a:b\":Virtanen;Aino;;;\r\n")
                                                   << QStringLiteral("Aino") << QStringLiteral("Virtanen");
    QTest::newRow("given name only") << card("3.0", "N:;Aino;;;\r\n") << QStringLiteral("Aino") << QString();
    QTest::newRow("family name only")
        << card("3.0", "N:Virtanen\r\n") << QString() << QStringLiteral("Virtanen");
    QTest::newRow("formatted name") << card("3.0", "FN:Aino Virtanen\r\n") << QStringLiteral("Aino Virtanen")
                                    << QString();
    QTest::newRow("empty name") << card("3.0", "N:;;;;\r\nFN:Aino\r\n") << QStringLiteral("Aino")
                                << QString();
    QTest::newRow("no name") << card("3.0", "NOTE:nothing\r\n") << QString() << QString();
    QTest::newRow("organization") << card("3.0", "TEL:1\r\nEMAIL:a@b\r\nNICKNAME:N\r\nORG:A\\, B;C\r\n")
                                  << QStringLiteral("A, B") << QString();
    QTest::newRow("nickname") << card("3.0", "TEL:1\r\nEMAIL:a@b\r\nNICKNAME:Ada,Adi\r\nORG:;\r\n")
                              << QStringLiteral("Ada") << QString();
    QTest::newRow("mail address") << card("3.0", "TEL:1\r\nEMAIL;TYPE=internet:a@b.example\r\n")
                                  << QStringLiteral("a@b.example") << QString();
    QTest::newRow("telephone number")
        << card("2.1", "TEL;WORK:\r\nTEL;HOME:123\r\n") << QStringLiteral("123") << QString();
    QTest::newRow("telephone number as a URI")
        << card("4.0", "TEL;VALUE=uri;TYPE=\"voice,home\":tel:+1-555-555-5555;ext=5555\r\n")
        << QStringLiteral("+1-555-555-5555") << QString();
    QTest::newRow("several given names")
        << card("3.0", "N:Doe;Anna,Maria;;;\r\n") << QStringLiteral("Anna Maria") << QStringLiteral("Doe");
    QTest::newRow("several given names, blanks")
        << card("3.0", "N:van  der Harten;Ren\xc3\xa9, J.;Sir\r\n") << QStringLiteral(u"Ren\u00e9 J.")
        << QStringLiteral("van der Harten");
    QTest::newRow("ISO-8859-1") << card("2.1", "N;CHARSET=ISO-8859-1:M\xe4kel\xe4;Veikko\r\n")
                                << QStringLiteral("Veikko") << QStringLiteral(u"M\u00e4kel\u00e4");
    // Without the charset it would be another letter in UTF-8.
    QTest::newRow("ISO-8859-1 that looks like UTF-8")
        << card("2.1", "N;CHARSET=ISO-8859-1:\xc3\xa4;Veikko\r\n") << QStringLiteral("Veikko")
        << QStringLiteral(u"\u00c3\u00a4");
    QTest::newRow("Windows-1251")
        << card("2.1", "N;CHARSET=windows-1251:\xc8\xe2\xe0\xed\xee\xe2;\xcf\xb8\xf2\xf0\r\n")
        << QStringLiteral(u"\u041f\u0451\u0442\u0440")
        << QStringLiteral(u"\u0418\u0432\u0430\u043d\u043e\u0432");
    // The second byte of the given name is a backslash.
    QTest::newRow("GBK") << card("2.1", "N;CHARSET=GBK:\xcd\xf5;\xd5\x5c\r\n") << QStringLiteral(u"\u8aa0")
                         << QStringLiteral(u"\u738b");
    QTest::newRow("Shift_JIS") << card("2.1", "N;CHARSET=SHIFT_JIS:\x95\x5c;\x91\xbe\x98\x59\r\n")
                               << QStringLiteral(u"\u592a\u90ce") << QStringLiteral(u"\u8868");
    QTest::newRow("unknown charset") << card("2.1", "N;CHARSET=X-NONE:M\xe4kel\xe4;Veikko\r\n")
                                     << QStringLiteral("Veikko") << QStringLiteral(u"M\u00e4kel\u00e4");
    QTest::newRow("no charset and no UTF-8")
        << card("3.0", "N:M\xe4kel\xe4;\x80uro\r\n") << QStringLiteral(u"\u20acuro")
        << QStringLiteral(u"M\u00e4kel\u00e4");
    QTest::newRow("quoted-printable, no charset and UTF-8 with the character for unknown ones")
        << card("2.1", "N;ENCODING=QUOTED-PRINTABLE:M=C3=A4kel=EF=BF=BD;=C3=A4uro\r\n")
        << QStringLiteral(u"\u00e4uro") << QStringLiteral(u"M\u00e4kel\ufffd");
    QTest::newRow("quoted-printable, no charset and no UTF-8")
        << card("2.1", "N;ENCODING=QUOTED-PRINTABLE:M=E4kel=E4;=80uro\r\n") << QStringLiteral(u"\u20acuro")
        << QStringLiteral(u"M\u00e4kel\u00e4");
    QTest::newRow("nested card")
        << card("2.1", "AGENT:\r\nBEGIN:VCARD\r\nN:Friday;Fred\r\nEND:VCARD\r\nN:Doe;Jane\r\n")
        << QStringLiteral("Jane") << QStringLiteral("Doe");
    QTest::newRow("nested card behind the colon")
        << card("2.1", "AGENT:BEGIN:VCARD\r\nN:Friday;Fred\r\nEND:VCARD\r\nN:Doe;Jane\r\n")
        << QStringLiteral("Jane") << QStringLiteral("Doe");
    QTest::newRow("nested card in a value")
        << card("3.0", "AGENT:BEGIN:VCARD\\nFN:Fred Friday\\nEND:VCARD\\n\r\nN:Doe;Jane\r\n")
        << QStringLiteral("Jane") << QStringLiteral("Doe");
    QTest::newRow("second card") << card("3.0", "FN:First\r\n") + card("3.0", "N:Second;Card\r\n")
                                 << QStringLiteral("First") << QString();
    QTest::newRow("longest parameters")
        << card("3.0", "FN;X=" + QByteArray(994, 'x') + ":Jane\r\n") << QStringLiteral("Jane") << QString();
    QTest::newRow("parameters that are too long")
        << card("3.0", "FN;X=" + QByteArray(995, 'x') + ":Jane\r\n") << QString() << QString();
    QTest::newRow("eighth number") << card("3.0", QByteArray("TEL:\r\n").repeated(7) + "TEL:8\r\n")
                                   << QStringLiteral("8") << QString();
    QTest::newRow("ninth number") << card("3.0", QByteArray("TEL:\r\n").repeated(8) + "TEL:9\r\n")
                                  << QString() << QString();
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

// RFC 2426 and RFC 6350 have the first examples; the others are written as phones, address books, office
// programs, web services and mail programs write them.
void TestContactExporter::exportedCardIsRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<bool>("hasPhoto");

    QTest::newRow("3.0, five parts of a name")
        << card("3.0", lines({"FN:Mr. John Q. Public\\, Esq.", "N:Public;John;Quinlan;Mr.;Esq."}))
        << QStringLiteral("John") << QStringLiteral("Public") << false;
    QTest::newRow("3.0, several of a part")
        << card("3.0", "N:Stevenson;John;Philip,Paul;Dr.;Jr.,M.D.,A.C.P.\r\n") << QStringLiteral("John")
        << QStringLiteral("Stevenson") << false;
    QTest::newRow("3.0, no structured name")
        << card("3.0", lines({"FN:Frank Dawson", "ORG:Lotus Development Corporation",
                              "ADR;TYPE=WORK,POSTAL,PARCEL:;;6544 Battleford Drive",
                              " ;Raleigh;NC;27613-3502;U.S.A.", "TEL;TYPE=VOICE,MSG,WORK:+1-919-676-9515",
                              "EMAIL;TYPE=INTERNET,PREF:Frank_Dawson@Lotus.com"}))
        << QStringLiteral("Frank Dawson") << QString() << false;
    QTest::newRow("3.0, whole card")
        << card("3.0", lines({"FN:Tim Howes", "ORG:Netscape Communications Corp.",
                              "ADR;TYPE=WORK:;;501 E. Middlefield Rd.;Mountain View;", " CA; 94043;U.S.A.",
                              "TEL;TYPE=VOICE,MSG,WORK:+1-415-937-3419", "TEL;TYPE=FAX,WORK:+1-415-528-4164",
                              "EMAIL;TYPE=INTERNET:howes@netscape.com"}))
        << QStringLiteral("Tim Howes") << QString() << false;
    QTest::newRow("3.0, nickname that is empty")
        << card("3.0", "NICKNAME:,Robbie\r\nTEL:1\r\n") << QStringLiteral("1") << QString() << false;
    QTest::newRow("3.0, nickname") << card("3.0", "NICKNAME:Robbie\r\n") << QStringLiteral("Robbie")
                                   << QString() << false;
    QTest::newRow("3.0, organization with its units")
        << card("3.0", "ORG:ABC\\, Inc.;North American Division;Marketing\r\n") << QStringLiteral("ABC, Inc.")
        << QString() << false;
    QTest::newRow("3.0, agent elsewhere")
        << card("3.0", lines({"AGENT;VALUE=uri:", " CID:JQPUBLIC.part3.960129T083020.xyzMail@host3.com",
                              "EMAIL;TYPE=internet,pref:jane_doe@abc.com"}))
        << QStringLiteral("jane_doe@abc.com") << QString() << false;
    QTest::newRow("3.0, photo elsewhere and agent")
        << card("3.0",
                lines({"PHOTO;VALUE=uri:http://www.abc.com/pub/photos/jqpublic.gif",
                       "AGENT:BEGIN:VCARD\\nFN:Susan Thomas\\nTEL:+1-919-555-",
                       " 1234\\nEMAIL\\;INTERNET:susan@host.com\\nEND:VCARD\\n", "NICKNAME:Jim,Jimmie"}))
        << QStringLiteral("Jim") << QString() << false;
    QTest::newRow("4.0, prefix in the sorting")
        << card("4.0", "N;SORT-AS=\"Harten,Rene\":van der Harten;Rene,J.;Sir;R.D.O.N.\r\n")
        << QStringLiteral("Rene J.") << QStringLiteral("van der Harten") << false;
    QTest::newRow("4.0, sorted by another form")
        << card("4.0", lines({"FN:Rene van der Harten",
                              "N;SORT-AS=\"Harten Rene\":van der Harten;Rene;J.;Sir;R.D.O.N."}))
        << QStringLiteral("Rene") << QStringLiteral("van der Harten") << false;
    QTest::newRow("4.0, identified properties")
        << card("4.0",
                lines({"UID:urn:uuid:4fbe8971-0bc3-424c-9c26-36c3e1eff6b1", "FN;PID=1.1:J. Doe",
                       "N:Doe;J.;;;", "EMAIL;PID=1.1:jdoe@example.com", "EMAIL;PID=2.1:boss@example.com",
                       "EMAIL;PID=2.2:ceo@example.com", "TEL;PID=1.1;VALUE=uri:tel:+1-555-555-5555",
                       "CLIENTPIDMAP:1;urn:uuid:53e374d9-337e-4727-8803-a1e9c14e0556",
                       "CLIENTPIDMAP:2;urn:uuid:1f762d2b-03c4-4a83-9a03-75ff658a6eee"}))
        << QStringLiteral("J.") << QStringLiteral("Doe") << false;
    QTest::newRow("4.0, group of others")
        << card("4.0", lines({"KIND:group", "FN:The Doe family",
                              "MEMBER:urn:uuid:03a0e51f-d1aa-4385-8a53-e29025acd8af"}))
        << QStringLiteral("The Doe family") << QString() << false;
    QTest::newRow("4.0, organization")
        << card("4.0", "ORG;SORT-AS=\"ABC\":ABC\\, Inc.;North American Division;Marketing\r\n")
        << QStringLiteral("ABC, Inc.") << QString() << false;
    QTest::newRow("4.0, name in two languages")
        << card("4.0", lines({"N;ALTID=1;LANGUAGE=jp:\xe5\xb1\xb1\xe7\x94\xb0;\xe5\xa4\xaa\xe9\x83\x8e;;;",
                              "N;ALTID=1;LANGUAGE=en:Yamada;Taro;;;"}))
        << QStringLiteral(u"\u592a\u90ce") << QStringLiteral(u"\u5c71\u7530") << false;
    QTest::newRow("4.0, whole card")
        << card("4.0", lines({"FN:Simon Perreault", "N:Perreault;Simon;;;ing. jr,M.Sc.", "BDAY:--0203",
                              "ANNIVERSARY:20090808T1430-0500", "GENDER:M", "LANG;PREF=1:fr",
                              "ORG;TYPE=work:Viagenie",
                              "TEL;VALUE=uri;TYPE=\"work,voice\";PREF=1:tel:+1-418-656-9254;ext=102",
                              "EMAIL;TYPE=work:simon.perreault@viagenie.ca", "TZ:-0500"}))
        << QStringLiteral("Simon") << QStringLiteral("Perreault") << false;
    QTest::newRow("4.0, photo") << card("4.0", "N:Doe;Jane\r\nPHOTO:data:image/png;base64," +
                                                   foldedPicture() + "\r\n")
                                << QStringLiteral("Jane") << QStringLiteral("Doe") << true;

    QTest::newRow("phone: 2.1, quoted-printable")
        << card("2.1", lines({"N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:=4D=C3=BC=6C=6C=65=72;=",
                              "=4A=C3=BC=72=67=65=6E;;;", "FN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:=4A",
                              "TEL;CELL:030-123456", "PHOTO;ENCODING=BASE64;PNG:" + foldedPicture(), ""}))
        << QStringLiteral(u"J\u00fcrgen") << QStringLiteral(u"M\u00fcller") << true;
    QTest::newRow("address book: 3.0, groups")
        << card("3.0", lines({"PRODID:-//Example//Address Book//EN", "N:Appleseed;Johnny;;;",
                              "FN:Johnny Appleseed", "item1.TEL;type=pref:030 123456",
                              "item1.X-ABLabel:_$!<Main>!$_", "item2.URL;type=pref:http\\://a.example",
                              "PHOTO;X-ABCROP-RECTANGLE=ABClipRect_1&0&0&8&8&a==;ENCODING=b;TYPE=PNG:" +
                                  foldedPicture(),
                              "X-ABUID:1:ABPerson"}))
        << QStringLiteral("Johnny") << QStringLiteral("Appleseed") << true;
    QTest::newRow("office program: 2.1, code page, base64 without indentation")
        << card("2.1", lines({"N;LANGUAGE=de;CHARSET=Windows-1252:Gr\xfcn;J\xf6rg", "FN;LANGUAGE=de:J",
                              "LABEL;WORK;PREF;ENCODING=QUOTED-PRINTABLE:Weg 1=0D=0A=", "10115 Berlin",
                              "PHOTO;TYPE=PNG;ENCODING=BASE64:", foldedPicture("\r\n"), "",
                              "X-MS-OL-DESIGN;CHARSET=utf-8:<card xmlns=\"http://a.example\"/>",
                              "REV:20260101T000000Z"}))
        << QStringLiteral(u"J\u00f6rg") << QStringLiteral(u"Gr\u00fcn") << true;
    QTest::newRow("web service: 3.0, photo elsewhere and here")
        << card("3.0", lines({"FN:Rosa Lux", "N:Lux;Rosa;;;", "EMAIL;TYPE=INTERNET;TYPE=HOME:r@a.example",
                              "PHOTO:https://a.example/photo.jpg",
                              "PHOTO;ENCODING=b;TYPE=PNG:" + foldedPicture(), "CATEGORIES:myContacts"}))
        << QStringLiteral("Rosa") << QStringLiteral("Lux") << true;
    QTest::newRow("mail program: 4.0, small letters and properties of its own")
        << card("4.0", lines({"email;pref=1:mail@a.example", "fn:Mail Writer", "n:Writer;Mail;;;",
                              "photo;value=URI:data:image/png;base64\\," + plainPicture(), "UID:urn:uuid:1",
                              "x-mozilla-html:FALSE"}))
        << QStringLiteral("Mail") << QStringLiteral("Writer") << true;
    QTest::newRow("old phone: 2.1, Shift_JIS and a reading")
        << card("2.1", lines({"N;CHARSET=SHIFT_JIS:\x8e\x52\x93\x63;\x91\xbe\x98\x59",
                              "SOUND;X-IRMC-N;CHARSET=SHIFT_JIS:\xd4\xcf\xc0\xde;\xc0\xdb\xb3",
                              "TEL;CELL:09012345678"}))
        << QStringLiteral(u"\u592a\u90ce") << QStringLiteral(u"\u5c71\u7530") << false;
}

void TestContactExporter::exportedCardIsRead()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(bool, hasPhoto);
    writeCard(cardPath(QStringLiteral("1")), content);
    QString given;
    QString family;
    ContactExporter::resolveContactInfo(QFileInfo(cardPath(QStringLiteral("1"))), given, family);
    QCOMPARE(given, first);
    QCOMPARE(family, second);
    QImage avatar;
    QCOMPARE(ContactExporter::resolveContactAvatar(QStringLiteral("contact:1"), avatar), hasPhoto);
    if (hasPhoto)
        QCOMPARE(avatar.convertToFormat(QImage::Format_RGB32), picture());
}

void TestContactExporter::cardCannotFillTheLog_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("no property") << QByteArray("nothing");
    QTest::newRow("no group") << QByteArray("\x01.\x02:nothing");
    QTest::newRow("bare line ends") << QByteArray("NOTE:a\rX;ENCODING=none:1\rX;ENCODING=none:2");
    QTest::newRow("unknown encoding") << QByteArray("TEL;ENCODING=none:1");
    QTest::newRow("many encodings") << QByteArray("TEL;ENCODING=none;ENCODING=b;ENCODING=BASE64:1");
    QTest::newRow("unknown charset") << QByteArray("TEL;CHARSET=none;ENCODING=QUOTED-PRINTABLE:=ff");
    QTest::newRow("broken quoted-printable") << QByteArray("TEL;ENCODING=QUOTED-PRINTABLE:=zz");
    QTest::newRow("broken photo") << QByteArray("PHOTO;ENCODING=b:nothing");
}

void TestContactExporter::cardCannotFillTheLog()
{
    QFETCH(QByteArray, line);
    writeCard(cardPath(QStringLiteral("1")), card("3.0", (line + "\r\n").repeated(500)));
    messagesOfGLib = 0;
    QString first;
    QString second;
    ContactExporter::resolveContactInfo(QFileInfo(cardPath(QStringLiteral("1"))), first, second);
    QImage avatar;
    ContactExporter::resolveContactAvatar(QStringLiteral("contact:1"), avatar);
    QVERIFY2(messagesOfGLib < 20, qPrintable(QString::number(messagesOfGLib)));
}

void TestContactExporter::pipeAsCardDoesNotBlock()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("card.vcf"));
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    QTest::ignoreMessage(
        QtWarningMsg,
        qUtf8Printable(QStringLiteral("ContactExporter: unable to read %1: not a file").arg(path)));
    QString first;
    QString second;
    ContactExporter::resolveContactInfo(QFileInfo(path), first, second);
    QCOMPARE(first + second, QString());
}

void TestContactExporter::copiesOfEndedProcessesAreRemoved()
{
    QTemporaryDir folder;
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(folder.path()));
    const auto restore = qScopeGuard([&] { qputenv("TMPDIR", before); });
    writeCard(cardPath(QStringLiteral("1")), card("3.0", "N:Doe;Jane\r\n"));

    const pid_t process = fork();
    if (process == 0)
        _exit(0);
    QCOMPARE(waitpid(process, nullptr, 0), process);
    const std::unique_ptr<QFile> mine(ContactExporter::createContactCardFile(QStringLiteral("contact:1")));
    // As the copy of that process would be called.
    QString left = mine->fileName();
    left.replace(QString::number(QCoreApplication::applicationPid()), QString::number(process));
    const QString other = folder.filePath(QStringLiteral("contact-%1-notes.txt").arg(process));
    writeCard(left, "left");
    writeCard(other, "other");

    ContactExporter::removeLeftCopies();
    QVERIFY(!QFile::exists(left));
    QVERIFY(QFile::exists(mine->fileName()));
    QVERIFY(QFile::exists(other));
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
    QTest::newRow("4.0") << card("4.0", "PHOTO:data:image/png;base64," + foldedPicture() + "\r\n");
    QTest::newRow("4.0, percent-encoded") << card(
        "4.0", "PHOTO:data:image/png," + QByteArray::fromBase64(plainPicture()).toPercentEncoding() + "\r\n");
    QTest::newRow("without indentation")
        << card("3.0", "PHOTO;ENCODING=b;TYPE=PNG:" + foldedPicture("\r\n") + "\r\nNOTE:after\r\n");
    QTest::newRow("second photo") << card(
        "3.0", "PHOTO;VALUE=uri:http://example.com/a.png\r\nPHOTO;ENCODING=b:AAAA\r\n"
               "PHOTO;ENCODING=b;TYPE=PNG:" +
                   foldedPicture() + "\r\n");
}

void TestContactExporter::avatarIsRead()
{
    QFETCH(QByteArray, content);
    writeCard(cardPath(QStringLiteral("1")), content);
    QImage avatar;
    QVERIFY(ContactExporter::resolveContactAvatar(QStringLiteral("contact:1"), avatar));
    QCOMPARE(avatar.convertToFormat(QImage::Format_RGB32), picture());
    QCOMPARE(QImage::fromData(ContactExporter::contactPhotos(QStringLiteral("contact:1")).constLast()),
             avatar);
}

void TestContactExporter::avatarIsMissing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no photo") << card("3.0", "N:A;B;;;\r\n");
    QTest::newRow("photo of a nested card")
        << card("2.1", "AGENT:\r\nBEGIN:VCARD\r\nPHOTO;ENCODING=b:" + plainPicture() + "\r\nEND:VCARD\r\n");
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
