// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/desktopapplication.h"

#include <QUrl>

#include <ContentAction>
#include <MDesktopEntry>

#include "core/clientlog.h"

using ContentAction::Action;

namespace {

void open(const Action &application, const QString &uri)
{
    if (!application.open(uri))
        qCWarning(clientLog, "Unable to start the application '%s'", qUtf8Printable(application.name()));
}

} // namespace

void openLink(const QString &uri)
{
    open(Action::defaultActionForScheme(uri), uri);
}

void openFile(const QString &file)
{
    const QUrl url = QUrl::fromLocalFile(file);
    open(Action::defaultActionForFile(url), url.toString(QUrl::FullyEncoded));
}

QString applicationName(const QString &application)
{
    const QString name =
        MDesktopEntry(QStringLiteral("/usr/share/applications/%1.desktop").arg(application)).name();
    // U+009C stands between the same name in several lengths.
    return name.isEmpty() ? application : name.section(QChar(0x9c), 0, 0);
}
