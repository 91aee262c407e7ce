// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "thumbnailer.h"

#include <algorithm>
#include <glib.h>
#include <memory>
#include <utility>

#include <QCryptographicHash>
#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QStandardPaths>

#include "support/whenanswered.h"
#include "thumbnailer_p.h"

namespace Thumbnails {
namespace {

// The URI of a file as GLib writes it: by its hash everybody finds the thumbnail.
QString thumbnailUri(const QUrl &url)
{
    if (!url.isRelative() && (!url.isLocalFile() || !url.host().isEmpty()))
        return url.toString(QUrl::FullyEncoded);
    const QString path = url.isRelative() ? url.path() : url.toLocalFile();
    const std::unique_ptr<char, decltype(&g_free)> uri(
        g_filename_to_uri(QFile::encodeName(QDir::cleanPath(path)).constData(), nullptr, nullptr), g_free);
    return uri ? QString::fromUtf8(uri.get()) : url.toString(QUrl::FullyEncoded);
}

// Where the thumbnail managing standard keeps the thumbnail of a URI.
QString thumbnailPath(const QString &uri, const QString &flavor)
{
    const QByteArray hash = QCryptographicHash::hash(uri.toUtf8(), QCryptographicHash::Md5).toHex();
    return QStringLiteral("%1/thumbnails/%2/%3.png")
        .arg(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation), flavor,
             QString::fromLatin1(hash));
}

} // namespace

ThumbnailerPrivate::ThumbnailerPrivate(Thumbnailer *q, const QUrl &defaultThumbnail,
                                       const QPixmap &defaultPixmap)
    : QObject(q)
    , q(q)
    , service(QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1"),
              QStringLiteral("/org/freedesktop/thumbnails/Thumbnailer1"), QDBusConnection::sessionBus())
    , defaultThumbnail(defaultThumbnail)
    , defaultPixmap(defaultPixmap)
{
    // The thumbnail is the same for every caller.
    connect(&service, &ThumbnailServiceProxy::Ready, this,
            [this](uint, const QStringList &uris) { announceThumbnails(uris); });
    connect(&service, &ThumbnailServiceProxy::Error, this, &ThumbnailerPrivate::handleError);
}

void ThumbnailerPrivate::request(const QList<QUrl> &uris, const QStringList &mimeTypes, bool sendPixmap,
                                 const QString &flavor, const QString &scheduler, bool autoCancel)
{
    Request request{flavor, sendPixmap, {}, {}};
    QStringList names;
    for (const QUrl &uri : uris) {
        names.append(thumbnailUri(uri));
        request.items.insert(names.constLast(), uri);
    }
    const quint64 id = ++lastId;
    requests.insert(id, request);
    ++callsWithoutAnswer;
    Support::whenAnswered(service.Queue(names, mimeTypes, flavor, scheduler, autoCancel ? lastHandle : 0u),
                          this, [this, id](const QDBusPendingCall &answer) { handleQueued(id, answer); });
}

void ThumbnailerPrivate::forgetRequests()
{
    requests.clear();
}

void ThumbnailerPrivate::handleQueued(quint64 id, const QDBusPendingCall &call)
{
    const QDBusPendingReply<uint> reply = call;
    const auto request = requests.find(id);
    QStringList failed;
    if (reply.isError()) {
        qWarning("Thumbnailer: Queue returned error '%s': %s", qUtf8Printable(reply.error().name()),
                 qUtf8Printable(reply.error().message()));
        failed = request == requests.end() ? QStringList() : request->items.keys();
    } else {
        lastHandle = reply.value();
        failed = earlyErrors.take(lastHandle);
        if (request != requests.end())
            request->handle = lastHandle;
    }
    if (--callsWithoutAnswer == 0)
        earlyErrors.clear();
    announceDefault(id, failed);
}

void ThumbnailerPrivate::handleError(uint handle, const QStringList &uris)
{
    const auto request = std::find_if(requests.cbegin(), requests.cend(),
                                      [handle](const Request &request) { return request.handle == handle; });
    if (request != requests.cend())
        announceDefault(request.key(), uris);
    else if (callsWithoutAnswer > 0)
        earlyErrors[handle] += uris;
}

// The oldest request for a thumbnail that is there gets it; one in another size goes on waiting.
std::optional<ThumbnailerPrivate::Thumbnail> ThumbnailerPrivate::takeThumbnail(const QString &uri)
{
    for (auto request = requests.begin(); request != requests.end(); ++request) {
        const QString path = thumbnailPath(uri, request->flavor);
        if (!request->items.contains(uri) || !QFile::exists(path))
            continue;
        Thumbnail thumbnail{request->items.take(uri), path, request->flavor, request->sendPixmap};
        if (request->items.isEmpty())
            requests.remove(request.key());
        return thumbnail;
    }
    return std::nullopt;
}

void ThumbnailerPrivate::announceThumbnails(const QStringList &uris)
{
    const QPointer<ThumbnailerPrivate> self(this);
    for (const QString &uri : uris) {
        while (const std::optional<Thumbnail> done = takeThumbnail(uri)) {
            Q_EMIT q->thumbnail(done->uri, QUrl::fromLocalFile(done->path),
                                done->sendPixmap ? QPixmap(done->path) : QPixmap(), done->flavor);
            if (!self)
                return;
        }
    }
}

void ThumbnailerPrivate::announceDefault(quint64 id, const QStringList &uris)
{
    const QPointer<ThumbnailerPrivate> self(this);
    for (const QString &uri : uris) {
        // Looked up each time: a slot may have canceled the request.
        const auto request = requests.find(id);
        if (request == requests.end())
            return;
        if (!request->items.contains(uri))
            continue;
        const QUrl done = request->items.take(uri);
        const QString flavor = request->flavor;
        if (request->items.isEmpty())
            requests.remove(id);
        if (defaultThumbnail.isEmpty() && defaultPixmap.isNull())
            continue;
        Q_EMIT q->thumbnail(done, defaultThumbnail, defaultPixmap, flavor);
        if (!self)
            return;
    }
}

Thumbnailer::Thumbnailer(const QUrl &defaultThumbnail, const QPixmap &defaultPixmap, QObject *parent)
    : QObject(parent)
    , d(new ThumbnailerPrivate(this, defaultThumbnail, defaultPixmap))
{}

Thumbnailer::~Thumbnailer() = default;

void Thumbnailer::request(QList<QUrl> &uris, QStringList &mimeTypes, bool sendPixmap, QString flavor,
                          QString scheduler, bool autoCancel, bool sendRemainingSignals)
{
    if (autoCancel && !sendRemainingSignals)
        d->forgetRequests();
    if (flavor.isEmpty())
        flavor = QStringLiteral("normal");
    if (scheduler.isEmpty())
        scheduler = QStringLiteral("default");
    d->request(uris, mimeTypes, sendPixmap, flavor, scheduler, autoCancel);
}

} // namespace Thumbnails
