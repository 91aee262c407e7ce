// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "settings/defaultapplications.h"

#include <memory>

#include <QPromise>
#include <QThreadPool>
#include <QUrl>

#include <ContentAction>
#include <MDesktopEntry>
#include <MTypes>
#include <NfcForeignText>

using ContentAction::Action;

namespace {

struct Kind
{
    const char *name;
    const char *scheme; // null where the type counts
    const char *type;
};

constexpr Kind kinds[] = {
    {"qtn_nfc_sett_apps_web", "https:", nullptr},         {"qtn_nfc_sett_apps_number", "tel:", nullptr},
    {"qtn_nfc_sett_apps_message", "sms:", nullptr},       {"qtn_nfc_sett_apps_mail", "mailto:", nullptr},
    {"qtn_nfc_sett_apps_contact", nullptr, "text/vcard"}, {"qtn_nfc_sett_apps_place", "geo:", nullptr},
};

Action actionFor(const Kind &kind)
{
    return kind.scheme ? Action::defaultActionForScheme(QLatin1String(kind.scheme))
                       : Action::defaultActionForFile({}, QLatin1String(kind.type));
}

QList<DefaultApplication> readApplications()
{
    QList<DefaultApplication> applications;
    for (const Kind &kind : kinds) {
        const Action action = actionFor(kind);
        if (!action.isValid())
            continue;
        const MDesktopEntry entry(action.desktopFile());
        const QString name = entry.name().section(M::lengthVariantSeparator, 0, 0);
        applications.append(
            {kind.name, ConnUi::foreignName(name, ConnUi::foreignName(action.name(), QStringLiteral("?"))),
             entry.icon()});
    }
    return applications;
}

} // namespace

DefaultApplications::DefaultApplications(QObject *parent) : QObject(parent), monitor(g_app_info_monitor_get())
{
    connect(&watcher, &QFutureWatcherBase::finished, this, &DefaultApplications::take);
    g_signal_connect_swapped(monitor, "changed", G_CALLBACK(+[](DefaultApplications *self) { self->look(); }),
                             this);
    look();
}

DefaultApplications::~DefaultApplications()
{
    g_signal_handlers_disconnect_by_data(monitor, this);
    g_object_unref(monitor);
}

void DefaultApplications::look()
{
    isOutdated = watcher.isRunning();
    if (isOutdated)
        return;
    const auto promise = std::make_shared<QPromise<QList<DefaultApplication>>>();
    promise->start();
    watcher.setFuture(promise->future());
    QThreadPool::globalInstance()->start([promise] {
        promise->addResult(readApplications());
        promise->finish();
    });
}

void DefaultApplications::take()
{
    const QList<DefaultApplication> now = watcher.result();
    if (isOutdated)
        look();
    if (now == known)
        return;
    known = now;
    Q_EMIT changed(known);
}
