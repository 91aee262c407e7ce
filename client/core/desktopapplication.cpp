// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/desktopapplication.h"

#include <optional>

#include <QUrl>

#include <ContentAction>
#include <MDesktopEntry>
#include <mtypes.h>

#include "core/clientlog.h"
#include "support/functions.h"

namespace {

// GIO's own types, as its C interface has them. The library is loaded when something is opened for the first
// time: most of a client's life nothing is.
struct List
{
    void *data;
    List *next;
    List *previous;
};

struct Launcher
{
    void *(*g_desktop_app_info_new)(const char *) = nullptr;
    int (*g_app_info_launch_uris)(void *, List *, void *, void **) = nullptr;
    void (*g_object_unref)(void *) = nullptr;
};

const Launcher *loadLauncher()
{
    using Support::Symbol;
    static const std::optional<Launcher> launcher =
        Support::loadFunctions<Launcher>(QStringLiteral("libgio-2.0.so.0"), "Unable to start applications",
                                         Symbol{"g_desktop_app_info_new", &Launcher::g_desktop_app_info_new},
                                         Symbol{"g_app_info_launch_uris", &Launcher::g_app_info_launch_uris},
                                         Symbol{"g_object_unref", &Launcher::g_object_unref});
    return launcher ? &*launcher : nullptr;
}

bool launch(const QString &id, const QString &uri)
{
    const Launcher *launcher = loadLauncher();
    void *application =
        launcher ? launcher->g_desktop_app_info_new(qUtf8Printable(id + QLatin1String(".desktop"))) : nullptr;
    if (!application)
        return false;
    QByteArray argument = uri.toUtf8();
    List uris{argument.data(), nullptr, nullptr};
    const bool launched = launcher->g_app_info_launch_uris(application, &uris, nullptr, nullptr);
    launcher->g_object_unref(application);
    return launched;
}

} // namespace

void openWithApplication(const QString &id, const QString &uri)
{
    if (!launch(id, uri))
        qCWarning(clientLog, "Unable to start the application '%s'", qUtf8Printable(id));
}

void openFile(const QString &file)
{
    const QUrl url = QUrl::fromLocalFile(file);
    openWithApplication(ContentAction::Action::defaultActionForFile(url).name(),
                        url.toString(QUrl::FullyEncoded));
}

QString applicationName(const QString &application)
{
    const QString name =
        MDesktopEntry(QStringLiteral("/usr/share/applications/%1.desktop").arg(application)).name();
    return name.isEmpty() ? application : name.section(M::lengthVariantSeparator, 0, 0);
}
