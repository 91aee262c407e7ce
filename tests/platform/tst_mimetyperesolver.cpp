// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <MimeTypeResolver>

using ConnUi::MimeTypeResolver;

class TestMimeTypeResolver : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void nameTellsTheType_data();
    void nameTellsTheType();
    void contentTellsTheTypeOfANamelessFile();
    void unknownFileIsOctetStream();
};

void TestMimeTypeResolver::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestMimeTypeResolver::nameTellsTheType_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("type");
    QTest::newRow("picture") << QStringLiteral("/nowhere/a.jpg") << QStringLiteral("image/jpeg");
    QTest::newRow("capitals") << QStringLiteral("/nowhere/A.JPG") << QStringLiteral("image/jpeg");
    QTest::newRow("video") << QStringLiteral("/nowhere/a.mp4") << QStringLiteral("video/mp4");
    QTest::newRow("document") << QStringLiteral("/nowhere/a.pdf") << QStringLiteral("application/pdf");
    QTest::newRow("blanks and dots") << QStringLiteral("/nowhere/a b.c.png") << QStringLiteral("image/png");
}

void TestMimeTypeResolver::nameTellsTheType()
{
    QFETCH(QString, path);
    QFETCH(QString, type);
    QCOMPARE(MimeTypeResolver::mimeTypeForFilePath(path), type);
}

void TestMimeTypeResolver::contentTellsTheTypeOfANamelessFile()
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("picture")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("\x89PNG\r\n\x1a\n");
    file.close();
    QCOMPARE(MimeTypeResolver::mimeTypeForFilePath(file.fileName()), QStringLiteral("image/png"));
}

void TestMimeTypeResolver::unknownFileIsOctetStream()
{
    QCOMPARE(MimeTypeResolver::mimeTypeForFilePath(QStringLiteral("/nowhere/unknown")),
             QStringLiteral("application/octet-stream"));
    QCOMPARE(MimeTypeResolver::mimeTypeForFilePath(QString()), QStringLiteral("application/octet-stream"));
}

QTEST_GUILESS_MAIN(TestMimeTypeResolver)
#include "tst_mimetyperesolver.moc"
