// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <optional>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QIcon>

#include <NfcTranslations>

#include "application.h"
#include "ndefhandler.h"
#include "support/commandline.h"
#include "support/windowapplication.h"
#include "tagviewer.h"

int main(int argc, char *argv[])
{
    Support::CommandLine arguments(
        QStringLiteral(
            "Shows the content of a tag when no other application does. The session bus starts it.\n\n"
            "Exit codes: 0 closed, 1 no session bus, or another nfc-viewer runs in the session, "
            "3 no display, 64 invalid arguments."),
        QString());
    arguments.answer(argc, argv);
    const Support::ApplicationPointer program = Support::newApplication(argc, argv);
    if (const std::optional<QString> fault = arguments.read())
        return Support::fail(Support::BadArguments, *fault);
    QGuiApplication::setDesktopFileName(QStringLiteral("nfc-viewer"));
    QGuiApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("nfc-viewer")));
    ConnUi::installTranslations();

    // Has QtDBus register its own types now, not on its thread while a message is being read.
    QDBusMetaType::typeToSignature(QMetaType::fromType<QDBusObjectPath>());
    TagViewer viewer;
    QObject handlerObject;
    new NdefHandler(&viewer, &handlerObject);
    QObject applicationObject;
    new Application(&viewer, &applicationObject);

    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), program.get(),
                SLOT(quit()));
    // The objects first, then the name: whoever waits for the name may call them at once.
    const bool isReady = bus.registerObject(QStringLiteral("/org/connui/NfcViewer"), &handlerObject) &&
                         bus.registerObject(QStringLiteral("/org/orvik/m"), &applicationObject) &&
                         bus.registerService(QStringLiteral("org.connui.NfcViewer"));
    if (!isReady)
        return Support::fail(Support::NoBus, QStringLiteral("no session bus, or another one is running"));
    return QApplication::exec();
}
