// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QDir>
#include <QStandardPaths>
#include <QtTest>

#include <ContentAction>

using ContentAction::Action;

namespace {

void writeFile(const QString &path, const QByteArray &content)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QString applicationFile(const QString &id)
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/applications/%1.desktop").arg(id);
}

void installApplication(const QString &id, const QByteArray &program = "/bin/true",
                        const QByteArray &more = {})
{
    writeFile(applicationFile(id),
              "[Desktop Entry]\nType=Application\nName=Test\nExec=" + program + " %u\n" + more);
}

} // namespace

class TestContentAction : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void defaultActionIsInvalid();
    void schemeHasItsApplication_data();
    void schemeHasItsApplication();
    void stringHasItsApplication_data();
    void stringHasItsApplication();
    void typeHasItsApplication_data();
    void typeHasItsApplication();
    void fileHasTheApplicationOfItsContent_data();
    void fileHasTheApplicationOfItsContent();
    void missingFileHasNoApplication();
    void remoteFileHasNoApplication();
    void applicationIsStartedWithTheUri();
    void applicationThatIsGoneIsNotStarted();

private:
    QTemporaryDir folder;
    QTemporaryDir system;
};

void TestContentAction::initTestCase()
{
    // Before GLib asks: nothing of the machine's own but its content types.
    const QString types = QStandardPaths::locate(QStandardPaths::GenericDataLocation, QStringLiteral("mime"),
                                                 QStandardPaths::LocateDirectory);
    QVERIFY(QFile::link(types, system.filePath(QStringLiteral("mime"))));
    qputenv("XDG_DATA_DIRS", QFile::encodeName(system.path()));
    qputenv("XDG_CONFIG_DIRS", QFile::encodeName(system.path()));
    qunsetenv("XDG_CURRENT_DESKTOP");

    installApplication(QStringLiteral("browser"));
    installApplication(QStringLiteral("mailer"));
    installApplication(QStringLiteral("org.example.Viewer"));
    installApplication(QStringLiteral("editor"));
    installApplication(QStringLiteral("broken"), "/nowhere/program");
    installApplication(QStringLiteral("dialer"));
    installApplication(QStringLiteral("hidden"), "/bin/true", "Hidden=true\n");
    installApplication(QStringLiteral("nodisplay"), "/bin/true", "NoDisplay=true\n");
    writeFile(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                  QStringLiteral("/mimeapps.list"),
              "[Default Applications]\n"
              "x-scheme-handler/http=missing.desktop;browser.desktop;\n"
              "x-scheme-handler/mailto=mailer.desktop\n"
              "x-scheme-handler/geo=missing.desktop\n"
              "x-scheme-handler/market=broken.desktop\n"
              "x-scheme-handler/tel=dialer.desktop\n"
              "x-scheme-handler/hidden=hidden.desktop\n"
              "x-scheme-handler/nodisplay=nodisplay.desktop\n"
              "text/x-hidden=hidden.desktop\n"
              "application/zip=hidden.desktop\n"
              "image/jpeg=org.example.Viewer.desktop\n"
              "text/plain=editor.desktop\n");
}

void TestContentAction::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestContentAction::defaultActionIsInvalid()
{
    QVERIFY(!Action().isValid());
    QCOMPARE(Action().name(), QString());
}

void TestContentAction::schemeHasItsApplication_data()
{
    QTest::addColumn<QString>("uri");
    QTest::addColumn<QString>("application");
    QTest::newRow("web") << QStringLiteral("http://example.com/a?b#c") << QStringLiteral("browser");
    QTest::newRow("capitals") << QStringLiteral("HTTP://EXAMPLE.COM") << QStringLiteral("browser");
    QTest::newRow("mail") << QStringLiteral("mailto:a@example.com") << QStringLiteral("mailer");
    QTest::newRow("scheme alone") << QStringLiteral("mailto:") << QStringLiteral("mailer");
    QTest::newRow("blanks in the rest") << QStringLiteral("mailto:a b") << QStringLiteral("mailer");
    QTest::newRow("application not installed") << QStringLiteral("geo:1,2") << QString();
    QTest::newRow("program not installed") << QStringLiteral("market:1") << QString();
    QTest::newRow("hidden application") << QStringLiteral("hidden:1") << QString();
    QTest::newRow("application without a launcher")
        << QStringLiteral("nodisplay:1") << QStringLiteral("nodisplay");
    QTest::newRow("nobody's") << QStringLiteral("nobody:1") << QString();
    QTest::newRow("no scheme") << QStringLiteral("example.com") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TestContentAction::schemeHasItsApplication()
{
    QFETCH(QString, uri);
    QFETCH(QString, application);
    const Action action = Action::defaultActionForScheme(uri);
    QCOMPARE(action.name(), application);
    QCOMPARE(action.isValid(), !application.isEmpty());
}

void TestContentAction::stringHasItsApplication_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("application");
    QTest::newRow("URI") << QStringLiteral("mailto:a@example.com") << QStringLiteral("mailer");
    QTest::newRow("text") << QStringLiteral("Hello") << QStringLiteral("editor");
    QTest::newRow("text with a colon") << QStringLiteral("Note: hello") << QStringLiteral("editor");
    QTest::newRow("number") << QStringLiteral("tel:+4930123") << QStringLiteral("dialer");
    QTest::newRow("URI with a character beyond 16 bits")
        << QStringLiteral(u"http://example.com/\U0001f600") << QStringLiteral("browser");
    QTest::newRow("number in prose") << QStringLiteral("Tel: 030 123456") << QStringLiteral("editor");
    QTest::newRow("number in prose, no breaking blank")
        << QStringLiteral(u"Tel:030\u00a0123456") << QStringLiteral("editor");
    QTest::newRow("address at the beginning of prose")
        << QStringLiteral("mailto:a@example.com is my address") << QStringLiteral("editor");
    QTest::newRow("two lines") << QStringLiteral("tel:030\ntel:040") << QStringLiteral("editor");
    QTest::newRow("URI with a line's end") << QStringLiteral("tel:030\r\n") << QStringLiteral("dialer");
    QTest::newRow("picture") << QStringLiteral("%PDF-1.5") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TestContentAction::stringHasItsApplication()
{
    QFETCH(QString, data);
    QFETCH(QString, application);
    QCOMPARE(Action::defaultActionForString(data).name(), application);
}

void TestContentAction::typeHasItsApplication_data()
{
    QTest::addColumn<QString>("mimeType");
    QTest::addColumn<QString>("application");
    QTest::newRow("picture") << QStringLiteral("image/jpeg") << QStringLiteral("org.example.Viewer");
    QTest::newRow("capitals") << QStringLiteral("Image/JPEG") << QStringLiteral("org.example.Viewer");
    QTest::newRow("kind of text") << QStringLiteral("text/x-csrc") << QStringLiteral("editor");
    QTest::newRow("hidden application") << QStringLiteral("text/x-hidden") << QString();
    QTest::newRow("nobody's") << QStringLiteral("image/x-nobody") << QString();
    QTest::newRow("no type") << QStringLiteral("nonsense") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TestContentAction::typeHasItsApplication()
{
    QFETCH(QString, mimeType);
    QFETCH(QString, application);
    const QUrl file = QUrl::fromLocalFile(QStringLiteral("/nowhere/a"));
    QCOMPARE(Action::defaultActionForFile(file, mimeType).name(), application);
}

void TestContentAction::fileHasTheApplicationOfItsContent_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("application");
    QTest::newRow("by name") << QStringLiteral("picture.jpg") << QByteArray("\x01\x02")
                             << QStringLiteral("org.example.Viewer");
    QTest::newRow("by content") << QStringLiteral("picture") << QByteArray("\xff\xd8\xff\xe0\0\x10JFIF", 10)
                                << QStringLiteral("org.example.Viewer");
    QTest::newRow("blanks and umlauts")
        << QStringLiteral(u"\u00e4 b#c%20.txt") << QByteArray("text") << QStringLiteral("editor");
    QTest::newRow("hidden application") << QStringLiteral("a.zip") << QByteArray("PK\3\4") << QString();
    QTest::newRow("nobody's") << QStringLiteral("a.pdf") << QByteArray("%PDF-1.5") << QString();
}

void TestContentAction::fileHasTheApplicationOfItsContent()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(QString, application);
    const QString path = folder.filePath(name);
    writeFile(path, content);
    QCOMPARE(Action::defaultActionForFile(QUrl::fromLocalFile(path)).name(), application);
}

void TestContentAction::missingFileHasNoApplication()
{
    QVERIFY(!Action::defaultActionForFile(QUrl::fromLocalFile(folder.filePath(QStringLiteral("none.jpg"))))
                 .isValid());
}

void TestContentAction::remoteFileHasNoApplication()
{
    QVERIFY(!Action::defaultActionForFile(QUrl(QStringLiteral("http://example.com/a.jpg"))).isValid());
    QVERIFY(!Action::defaultActionForFile(QUrl()).isValid());
}

void TestContentAction::applicationIsStartedWithTheUri()
{
    const QString program = folder.filePath(QStringLiteral("writer"));
    const QString written = folder.filePath(QStringLiteral("written"));
    writeFile(program, "#!/bin/sh\nprintf %s \"$1\" >" + QFile::encodeName(written) + ".new\nmv " +
                           QFile::encodeName(written) + ".new " + QFile::encodeName(written) + "\n");
    QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    installApplication(QStringLiteral("mailer"), QFile::encodeName(program));
    const QString uri = QStringLiteral("mailto:ada@example.org?subject=a%20b");
    QVERIFY(Action::defaultActionForScheme(uri).open(uri));
    QTRY_VERIFY(QFile::exists(written));
    QFile file(written);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), uri.toUtf8());
}

void TestContentAction::applicationThatIsGoneIsNotStarted()
{
    QVERIFY(!Action().open(QStringLiteral("mailto:")));
    const Action action = Action::defaultActionForScheme(QStringLiteral("tel:"));
    QVERIFY(action.isValid());
    QVERIFY(QFile::remove(applicationFile(QStringLiteral("dialer"))));
    QVERIFY(!action.open(QStringLiteral("tel:1")));
}

QTEST_GUILESS_MAIN(TestContentAction)
#include "tst_contentaction.moc"
