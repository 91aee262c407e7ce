// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <cstdio>

#include <QApplication>
#include <QCommandLineParser>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include <NfcTranslations>

#include "application.h"
#include "ndefhandler.h"
#include "tagviewer.h"

namespace {

enum ExitCode { NoBus = 1, NoDisplay = 3 };

int fail(ExitCode code, const char *reason)
{
    std::fprintf(stderr, "nfc-viewer: %s\n", reason);
    return code;
}

// Qt ends a program that finds no display by SIGABRT.
bool hasDisplay()
{
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("DISPLAY");
}

} // namespace

int main(int argc, char *argv[])
{
    if (!hasDisplay())
        return fail(NoDisplay, "no display");
    QApplication program(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(CONNUI_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("nfc-viewer"));
    ConnUi::installTranslations();
    QCommandLineParser arguments;
    arguments.setApplicationDescription(
        QStringLiteral("Shows what is on a tag when no other application does. The session bus starts it."));
    arguments.addHelpOption();
    arguments.addVersionOption();
    arguments.process(program);

    // Has QtDBus register its own types now, not on its thread while a message is being read.
    QDBusMetaType::typeToSignature(QMetaType::fromType<QDBusObjectPath>());
    TagViewer viewer;
    QObject handlerObject;
    new NdefHandler(&viewer, &handlerObject);
    QObject applicationObject;
    new Application(&viewer, &applicationObject);

    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), &program,
                SLOT(quit()));
    // The objects first, then the name: whoever waits for the name may call them at once.
    const bool isReady = bus.registerObject(QStringLiteral("/org/connui/NfcViewer"), &handlerObject) &&
                         bus.registerObject(QStringLiteral("/org/orvik/m"), &applicationObject) &&
                         bus.registerService(QStringLiteral("org.connui.NfcViewer"));
    if (!isReady)
        return fail(NoBus, "no session bus, or another one is running");
    return QApplication::exec();
}
