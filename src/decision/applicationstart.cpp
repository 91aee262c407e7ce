// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "decision/applicationstart.h"

#include <functional>

#include <QCoreApplication>
#include <QProcess>
#include <QStandardPaths>

#include <ContentAction>

using ContentAction::Action;

namespace ConnUi {

namespace {

// A child would inherit the restrictions of the service, with which no browser works. systemd started the
// service, and starts the application beside it.
bool mayBeRestricted()
{
    return qEnvironmentVariableIsSet("INVOCATION_ID") &&
           !QStandardPaths::findExecutable(QStringLiteral("systemd-run")).isEmpty() &&
           !QStandardPaths::findExecutable(QStringLiteral("gio")).isEmpty();
}

QStringList startingArguments(const QString &desktopFile, QString uri)
{
    QStringList arguments{QStringLiteral("--user"), QStringLiteral("--quiet"), QStringLiteral("--collect"),
                          QStringLiteral("--slice=app.slice")};
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY"})
        if (qEnvironmentVariableIsSet(variable))
            arguments.append(QStringLiteral("--setenv=%1").arg(QLatin1String(variable)));
    // systemd replaces variables in a command line: a link would learn what is in the environment.
    uri.replace(u'$', QLatin1String("$$"));
    return arguments + QStringList{QStringLiteral("--"), QStringLiteral("gio"), QStringLiteral("launch"),
                                   desktopFile, uri};
}

void startBeside(const QString &desktopFile, const QString &uri, const std::function<void()> &otherwise)
{
    auto *starter = new QProcess(QCoreApplication::instance());
    QObject::connect(starter, &QProcess::stateChanged, starter, [=](QProcess::ProcessState state) {
        // A client that leaves meanwhile ends this process, and starts nothing in its place.
        if (state != QProcess::NotRunning || QCoreApplication::closingDown())
            return;
        starter->deleteLater();
        if (starter->error() != QProcess::UnknownError || starter->exitCode() != 0)
            otherwise();
    });
    starter->start(QStringLiteral("systemd-run"), startingArguments(desktopFile, uri));
}

void start(const Action &application, const QString &uri)
{
    if (!application.open(uri))
        qWarning("NfcApplication: unable to start the application '%s'", qUtf8Printable(application.name()));
}

} // namespace

void startApplication(const Action &application, const QString &uri)
{
    const QString desktopFile = application.desktopFile();
    if (!desktopFile.isEmpty() && mayBeRestricted())
        startBeside(desktopFile, uri, [=] { start(application, uri); });
    else
        start(application, uri);
}

} // namespace ConnUi
