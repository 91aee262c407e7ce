// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "handlerfolder.h"

#include <algorithm>
#include <optional>

#include <QDir>
#include <QRegularExpression>
#include <QSettings>

namespace {

bool isObjectPath(const QString &path)
{
    static const QRegularExpression objectPath(QStringLiteral("^(/|(/[A-Za-z0-9_]+)+)$"));
    return objectPath.match(path).hasMatch();
}

std::optional<Handler> readHandler(const QString &file)
{
    QSettings settings(file, QSettings::IniFormat);
    settings.beginGroup(QStringLiteral("Handler"));
    const QString path = settings.value(QStringLiteral("Path")).toString();
    const QString service = settings.value(QStringLiteral("Service")).toString();
    if (service.isEmpty() || !isObjectPath(path)) {
        qWarning("nfcd-sim: %s announces no handler", qUtf8Printable(file));
        return std::nullopt;
    }
    return Handler{settings.value(QStringLiteral("Bus"), QStringLiteral("session")).toString(), service,
                   QDBusObjectPath(path), settings.value(QStringLiteral("ApplicationId")).toString(),
                   settings.value(QStringLiteral("Takes")).toStringList()};
}

bool matches(const QString &pattern, const QString &kind)
{
    if (pattern.endsWith(QLatin1Char('*')))
        return kind.startsWith(pattern.chopped(1), Qt::CaseInsensitive);
    return kind.compare(pattern, Qt::CaseInsensitive) == 0;
}

bool takes(const Handler &handler, const QString &kind)
{
    return std::any_of(handler.takes.cbegin(), handler.takes.cend(),
                       [&kind](const QString &pattern) { return matches(pattern, kind); });
}

} // namespace

HandlerFolder::HandlerFolder(const QStringList &folders) : folders(folders) {}

QList<Handler> HandlerFolder::handlersFor(const QString &kind) const
{
    QList<Handler> handlers;
    for (const QString &folder : folders) {
        const QFileInfoList files =
            QDir(folder).entryInfoList({QStringLiteral("*.handler")}, QDir::Files, QDir::Name);
        for (const QFileInfo &file : files) {
            const std::optional<Handler> handler = readHandler(file.filePath());
            if (handler && takes(*handler, kind))
                handlers.append(*handler);
        }
    }
    return handlers;
}
