// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <csignal>
#include <functional>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QThread>
#include <QtTest>

#include <ConnectivitySettings>

using ConnUi::ConnectivitySettings;

namespace {

const auto settingKey = QStringLiteral("nfc_show_confirmations");

QString folder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/connui");
}

QString storePath()
{
    return folder() + QStringLiteral("/settings.cbor");
}

void writeStore(const QByteArray &content)
{
    QVERIFY(QDir().mkpath(folder()));
    QFile file(storePath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

void expectWarning(const char *what, const QString &reason)
{
    QTest::ignoreMessage(QtWarningMsg,
                         qUtf8Printable(QStringLiteral("ConnectivitySettings: unable to %1 %2: %3")
                                            .arg(QLatin1String(what), storePath(), reason)));
}

struct Writer
{
    explicit Writer(const QString &key, int count)
    {
        process.start(QStringLiteral(SETTINGS_WRITER), {key, QString::number(count)});
    }

    // The number in the last line that starts with a word; 0 without such a line.
    static int last(const QByteArray &output, const QByteArray &word)
    {
        int found = 0;
        for (const QByteArray &line : output.split('\n'))
            if (line.startsWith(word + ' '))
                found = line.mid(word.size() + 1).toInt();
        return found;
    }

    QProcess process;
};

// An environment variable that is another one, or none, for as long as the object lives.
class Variable
{
public:
    Variable(const char *name, const char *value) : name(name), before(qgetenv(name))
    {
        if (value)
            qputenv(name, value);
        else
            qunsetenv(name);
    }
    ~Variable() { qputenv(name, before); }
    Q_DISABLE_COPY_MOVE(Variable)

private:
    const char *name;
    const QByteArray before;
};

// Hears of each file that the process has put on the disk.
std::function<void(int)> synced = [](int) {};

constexpr QFile::Permissions accessOfOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                              QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;

} // namespace

// In place of the system's: what is called here is called by the libraries as well.
extern "C" Q_DECL_EXPORT int fsync(int file)
{
    synced(file);
    return int(syscall(SYS_fsync, file));
}

class TestConnectivitySettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void unsetKeyIsInvalid();
    void valueKeepsItsType_data();
    void valueKeepsItsType();
    void typesAreGroupsOfTheirOwn();
    void invalidValueRemovesTheKey();
    void valueWithoutStoredFormIsRefused();
    void rubbishMeansDefaultsAndOneWarning_data();
    void rubbishMeansDefaultsAndOneWarning();
    void rubbishIsReplacedByTheNextWrite();
    void rubbishIsKeptAsACopy();
    void newFoldersAreForTheUserAlone();
    void relativeConfigFolderDoesNotCount();
    void withoutHomeNothingIsStored_data();
    void withoutHomeNothingIsStored();
    void folderIsSyncedAfterTheNewFileIsInPlace();
    void writingLeavesNothingOpen();
    void leftoversOfKilledWritersAreRemoved();
    void contentOfTheLockFileStays();
    void lockFileIsNoLink();
    void pipeAsLockDoesNotBlock();
    void unwritableFolderKeepsTheOldValue();
    void unreadableValueKeepsTheOldValue_data();
    void unreadableValueKeepsTheOldValue();
    void fullDiskKeepsTheOldValue();
    void heldLockEndsTheWriteInTime();
    void otherProcessSeesTheValueAtItsNextRead();
    void writerInALoopLetsOthersIn();
    void twoProcessesLoseNothing();
    void killedWriterLeavesOldOrNewValue();
};

void TestConnectivitySettings::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestConnectivitySettings::cleanup()
{
    QVERIFY(QDir(folder()).removeRecursively());
    // A whole store ends the silence about a damaged one.
    ConnectivitySettings(1).set(settingKey, QVariant());
    ConnectivitySettings(1).get(settingKey);
    QVERIFY(QDir(folder()).removeRecursively());
}

void TestConnectivitySettings::unsetKeyIsInvalid()
{
    QVERIFY(!ConnectivitySettings(1).get(settingKey).isValid());
    QVERIFY(!QFile::exists(folder()));
}

void TestConnectivitySettings::valueKeepsItsType_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("true") << QVariant(true);
    QTest::newRow("false") << QVariant(false);
    QTest::newRow("string that reads as a boolean") << QVariant(QStringLiteral("true"));
    QTest::newRow("empty string") << QVariant(QLatin1String(""));
    QTest::newRow("integer") << QVariant(qlonglong(1));
    QTest::newRow("whole double") << QVariant(1.0);
    QTest::newRow("string list") << QVariant(QVariantList{QStringLiteral("a"), true});
    QTest::newRow("bytes") << QVariant(QByteArray("\0\xff", 2));
    QTest::newRow("map") << QVariant(QVariantMap{{QStringLiteral("a"), false}});
}

void TestConnectivitySettings::valueKeepsItsType()
{
    QFETCH(QVariant, value);
    ConnectivitySettings settings(1);
    settings.set(settingKey, value);
    QCOMPARE(settings.get(settingKey).typeName(), value.typeName());
    QCOMPARE(settings.get(settingKey), value);
}

void TestConnectivitySettings::typesAreGroupsOfTheirOwn()
{
    ConnectivitySettings(1).set(settingKey, true);
    ConnectivitySettings(2).set(settingKey, QStringLiteral("other"));
    QCOMPARE(ConnectivitySettings(1).get(settingKey), QVariant(true));
    QCOMPARE(ConnectivitySettings(2).get(settingKey), QVariant(QStringLiteral("other")));
    QVERIFY(!ConnectivitySettings(3).get(settingKey).isValid());
}

void TestConnectivitySettings::invalidValueRemovesTheKey()
{
    ConnectivitySettings settings(1);
    settings.set(settingKey, true);
    settings.set(settingKey, QVariant());
    QVERIFY(!settings.get(settingKey).isValid());
}

void TestConnectivitySettings::valueWithoutStoredFormIsRefused()
{
    ConnectivitySettings settings(1);
    settings.set(settingKey, true);
    QTest::ignoreMessage(
        QtWarningMsg,
        "ConnectivitySettings: unable to store nfc_show_confirmations: a QObject* has no stored form");
    settings.set(settingKey, QVariant::fromValue<QObject *>(this));
    QCOMPARE(settings.get(settingKey), QVariant(true));
}

void TestConnectivitySettings::rubbishMeansDefaultsAndOneWarning_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    QTest::newRow("not the format") << QByteArray("\xff\xff rubbish")
                                    << QStringLiteral("Invalid CBOR stream: unexpected 'break' byte");
    QTest::newRow("cut") << QByteArray("\xa1\x61")
                         << QStringLiteral("Unexpected end of input data (more bytes needed)");
    QTest::newRow("empty") << QByteArray()
                           << QStringLiteral("Unexpected end of input data (more bytes needed)");
    QTest::newRow("more after the map")
        << QByteArray("\xa0 rubbish") << QStringLiteral("not a settings file");
    QTest::newRow("not a map") << QByteArray("\x01") << QStringLiteral("not a settings file");
    QTest::newRow("huge") << QByteArray((1 << 20) + 1, '\0') << QStringLiteral("not a settings file");
}

void TestConnectivitySettings::rubbishMeansDefaultsAndOneWarning()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    writeStore(content);
    expectWarning("understand", reason);
    QVERIFY(!ConnectivitySettings(1).get(settingKey).isValid());
    QVERIFY(!ConnectivitySettings(1).get(settingKey).isValid());
    QVERIFY(!ConnectivitySettings(2).get(settingKey).isValid());
}

void TestConnectivitySettings::rubbishIsReplacedByTheNextWrite()
{
    writeStore("rubbish");
    expectWarning("understand", QStringLiteral("Unexpected end of input data (more bytes needed)"));
    ConnectivitySettings(1).set(settingKey, true);
    QCOMPARE(ConnectivitySettings(1).get(settingKey), QVariant(true));
}

void TestConnectivitySettings::rubbishIsKeptAsACopy()
{
    writeStore("rubbish");
    expectWarning("understand", QStringLiteral("Unexpected end of input data (more bytes needed)"));
    ConnectivitySettings(1).set(settingKey, true);
    ConnectivitySettings(1).set(settingKey, false);
    QFile copy(storePath() + QStringLiteral(".damaged"));
    QVERIFY(copy.open(QIODevice::ReadOnly));
    QCOMPARE(copy.readAll(), QByteArray("rubbish"));
}

void TestConnectivitySettings::newFoldersAreForTheUserAlone()
{
    QTemporaryDir temporary;
    const QString config = temporary.filePath(QStringLiteral("new/config"));
    const Variable variable("XDG_CONFIG_HOME", config.toUtf8().constData());
    ConnectivitySettings(1).set(settingKey, true);
    QCOMPARE(ConnectivitySettings(1).get(settingKey), QVariant(true));
    for (const QString &made :
         {temporary.filePath(QStringLiteral("new")), config, config + QStringLiteral("/connui")}) {
        QVERIFY2(QFileInfo(made).isDir(), qPrintable(made));
        QCOMPARE(QFileInfo(made).permissions() & accessOfOthers, QFile::Permissions());
    }
}

void TestConnectivitySettings::relativeConfigFolderDoesNotCount()
{
    const QTemporaryDir home;
    const QTemporaryDir current;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(current.path()));
    const auto back = qScopeGuard([&] { QDir::setCurrent(before); });
    const Variable homeVariable("HOME", home.path().toUtf8().constData());
    const Variable variable("XDG_CONFIG_HOME", "relative");
    ConnectivitySettings(1).set(settingKey, true);
    QCOMPARE(ConnectivitySettings(1).get(settingKey), QVariant(true));
    QVERIFY(QFile::exists(home.filePath(QStringLiteral(".config/connui/settings.cbor"))));
    QVERIFY(QDir(current.path()).isEmpty());
}

void TestConnectivitySettings::withoutHomeNothingIsStored_data()
{
    QTest::addColumn<bool>("isSet");
    QTest::addColumn<QByteArray>("home");
    QTest::newRow("unset") << false << QByteArray();
    QTest::newRow("empty") << true << QByteArray();
    QTest::newRow("root folder") << true << QByteArray("/");
    QTest::newRow("root folder, twice") << true << QByteArray("//");
    QTest::newRow("relative") << true << QByteArray("home");
}

void TestConnectivitySettings::withoutHomeNothingIsStored()
{
    QFETCH(bool, isSet);
    QFETCH(QByteArray, home);
    const QTemporaryDir current;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(current.path()));
    const auto back = qScopeGuard([&] { QDir::setCurrent(before); });
    const Variable homeVariable("HOME", isSet ? home.constData() : nullptr);
    const Variable variable("XDG_CONFIG_HOME", nullptr);
    QVERIFY(!ConnectivitySettings(1).get(settingKey).isValid());
    QTest::ignoreMessage(QtWarningMsg,
                         "ConnectivitySettings: unable to write settings: there is no home folder");
    ConnectivitySettings(1).set(settingKey, true);
    QVERIFY(!ConnectivitySettings(1).get(settingKey).isValid());
    QVERIFY(!QFile::exists(QStringLiteral("/.config/connui")));
    QVERIFY(QDir(current.path()).isEmpty());
}

void TestConnectivitySettings::folderIsSyncedAfterTheNewFileIsInPlace()
{
    ConnectivitySettings(1).set(settingKey, QStringLiteral("old"));
    struct stat expected;
    QCOMPARE(stat(QFile::encodeName(folder()).constData(), &expected), 0);
    QVariantList seen;
    synced = [&](int file) {
        struct stat status;
        if (fstat(file, &status) == 0 && status.st_dev == expected.st_dev && status.st_ino == expected.st_ino)
            seen.append(ConnectivitySettings(1).get(settingKey));
    };
    const auto deaf = qScopeGuard([] { synced = [](int) {}; });
    ConnectivitySettings(1).set(settingKey, QStringLiteral("new"));
    QCOMPARE(seen, QVariantList{QStringLiteral("new")});
}

void TestConnectivitySettings::writingLeavesNothingOpen()
{
    const auto open = [] {
        return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System);
    };
    ConnectivitySettings settings(1);
    settings.set(settingKey, 0);
    const QStringList before = open();
    QVERIFY(!before.isEmpty());
    for (int value = 1; value < 5; ++value)
        settings.set(settingKey, value);
    QCOMPARE(open(), before);
}

void TestConnectivitySettings::leftoversOfKilledWritersAreRemoved()
{
    ConnectivitySettings(1).set(settingKey, true);
    QFile leftover(storePath() + QStringLiteral(".a1B2c3"));
    QVERIFY(leftover.open(QIODevice::WriteOnly));
    leftover.close();
    ConnectivitySettings(1).set(settingKey, false);
    QVERIFY(!leftover.exists());
}

void TestConnectivitySettings::contentOfTheLockFileStays()
{
    QVERIFY(QDir().mkpath(folder()));
    QFile lock(folder() + QStringLiteral("/settings.lock"));
    QVERIFY(lock.open(QIODevice::ReadWrite));
    lock.write("content");
    QVERIFY(lock.flush());
    ConnectivitySettings(1).set(settingKey, true);
    QVERIFY(lock.seek(0));
    QCOMPARE(lock.readAll(), QByteArray("content"));
}

void TestConnectivitySettings::lockFileIsNoLink()
{
    QVERIFY(QDir().mkpath(folder()));
    const QString target = folder() + QStringLiteral("/target");
    QVERIFY(QFile::link(target, folder() + QStringLiteral("/settings.lock")));
    QTest::ignoreMessage(
        QtWarningMsg,
        qUtf8Printable(
            QStringLiteral(
                "ConnectivitySettings: unable to lock %1/settings.lock: Too many levels of symbolic links")
                .arg(folder())));
    ConnectivitySettings(1).set(settingKey, true);
    QVERIFY(!QFile::exists(target));
}

void TestConnectivitySettings::pipeAsLockDoesNotBlock()
{
    QVERIFY(QDir().mkpath(folder()));
    QCOMPARE(mkfifo(QFile::encodeName(folder() + QStringLiteral("/settings.lock")).constData(), 0600), 0);
    QTest::ignoreMessage(
        QtWarningMsg,
        qUtf8Printable(QStringLiteral("ConnectivitySettings: unable to lock %1/settings.lock: not a file")
                           .arg(folder())));
    ConnectivitySettings(1).set(settingKey, true);
    QVERIFY(!ConnectivitySettings(1).get(settingKey).isValid());
}

void TestConnectivitySettings::unwritableFolderKeepsTheOldValue()
{
    // A folder in the lock's place, as permissions do not stop root.
    ConnectivitySettings(1).set(settingKey, QStringLiteral("old"));
    QVERIFY(QFile::remove(folder() + QStringLiteral("/settings.lock")));
    QVERIFY(QDir().mkdir(folder() + QStringLiteral("/settings.lock")));
    QTest::ignoreMessage(
        QtWarningMsg,
        qUtf8Printable(QStringLiteral("ConnectivitySettings: unable to lock %1/settings.lock: Is a directory")
                           .arg(folder())));
    ConnectivitySettings(1).set(settingKey, QStringLiteral("new"));
    QCOMPARE(ConnectivitySettings(1).get(settingKey), QVariant(QStringLiteral("old")));
}

void TestConnectivitySettings::unreadableValueKeepsTheOldValue_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("reason");
    QTest::newRow("too large") << QVariant(QByteArray(1 << 20, 'x')) << QStringLiteral("not a settings file");
    QVariant nested;
    for (int depth = 0; depth < 1024; ++depth)
        nested = QVariantList{nested};
    QTest::newRow("too deep") << nested << QStringLiteral("Internal limitation: data nesting too deep");
}

void TestConnectivitySettings::unreadableValueKeepsTheOldValue()
{
    QFETCH(QVariant, value);
    QFETCH(QString, reason);
    ConnectivitySettings settings(1);
    settings.set(settingKey, QStringLiteral("old"));
    expectWarning("write", reason);
    settings.set(settingKey, value);
    QCOMPARE(settings.get(settingKey), QVariant(QStringLiteral("old")));
}

void TestConnectivitySettings::fullDiskKeepsTheOldValue()
{
    ConnectivitySettings settings(1);
    settings.set(settingKey, QStringLiteral("old"));

    rlimit before;
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto ignored = signal(SIGXFSZ, SIG_IGN);
    const rlimit small = {64, before.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    expectWarning("write", QStringLiteral("File too large"));
    settings.set(settingKey, QString(1000, QLatin1Char('x')));
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &before), 0);
    signal(SIGXFSZ, ignored);

    QCOMPARE(settings.get(settingKey), QVariant(QStringLiteral("old")));
}

void TestConnectivitySettings::heldLockEndsTheWriteInTime()
{
    ConnectivitySettings settings(1);
    settings.set(settingKey, QStringLiteral("old"));
    QFile held(folder() + QStringLiteral("/settings.lock"));
    QVERIFY(held.open(QIODevice::WriteOnly));
    QCOMPARE(flock(held.handle(), LOCK_EX), 0);

    QTest::ignoreMessage(
        QtWarningMsg,
        qUtf8Printable(
            QStringLiteral("ConnectivitySettings: unable to lock %1: Resource temporarily unavailable")
                .arg(held.fileName())));
    settings.set(settingKey, QStringLiteral("new"));
    QCOMPARE(settings.get(settingKey), QVariant(QStringLiteral("old")));

    held.close();
    settings.set(settingKey, QStringLiteral("new"));
    QCOMPARE(settings.get(settingKey), QVariant(QStringLiteral("new")));
}

void TestConnectivitySettings::otherProcessSeesTheValueAtItsNextRead()
{
    ConnectivitySettings settings(1);
    settings.set(settingKey, 0);
    Writer writer(settingKey, 3);
    QVERIFY(writer.process.waitForFinished());
    QCOMPARE(settings.get(settingKey), QVariant(qlonglong(3)));
}

void TestConnectivitySettings::writerInALoopLetsOthersIn()
{
    // A slow disk: the lock is nearly always held.
    synced = [](int) { QThread::msleep(20); };
    const auto deaf = qScopeGuard([] { synced = [](int) {}; });
    ConnectivitySettings settings(1);
    Writer other(QStringLiteral("other"), 1);
    int written = 0;
    while (other.process.state() != QProcess::NotRunning) {
        settings.set(QStringLiteral("own"), ++written);
        QCoreApplication::processEvents();
    }
    QCOMPARE(other.process.readAllStandardError(), QByteArray());
    QCOMPARE(settings.get(QStringLiteral("other")), QVariant(qlonglong(1)));
    QCOMPARE(settings.get(QStringLiteral("own")), QVariant(qlonglong(written)));
}

void TestConnectivitySettings::twoProcessesLoseNothing()
{
    constexpr int tries = 100;
    Writer first(QStringLiteral("first"), tries);
    Writer second(QStringLiteral("second"), tries);
    ConnectivitySettings settings(1);
    for (int i = 1; i <= tries; ++i)
        settings.set(QStringLiteral("own%1").arg(i), i);
    QVERIFY(first.process.waitForFinished());
    QVERIFY(second.process.waitForFinished());

    QCOMPARE(settings.get(QStringLiteral("first")), QVariant(qlonglong(tries)));
    QCOMPARE(settings.get(QStringLiteral("second")), QVariant(qlonglong(tries)));
    for (int i = 1; i <= tries; ++i)
        QCOMPARE(settings.get(QStringLiteral("own%1").arg(i)), QVariant(qlonglong(i)));
}

void TestConnectivitySettings::killedWriterLeavesOldOrNewValue()
{
    ConnectivitySettings settings(1);
    settings.set(QStringLiteral("other"), true);
    for (int kills = 0; kills < 500; ++kills) {
        settings.set(settingKey, 0);
        Writer writer(settingKey, 1000000);
        QVERIFY(writer.process.waitForReadyRead());
        usleep(QRandomGenerator::global()->bounded(3000));
        QCOMPARE(::kill(pid_t(writer.process.processId()), SIGKILL), 0);
        QVERIFY(writer.process.waitForFinished());

        const QByteArray output = writer.process.readAll();
        const int begun = Writer::last(output, "begin");
        const int ended = Writer::last(output, "end");
        const QVariant value = settings.get(settingKey);
        QCOMPARE(value.typeName(), "qlonglong");
        QVERIFY2(
            value == begun || value == ended,
            qPrintable(QStringLiteral("%1 after begin %2, end %3").arg(value.toInt()).arg(begun).arg(ended)));
        QCOMPARE(settings.get(QStringLiteral("other")), QVariant(true));
    }
    settings.set(settingKey, 0);
    QCOMPARE(QDir(folder()).entryList(QDir::Files),
             QStringList({QStringLiteral("settings.cbor"), QStringLiteral("settings.lock")}));
}

QTEST_GUILESS_MAIN(TestConnectivitySettings)
#include "tst_connectivitysettings.moc"
