// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <NfcApplication>

#include "applicationsfolder.h"

using ConnUi::NfcApplication;

namespace {

constexpr int patience = 30000; // ms
const auto uri = QStringLiteral("https://example.org/$HOME/${PATH}?a=%20b&c='d'");

} // namespace

class TestNfcApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void applicationIsStarted();
    void systemdStartsTheApplicationOfAService();
    void serviceStartsItWhereSystemdDoesNot();
    void missingApplicationIsLogged();
    void fileIsOpenedByItsContent();
    void installedApplicationHasItsFile_data();
    void installedApplicationHasItsFile();
    void otherIdsHaveNoDesktopFile_data();
    void otherIdsHaveNoDesktopFile();
    void folderIsNoDesktopFile();
    void nameAndIconAreThoseOfTheDesktopFile();
    void applicationWithoutAFileIsNamedByItsId();
    void defaultApplicationIsThatOfTheScheme();

private:
    void write(const QString &name, const QByteArray &content);
    void writeProgram(const QString &name, const QByteArray &lines);
    QStringList linesOf(const QString &name) const;

    QTemporaryDir folder;
};

void TestNfcApplication::write(const QString &name, const QByteArray &content)
{
    QFile file(folder.filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

void TestNfcApplication::writeProgram(const QString &name, const QByteArray &lines)
{
    write(name, "#!/bin/sh\n" + lines);
    QFile::setPermissions(folder.filePath(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

// Returns the arguments that a program of the folder was started with.
QStringList TestNfcApplication::linesOf(const QString &name) const
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

void TestNfcApplication::initTestCase()
{
    // GIO looks there once.
    qputenv("XDG_DATA_HOME", QFile::encodeName(folder.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("applications")));
    qputenv("PATH", QFile::encodeName(folder.path()) + ':' + qgetenv("PATH"));
    for (const char *name : {"browser", "gio", "systemd-run"}) {
        const QByteArray out =
            QFile::encodeName(folder.filePath(QLatin1String(name) + QStringLiteral(".out")));
        writeProgram(QLatin1String(name), "printf '%s\\n' \"$@\" >\"" + out + ".new\" && mv \"" + out +
                                              ".new\" \"" + out + "\"\nexit ${SYSTEMD_RUN_RESULT:-0}\n");
    }
    write(QStringLiteral("applications/browser.desktop"),
          "[Desktop Entry]\nType=Application\nName=Browser\nExec=browser %u\n");
    write(QStringLiteral("mimeapps.list"),
          "[Default Applications]\nx-scheme-handler/https=browser.desktop\ntext/html=browser.desktop\n");
}

void TestNfcApplication::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    qunsetenv("INVOCATION_ID");
    qunsetenv("SYSTEMD_RUN_RESULT");
    for (const QString &file : QDir(folder.path()).entryList({QStringLiteral("*.out")}))
        QFile::remove(folder.filePath(file));
}

void TestNfcApplication::applicationIsStarted()
{
    NfcApplication::openUri(uri);
    QTRY_COMPARE_WITH_TIMEOUT(linesOf(QStringLiteral("browser.out")), QStringList(uri), patience);
    QVERIFY(linesOf(QStringLiteral("systemd-run.out")).isEmpty());
}

void TestNfcApplication::systemdStartsTheApplicationOfAService()
{
    qputenv("INVOCATION_ID", "0123456789abcdef0123456789abcdef");
    qputenv("WAYLAND_DISPLAY", "wayland-7");
    qunsetenv("DISPLAY");
    qunsetenv("XAUTHORITY");
    NfcApplication::openUri(uri);
    const QStringList expected{QStringLiteral("--user"), QStringLiteral("--quiet"),
                               QStringLiteral("--collect"), QStringLiteral("--slice=app.slice"),
                               QStringLiteral("--setenv=WAYLAND_DISPLAY"), QStringLiteral("--"),
                               QStringLiteral("gio"), QStringLiteral("launch"),
                               folder.filePath(QStringLiteral("applications/browser.desktop")),
                               // systemd makes one dollar sign of two, and a variable's value of one.
                               QStringLiteral("https://example.org/$$HOME/$${PATH}?a=%20b&c='d'")};
    QTRY_COMPARE_WITH_TIMEOUT(linesOf(QStringLiteral("systemd-run.out")), expected, patience);
    QVERIFY(linesOf(QStringLiteral("browser.out")).isEmpty());
}

void TestNfcApplication::serviceStartsItWhereSystemdDoesNot()
{
    qputenv("INVOCATION_ID", "0123456789abcdef0123456789abcdef");
    qputenv("SYSTEMD_RUN_RESULT", "1");
    NfcApplication::openUri(uri);
    QTRY_COMPARE_WITH_TIMEOUT(linesOf(QStringLiteral("browser.out")), QStringList(uri), patience);
}

void TestNfcApplication::missingApplicationIsLogged()
{
    QTest::ignoreMessage(QtWarningMsg, "NfcApplication: unable to start the application ''");
    NfcApplication::openUri(QStringLiteral("nobody:x"));
}

void TestNfcApplication::installedApplicationHasItsFile_data()
{
    QTest::addColumn<QString>("id");
    for (const char *id : {"browser", "org.example.Viewer", "two..dots", "a b", "%1", "ä", "CAPITALS"})
        QTest::newRow(id) << QString::fromUtf8(id);
}

void TestNfcApplication::installedApplicationHasItsFile()
{
    QFETCH(QString, id);
    const ApplicationsFolder applications;
    QCOMPARE(NfcApplication(id).desktopFile(), QString());
    applications.install(id, QStringLiteral("Name"), QStringLiteral("icon"));
    QCOMPARE(NfcApplication(id).desktopFile(),
             QStringLiteral("/usr/share/applications/") + id + QStringLiteral(".desktop"));
}

void TestNfcApplication::otherIdsHaveNoDesktopFile_data()
{
    QTest::addColumn<QString>("id");
    QTest::newRow("empty") << QString();
    QTest::newRow("not installed") << QStringLiteral("missing");
    QTest::newRow("other case") << QStringLiteral("Browser");
    QTest::newRow("with the suffix") << QStringLiteral("browser.desktop");
    QTest::newRow("path to it") << QStringLiteral("/usr/share/applications/browser");
    QTest::newRow("through a folder and back") << QStringLiteral("sub/../browser");
    QTest::newRow("through itself") << QStringLiteral("./browser");
    QTest::newRow("elsewhere") << QStringLiteral("../hostile");
    QTest::newRow("in a folder") << QStringLiteral("sub/browser");
    QTest::newRow("folder above") << QStringLiteral("..");
    QTest::newRow("broken off") << QStringLiteral("browser\0rest");
}

void TestNfcApplication::otherIdsHaveNoDesktopFile()
{
    QFETCH(QString, id);
    const ApplicationsFolder applications;
    applications.install(QStringLiteral("browser"), QStringLiteral("Browser"), QStringLiteral("icon"));
    // Named ".." or reached through a folder, these files are there all the same.
    applications.install(QStringLiteral(".."), QStringLiteral("Above"), QStringLiteral("icon"));
    QDir().mkpath(QStringLiteral("/usr/share/applications/sub"));
    applications.install(QStringLiteral("sub/browser"), QStringLiteral("Browser"), QStringLiteral("icon"));
    QCOMPARE(NfcApplication(id).desktopFile(), QString());
    QVERIFY(QDir(QStringLiteral("/usr/share/applications/sub")).removeRecursively());
}

void TestNfcApplication::folderIsNoDesktopFile()
{
    const ApplicationsFolder applications;
    QVERIFY(QDir().mkdir(QStringLiteral("/usr/share/applications/folder.desktop")));
    QCOMPARE(NfcApplication(QStringLiteral("folder")).desktopFile(), QString());
    QVERIFY(QDir().rmdir(QStringLiteral("/usr/share/applications/folder.desktop")));
}

void TestNfcApplication::nameAndIconAreThoseOfTheDesktopFile()
{
    const ApplicationsFolder applications;
    applications.install(QStringLiteral("notes"), QStringLiteral("All my notes\u009cNotes"),
                         QStringLiteral("icon-notes"));
    const NfcApplication application(QStringLiteral("notes"));
    QCOMPARE(application.name(), QStringLiteral("All my notes"));
    QCOMPARE(application.icon(), QStringLiteral("icon-notes"));
}

void TestNfcApplication::applicationWithoutAFileIsNamedByItsId()
{
    const NfcApplication application(QStringLiteral("missing"));
    QCOMPARE(application.id(), QStringLiteral("missing"));
    QCOMPARE(application.name(), QStringLiteral("missing"));
    QCOMPARE(application.icon(), QString());
}

void TestNfcApplication::defaultApplicationIsThatOfTheScheme()
{
    QCOMPARE(NfcApplication::defaultForUri(uri).id(), QStringLiteral("browser"));
    QCOMPARE(NfcApplication::defaultForUri(QStringLiteral("nobody:x")).id(), QString());
}

void TestNfcApplication::fileIsOpenedByItsContent()
{
    const QString file = folder.filePath(QStringLiteral("a file.html"));
    write(QStringLiteral("a file.html"), "<html></html>");
    NfcApplication::openFile(file);
    // GIO hands on a local file by its path.
    QTRY_COMPARE_WITH_TIMEOUT(linesOf(QStringLiteral("browser.out")), QStringList(file), patience);
}

QTEST_GUILESS_MAIN(TestNfcApplication)
#include "tst_nfcapplication.moc"
