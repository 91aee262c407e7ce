// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "core/desktopapplication.h"

namespace {

constexpr int patience = 30000; // ms
const auto uri = QStringLiteral("https://example.org/$HOME/${PATH}?a=%20b&c='d'");

} // namespace

class TestDesktopApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void applicationIsStarted();
    void systemdStartsTheApplicationOfAService();
    void serviceStartsItWhereSystemdDoesNot();
    void missingApplicationIsLogged();

private:
    void write(const QString &name, const QByteArray &content);
    void writeProgram(const QString &name, const QByteArray &lines);
    QStringList linesOf(const QString &name) const;

    QTemporaryDir folder;
};

void TestDesktopApplication::write(const QString &name, const QByteArray &content)
{
    QFile file(folder.filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

void TestDesktopApplication::writeProgram(const QString &name, const QByteArray &lines)
{
    write(name, "#!/bin/sh\n" + lines);
    QFile::setPermissions(folder.filePath(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

// Returns the arguments that a program of the folder was started with.
QStringList TestDesktopApplication::linesOf(const QString &name) const
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

void TestDesktopApplication::initTestCase()
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
          "[Default Applications]\nx-scheme-handler/https=browser.desktop\n");
}

void TestDesktopApplication::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    qunsetenv("INVOCATION_ID");
    qunsetenv("SYSTEMD_RUN_RESULT");
    for (const QString &file : QDir(folder.path()).entryList({QStringLiteral("*.out")}))
        QFile::remove(folder.filePath(file));
}

void TestDesktopApplication::applicationIsStarted()
{
    openLink(uri);
    QTRY_COMPARE_WITH_TIMEOUT(linesOf(QStringLiteral("browser.out")), QStringList(uri), patience);
    QVERIFY(linesOf(QStringLiteral("systemd-run.out")).isEmpty());
}

void TestDesktopApplication::systemdStartsTheApplicationOfAService()
{
    qputenv("INVOCATION_ID", "0123456789abcdef0123456789abcdef");
    qputenv("WAYLAND_DISPLAY", "wayland-7");
    qunsetenv("DISPLAY");
    qunsetenv("XAUTHORITY");
    openLink(uri);
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

void TestDesktopApplication::serviceStartsItWhereSystemdDoesNot()
{
    qputenv("INVOCATION_ID", "0123456789abcdef0123456789abcdef");
    qputenv("SYSTEMD_RUN_RESULT", "1");
    openLink(uri);
    QTRY_COMPARE_WITH_TIMEOUT(linesOf(QStringLiteral("browser.out")), QStringList(uri), patience);
}

void TestDesktopApplication::missingApplicationIsLogged()
{
    QTest::ignoreMessage(QtWarningMsg, "Unable to start the application ''");
    openLink(QStringLiteral("nobody:x"));
}

QTEST_GUILESS_MAIN(TestDesktopApplication)
#include "tst_desktopapplication.moc"
