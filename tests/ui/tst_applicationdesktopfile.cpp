// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDir>
#include <QtTest>

#include "applicationsfolder.h"
#include "ui/applicationdesktopfile.h"

using namespace ConnUi;
using namespace Qt::StringLiterals;

class TestApplicationDesktopFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void installedApplicationHasItsFile_data();
    void installedApplicationHasItsFile();
    void otherIdsHaveNone_data();
    void otherIdsHaveNone();
    void folderIsNoDesktopFile();
};

void TestApplicationDesktopFile::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
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
    applications.install(id, u"Name"_s, u"icon"_s);
    QCOMPARE(applicationDesktopFile(id), u"/usr/share/applications/"_s + id + u".desktop"_s);
}

void TestApplicationDesktopFile::otherIdsHaveNone_data()
{
    QTest::addColumn<QString>("id");
    QTest::newRow("empty") << QString();
    QTest::newRow("not installed") << u"missing"_s;
    QTest::newRow("other case") << u"Browser"_s;
    QTest::newRow("with the suffix") << u"browser.desktop"_s;
    QTest::newRow("path to it") << u"/usr/share/applications/browser"_s;
    QTest::newRow("through a folder and back") << u"sub/../browser"_s;
    QTest::newRow("through itself") << u"./browser"_s;
    QTest::newRow("elsewhere") << u"../hostile"_s;
    QTest::newRow("in a folder") << u"sub/browser"_s;
    QTest::newRow("folder above") << u".."_s;
    QTest::newRow("broken off") << u"browser\0rest"_s;
}

void TestApplicationDesktopFile::otherIdsHaveNone()
{
    QFETCH(QString, id);
    const ApplicationsFolder applications;
    applications.install(u"browser"_s, u"Browser"_s, u"icon"_s);
    // Named ".." or reached through a folder, these files are there all the same.
    applications.install(u".."_s, u"Above"_s, u"icon"_s);
    QDir().mkpath(u"/usr/share/applications/sub"_s);
    applications.install(u"sub/browser"_s, u"Browser"_s, u"icon"_s);
    QCOMPARE(applicationDesktopFile(id), QString());
    QVERIFY(QDir(u"/usr/share/applications/sub"_s).removeRecursively());
}

void TestApplicationDesktopFile::folderIsNoDesktopFile()
{
    const ApplicationsFolder applications;
    QVERIFY(QDir().mkdir(u"/usr/share/applications/folder.desktop"_s));
    QCOMPARE(applicationDesktopFile(u"folder"_s), QString());
    QVERIFY(QDir().rmdir(u"/usr/share/applications/folder.desktop"_s));
}

QTEST_GUILESS_MAIN(TestApplicationDesktopFile)
#include "tst_applicationdesktopfile.moc"
