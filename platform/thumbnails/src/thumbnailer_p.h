// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_THUMBNAILER_P_H
#define CONNUI_THUMBNAILER_P_H

#include <QHash>

#include "thumbnailer.h"
#include "thumbnailserviceproxy.h"

namespace Thumbnails {

class ThumbnailerPrivate : public QObject
{
    Q_OBJECT
public:
    ThumbnailerPrivate(Thumbnailer *q, const QUrl &defaultThumbnail, const QPixmap &defaultPixmap);

    struct Item
    {
        QUrl uri;
        QString flavor;
        bool sendPixmap;
    };

    void queue(const QStringList &uris, const QStringList &mimeTypes, const QString &flavor,
               const QString &scheduler, bool autoCancel);

    // What was asked for and not answered, by the URI that the service knows.
    QHash<QString, Item> pending;

private:
    void announceThumbnails(const QStringList &uris);
    void announceDefault(const QStringList &uris);

    Thumbnailer *q;
    ThumbnailServiceProxy service;
    QUrl defaultThumbnail;
    QPixmap defaultPixmap;
    uint lastHandle = 0;
};

} // namespace Thumbnails

#endif
