// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// From the start of the clients until the daemon knows their agent, against bare programs that register an
// object; and the libraries' loading, against that of Qt's widgets and of QtDBus, which they need.
//
// This program is its own peer: started as "bare" it is that program, as "load FILE" it loads a library.
#include <csignal>
#include <cstring>

#include <QCoreApplication>
#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusObjectPath>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <QProcess>
#include <QTemporaryDir>

#include "fakedaemon.h"
#include "measurement.h"

using namespace Measurement;

/** The methods that a daemon calls, without an effect. */
class BareAgent : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tavix.nfc.UIAgent")

public:
    explicit BareAgent(QObject *parent) : QDBusAbstractAdaptor(parent) {}

public Q_SLOTS:
    void NotifyTouch(const QDBusObjectPath &, const QString &) {}
};

namespace {

int runBare(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QDBusConnection bus = QDBusConnection::systemBus();
    QObject agent;
    new BareAgent(&agent);
    bus.registerObject(QStringLiteral("/agent"), &agent);
    QDBusInterface adapter(QStringLiteral("com.tavix.nfc"), FakeDaemon::adapterPath(),
                           QStringLiteral("com.tavix.nfc.Adapter"), bus);
    adapter.call(QStringLiteral("RegisterUIAgent"),
                 QVariant::fromValue(QDBusObjectPath(QStringLiteral("/agent"))));
    return QCoreApplication::exec();
}

int loadLibrary(const char *file)
{
    QLibrary library(QString::fromUtf8(file));
    library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    const double time = wallTime([&library] { library.load(); });
    std::printf("%.0f\n", time);
    return library.isLoaded() ? 0 : 1;
}

// The arguments of a program.
using Command = QStringList;

// Starts a program, and ends it with a signal that it does not know as soon as the daemon has its agent.
double untilRegistered(FakeDaemon *daemon, const Command &command)
{
    QEventLoop loop;
    QObject::connect(daemon, &FakeService::called, &loop, [&loop](const QString &member) {
        if (member == QLatin1String("RegisterUIAgent"))
            loop.quit();
    });
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(&process, &QProcess::finished, &loop, [] { qFatal("a program left early"); });
    const double start = now();
    process.start(command.first(), command.mid(1));
    loop.exec();
    const double time = now() - start;
    process.disconnect();
    ::kill(pid_t(process.processId()), SIGUSR1);
    process.waitForFinished();
    return time;
}

// Callgrind writes what it has counted when a signal ends the program.
double instructionsUntilRegistered(FakeDaemon *daemon, const Command &command)
{
    const QTemporaryDir folder;
    const QString counts = folder.filePath(QStringLiteral("counts"));
    untilRegistered(daemon, Command{QStringLiteral("valgrind"), QStringLiteral("--tool=callgrind"),
                                    QStringLiteral("--callgrind-out-file=") + counts} +
                                command);
    QFile file(counts);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("nothing has been counted");
    const QByteArray all = file.readAll();
    return all.mid(all.indexOf("totals: ") + qsizetype(qstrlen("totals: "))).split('\n').first().toDouble();
}

void compareStarts(const std::string &comparison, FakeDaemon *daemon, const Command &base,
                   const Command &client, const Goal &goal)
{
    if (countsInstructions()) {
        printInstructions(comparison, instructionsUntilRegistered(daemon, base),
                          instructionsUntilRegistered(daemon, client));
        return;
    }
    const std::string baseName = base.constLast() == QLatin1String("bare") ? "bare" : "bare, QApplication";
    const std::string clientName = QFileInfo(client.constFirst()).fileName().toStdString();
    compare(comparison, {baseName, [=] { return untilRegistered(daemon, base); }},
            {clientName, [=] { return untilRegistered(daemon, client); }}, goal, 60);
}

double loading(const QString &library)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("load"), library});
    process.waitForFinished();
    if (process.exitCode() != 0)
        qFatal("%s cannot be loaded", qUtf8Printable(library));
    return process.readAllStandardOutput().toDouble();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "bare") == 0)
        return runBare(argc, argv);
    if (argc == 3 && std::strcmp(argv[1], "load") == 0)
        return loadLibrary(argv[2]);

    QCoreApplication application(argc, argv);
    begin(argc, argv);
    FakeDaemon daemon;
    daemon.start();
    const QDir programs(QCoreApplication::applicationDirPath());
    const Command bare{QCoreApplication::applicationFilePath(), QStringLiteral("bare")};
    const Command withWidgets{programs.filePath(QStringLiteral("peer_qt")), QStringLiteral("agent")};
    const Command nfcUi{programs.filePath(QStringLiteral("nfc-ui"))};
    compareStarts("From start to registered", &daemon, withWidgets, nfcUi, {.atMost = 1.45});
    compareStarts("From start to registered, against QtDBus alone", &daemon, bare, nfcUi, {});
    compareStarts("From start to registered, without windows", &daemon, bare,
                  {programs.filePath(QStringLiteral("nfc-agent"))}, {.atMost = 1.5});
    compareStarts("From start to registered, nfc-ui --console", &daemon, bare,
                  nfcUi + Command{QStringLiteral("--console")}, {});
    // The work of a library while it is loaded is not counted here.
    if (countsInstructions())
        return 0;
    compare("Loading the library",
            {"Qt Widgets", [] { return loading(QStringLiteral("libQt6Widgets.so.6")); }},
            {"connui-nfc", [] { return loading(QStringLiteral(CONNUI_NFC_LIBRARY)); }}, {}, 50);
    compare("Loading the library without windows",
            {"QtDBus", [] { return loading(QStringLiteral("libQt6DBus.so.6")); }},
            {"connui-nfc-core", [] { return loading(QStringLiteral(CONNUI_NFC_CORE_LIBRARY)); }}, {}, 50);
}

#include "measure_start.moc"
