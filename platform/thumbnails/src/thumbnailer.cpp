// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "thumbnailer.h"

#include <QCryptographicHash>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>
#include <QPointer>
#include <QStandardPaths>

#include "thumbnailer_p.h"

namespace Thumbnails {
namespace {

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
    connect(
        &service, &ThumbnailServiceProxy::Ready, this,
        [this](uint, const QStringList &uris) { announceThumbnails(uris); });
    connect(&service, &ThumbnailServiceProxy::Error, this,
            [this](uint, const QStringList &uris) { announceDefault(uris); });
}

void ThumbnailerPrivate::queue(const QStringList &uris, const QStringList &mimeTypes, const QString &flavor,
                               const QString &scheduler, bool autoCancel)
{
    auto *watcher = new QDBusPendingCallWatcher(
        service.Queue(uris, mimeTypes, flavor, scheduler, autoCancel ? lastHandle : 0u), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, uris](QDBusPendingCallWatcher *watcher) {
                watcher->deleteLater();
                const QDBusPendingReply<uint> reply = *watcher;
                if (!reply.isError()) {
                    lastHandle = reply.value();
                    return;
                }
                qWarning("Thumbnailer: Queue returned error '%s': %s", qUtf8Printable(reply.error().name()),
                         qUtf8Printable(reply.error().message()));
                announceDefault(uris);
            });
}

// The request does not matter: whoever asked, the thumbnail is the same.
void ThumbnailerPrivate::announceThumbnails(const QStringList &uris)
{
    const QPointer<ThumbnailerPrivate> self(this);
    for (const QString &uri : uris) {
        const auto item = pending.constFind(uri);
        if (item == pending.constEnd())
            continue;
        const QString path = thumbnailPath(uri, item->flavor);
        // Somebody else asked for the same item in another size.
        if (!QFile::exists(path))
            continue;
        const Item done = pending.take(uri);
        Q_EMIT q->thumbnail(done.uri, QUrl::fromLocalFile(path), done.sendPixmap ? QPixmap(path) : QPixmap(),
                            done.flavor);
        if (!self)
            return;
    }
}

void ThumbnailerPrivate::announceDefault(const QStringList &uris)
{
    const QPointer<ThumbnailerPrivate> self(this);
    for (const QString &uri : uris) {
        const auto item = pending.constFind(uri);
        if (item == pending.constEnd())
            continue;
        const Item done = pending.take(uri);
        if (defaultThumbnail.isEmpty() && defaultPixmap.isNull())
            continue;
        Q_EMIT q->thumbnail(done.uri, defaultThumbnail, defaultPixmap, done.flavor);
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
        d->pending.clear();
    if (flavor.isEmpty())
        flavor = QStringLiteral("normal");
    if (scheduler.isEmpty())
        scheduler = QStringLiteral("default");

    QStringList names;
    for (const QUrl &uri : std::as_const(uris)) {
        const QUrl url = uri.isRelative() ? QUrl::fromLocalFile(uri.path()) : uri;
        names.append(url.toString(QUrl::FullyEncoded));
        d->pending.insert(names.constLast(), {uri, flavor, sendPixmap});
    }
    d->queue(names, mimeTypes, flavor, scheduler, autoCancel);
}

} // namespace Thumbnails
