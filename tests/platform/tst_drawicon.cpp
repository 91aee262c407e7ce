// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <csignal>
#include <sys/stat.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include "processortime.h"

namespace {

/** The program that draws icons of others, on one of them. */
class DrawIcon : public QProcess
{
public:
    explicit DrawIcon(const QString &icon)
    {
        setStandardErrorFile(QProcess::nullDevice());
        // It needs no display, whatever the program that asks for the icon has.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("missing"));
        setProcessEnvironment(environment);
        const QString theme = QStringLiteral("hicolor");
        const QString folders = QStringLiteral("/usr/share/icons");
        start(QStringLiteral(DRAW_ICON), {icon, theme, theme, folders, folders});
    }
};

} // namespace

class TestDrawIcon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void drawingWithoutEndEndsAfterOneSecondOfWork();
    void limitsHoldBeforeTheFileIsOpened();
    void argumentsAreCounted();
    void iconIsDrawn();

private:
    QTemporaryDir folder;
};

void TestDrawIcon::drawingWithoutEndEndsAfterOneSecondOfWork()
{
    // A long line of tiny dashes, drawn again and again.
    QFile file(folder.filePath(QStringLiteral("endless.svg")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(
        "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='64' "
        "height='64'><path id='line' stroke='red' stroke-dasharray='0.01' d='M0 0C" +
        QByteArray(" 1 2 3 4 5 6").repeated(300) + "'/>" +
        QByteArray("<use xlink:href='#line'/>").repeated(100000) + "</svg>");
    file.close();

    const double before = secondsOfChildren();
    DrawIcon program(file.fileName());
    QVERIFY(program.waitForFinished(-1));
    QCOMPARE(program.exitStatus(), QProcess::CrashExit);
    QCOMPARE(program.exitCode(), SIGKILL);
    QVERIFY(secondsOfChildren() - before < 1.5);
}

void TestDrawIcon::limitsHoldBeforeTheFileIsOpened()
{
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    DrawIcon program(pipe);
    QVERIFY(program.waitForStarted());
    // It is there when the program has opened the other end.
    QFile writer(pipe);
    QVERIFY(writer.open(QIODevice::WriteOnly));

    QFile limits(QStringLiteral("/proc/%1/limits").arg(program.processId()));
    QVERIFY(limits.open(QIODevice::ReadOnly));
    const QString all = QString::fromLatin1(limits.readAll()).simplified();
    QVERIFY2(all.contains(QLatin1String("Max cpu time 1 1 seconds")), qPrintable(all));
    QVERIFY2(all.contains(QLatin1String("Max core file size 0 0 bytes")), qPrintable(all));
#ifndef __SANITIZE_ADDRESS__
    QVERIFY2(all.contains(QLatin1String("Max address space 536870912 536870912 bytes")), qPrintable(all));
#endif
    writer.close();
    QVERIFY(program.waitForFinished(-1));
}

void TestDrawIcon::argumentsAreCounted()
{
    QProcess program;
    program.start(QStringLiteral(DRAW_ICON), {QStringLiteral("icon")});
    QVERIFY(program.waitForFinished(-1));
    QCOMPARE(program.exitCode(), 64);
}

void TestDrawIcon::iconIsDrawn()
{
    QFile file(folder.filePath(QStringLiteral("red.svg")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<svg xmlns='http://www.w3.org/2000/svg' width='64' height='64'><path fill='#ff0000' "
               "d='M0 0H64V64H0Z'/></svg>");
    file.close();
    DrawIcon program(file.fileName());
    QVERIFY(program.waitForFinished(-1));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    // QImage writes the picture as a PNG file.
    QVERIFY(program.readAllStandardOutput().contains("\x89PNG"));
}

QTEST_GUILESS_MAIN(TestDrawIcon)
#include "tst_drawicon.moc"
