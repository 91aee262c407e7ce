// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_THUMBNAILER_P_H
#define CONNUI_THUMBNAILER_P_H

#include <optional>

#include <QHash>
#include <QMap>

#include "thumbnailer.h"
#include "thumbnailserviceproxy.h"

namespace Thumbnails {

class ThumbnailerPrivate : public QObject
{
    Q_OBJECT
public:
    ThumbnailerPrivate(Thumbnailer *q, const QUrl &defaultThumbnail, const QPixmap &defaultPixmap);

    void request(const QList<QUrl> &uris, const QStringList &mimeTypes, bool sendPixmap,
                 const QString &flavor, const QString &scheduler, bool autoCancel);
    void forgetRequests();

private:
    struct Request
    {
        QString flavor;
        bool sendPixmap;
        // The requests without a result yet, by the URI that the service knows.
        QHash<QString, QUrl> items;
        // The service's handle for the request, as soon as it is known.
        std::optional<uint> handle;
    };

    struct Thumbnail
    {
        QUrl uri;
        QString path;
        QString flavor;
        bool sendPixmap;
    };

    void handleQueued(quint64 id, const QDBusPendingCall &call);
    void handleError(uint handle, const QStringList &uris);
    void announceThumbnails(const QStringList &uris);
    void announceDefault(quint64 id, const QStringList &uris);
    std::optional<Thumbnail> takeThumbnail(const QString &uri);

    Thumbnailer *q;
    ThumbnailServiceProxy service;
    QUrl defaultThumbnail;
    QPixmap defaultPixmap;
    // By numbers of our own, in their order.
    QMap<quint64, Request> requests;
    quint64 lastId = 0;
    uint lastHandle = 0;
    // The service may fail before it has returned the request's handle.
    int callsWithoutAnswer = 0;
    QHash<uint, QStringList> earlyErrors;
};

} // namespace Thumbnails

#endif
