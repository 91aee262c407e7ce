// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDir>
#include <QtTest>

#include "applicationsfolder.h"
#include "ui/applicationdesktopfile.h"

using namespace ConnUi;

class TestApplicationDesktopFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void installedApplicationHasItsFile_data();
    void installedApplicationHasItsFile();
    void otherIdsHaveNoDesktopFile_data();
    void otherIdsHaveNoDesktopFile();
    void folderIsNoDesktopFile();
};

void TestApplicationDesktopFile::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestApplicationDesktopFile::installedApplicationHasItsFile_data()
{
    QTest::addColumn<QString>("id");
    for (const char *id : {"browser", "org.example.Viewer", "two..dots", "a b", "%1", "ä", "CAPITALS"})
        QTest::newRow(id) << QString::fromUtf8(id);
}

void TestApplicationDesktopFile::installedApplicationHasItsFile()
{
    QFETCH(QString, id);
    const ApplicationsFolder applications;
    QCOMPARE(applicationDesktopFile(id), QString());
    applications.install(id, QStringLiteral("Name"), QStringLiteral("icon"));
    QCOMPARE(applicationDesktopFile(id),
             QStringLiteral("/usr/share/applications/") + id + QStringLiteral(".desktop"));
}

void TestApplicationDesktopFile::otherIdsHaveNoDesktopFile_data()
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

void TestApplicationDesktopFile::otherIdsHaveNoDesktopFile()
{
    QFETCH(QString, id);
    const ApplicationsFolder applications;
    applications.install(QStringLiteral("browser"), QStringLiteral("Browser"), QStringLiteral("icon"));
    // Named ".." or reached through a folder, these files are there all the same.
    applications.install(QStringLiteral(".."), QStringLiteral("Above"), QStringLiteral("icon"));
    QDir().mkpath(QStringLiteral("/usr/share/applications/sub"));
    applications.install(QStringLiteral("sub/browser"), QStringLiteral("Browser"), QStringLiteral("icon"));
    QCOMPARE(applicationDesktopFile(id), QString());
    QVERIFY(QDir(QStringLiteral("/usr/share/applications/sub")).removeRecursively());
}

void TestApplicationDesktopFile::folderIsNoDesktopFile()
{
    const ApplicationsFolder applications;
    QVERIFY(QDir().mkdir(QStringLiteral("/usr/share/applications/folder.desktop")));
    QCOMPARE(applicationDesktopFile(QStringLiteral("folder")), QString());
    QVERIFY(QDir().rmdir(QStringLiteral("/usr/share/applications/folder.desktop")));
}

QTEST_GUILESS_MAIN(TestApplicationDesktopFile)
#include "tst_applicationdesktopfile.moc"
