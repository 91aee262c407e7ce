// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QTextStream>

#include "application.h"
#include "ndefhandler.h"

int main(int argc, char *argv[])
{
    QCoreApplication program(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0"));
    QCommandLineParser arguments;
    arguments.setApplicationDescription(QStringLiteral("Prints the content of the tags that it is given."));
    arguments.addHelpOption();
    arguments.addVersionOption();
    arguments.addPositionalArgument(
        QStringLiteral("service"),
        QStringLiteral("The name on the session bus, so that a second one can run."),
        QStringLiteral("[service]"));
    arguments.process(program);
    const QString service =
        arguments.positionalArguments().value(0, QStringLiteral("org.connui.SampleHandler"));
    // Makes QtDBus register its own types now, not on its thread while a message is being read.
    QDBusMetaType::typeToSignature(QMetaType::fromType<QDBusObjectPath>());

    QObject handlerObject;
    new NdefHandler(&handlerObject);
    QObject applicationObject;
    new Application(&applicationObject);

    // Without its session it would stay behind.
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), &program,
                SLOT(quit()));

    // The objects first, then the name: whoever waits for the name may call them at once.
    const bool ready = bus.registerObject(QStringLiteral("/org/connui/SampleHandler"), &handlerObject) &&
                       bus.registerObject(QStringLiteral("/org/orvik/m"), &applicationObject) &&
                       bus.registerService(service);
    if (!ready) {
        QTextStream(stderr) << "sample-handler: no session bus, or another one is running" << Qt::endl;
        return 1;
    }
    QTextStream(stdout) << "waiting for tags" << Qt::endl;
    return program.exec();
}
