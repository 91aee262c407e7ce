// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/handlerfolder.h"

#include <algorithm>
#include <glib.h>
#include <memory>
#include <optional>

#include <QDir>
#include <QRegularExpression>

namespace {

constexpr qint64 maximumFileSize = 1 << 20;

bool isObjectPath(const QString &path)
{
    static const QRegularExpression objectPath(QStringLiteral("^(/|(/[A-Za-z0-9_]+)+)$"));
    return objectPath.match(path).hasMatch();
}

QString value(GKeyFile *file, const char *key)
{
    gchar *value = g_key_file_get_string(file, "Handler", key, nullptr);
    const QString text = QString::fromUtf8(value);
    g_free(value);
    return text;
}

QStringList listed(const QString &value)
{
    QStringList parts = value.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (QString &part : parts)
        part = part.trimmed();
    return parts;
}

std::optional<Handler> readHandler(const QFileInfo &file)
{
    const std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)> keys(g_key_file_new(), &g_key_file_unref);
    // One that cannot be read is as one that says nothing.
    if (file.size() <= maximumFileSize)
        g_key_file_load_from_file(keys.get(), QFile::encodeName(file.filePath()).constData(), G_KEY_FILE_NONE,
                                  nullptr);
    const QString bus = value(keys.get(), "Bus");
    const QString path = value(keys.get(), "Path");
    const QString service = value(keys.get(), "Service");
    if (service.isEmpty() || !isObjectPath(path)) {
        qWarning("%s announces no handler", qUtf8Printable(file.filePath()));
        return std::nullopt;
    }
    return Handler{bus.isEmpty() ? QStringLiteral("session") : bus, service, QDBusObjectPath(path),
                   value(keys.get(), "ApplicationId"), listed(value(keys.get(), "Takes"))};
}

bool matches(const QString &pattern, const QString &kind)
{
    if (pattern.endsWith(QLatin1Char('*')))
        return kind.startsWith(pattern.chopped(1), Qt::CaseInsensitive);
    return kind.compare(pattern, Qt::CaseInsensitive) == 0;
}

bool takes(const Handler &handler, const QString &kind)
{
    return std::any_of(
        handler.takes.cbegin(), handler.takes.cend(),
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
            const std::optional<Handler> handler = readHandler(file);
            if (handler && takes(*handler, kind))
                handlers.append(*handler);
        }
    }
    return handlers;
}
