// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// From the start of nfc-ui until the daemon knows its agent, against a bare program that registers an object;
// and the library's loading, against that of Qt's widgets, which it needs.
//
// This program is its own peer: started as "bare" it is that program, as "load FILE" it loads a library.
#include <QCoreApplication>
#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusObjectPath>
#include <QEventLoop>
#include <QLibrary>
#include <QProcess>

#include <cstring>

#include "fakedaemon.h"
#include "measurement.h"

using namespace Measurement;

/** What a daemon calls, with nothing behind it. */
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

double untilRegistered(FakeDaemon *daemon, const QString &program, const QStringList &arguments)
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
    process.start(program, arguments);
    loop.exec();
    const double time = now() - start;
    process.disconnect();
    process.kill();
    process.waitForFinished();
    return time;
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
    // What other processes execute is not counted here.
    if (countsInstructions())
        return 0;
    FakeDaemon daemon;
    daemon.start();
    const QString nfcUi = QCoreApplication::applicationDirPath() + QStringLiteral("/nfc-ui");
    const Way bare{"bare", [&] {
                       return untilRegistered(&daemon, QCoreApplication::applicationFilePath(),
                                              {QStringLiteral("bare")});
                   }};
    compare("From start to registered", bare, {"nfc-ui", [&] { return untilRegistered(&daemon, nfcUi, {}); }},
            {.atMost = 1.5}, 100);
    compare("From start to registered, on a terminal", bare,
            {"nfc-ui", [&] { return untilRegistered(&daemon, nfcUi, {QStringLiteral("--console")}); }}, {},
            50);
    compare("Loading the library",
            {"Qt Widgets", [] { return loading(QStringLiteral("libQt6Widgets.so.6")); }},
            {"connui-nfc", [] { return loading(QStringLiteral(CONNUI_NFC_LIBRARY)); }}, {}, 50);
}

#include "measure_start.moc"
