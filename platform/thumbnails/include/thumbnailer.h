// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_THUMBNAILER_H
#define CONNUI_THUMBNAILER_H

#include <thumbnails_export.h>

#include <QList>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace Thumbnails {

class ThumbnailerPrivate;

/**
 * Has thumbnails made by the thumbnail service on the session bus ("org.freedesktop.thumbnails.Thumbnailer1",
 * with the thumbnails where freedesktop.org's thumbnail managing standard keeps them).
 */
class THUMBNAILS_EXPORT Thumbnailer : public QObject
{
    Q_OBJECT
public:
    /**
     * Makes a client. Items for which there is no thumbnail are announced with \a defaultThumbnail and
     * \a defaultPixmap; not at all when both are empty.
     */
    Thumbnailer(const QUrl &defaultThumbnail, const QPixmap &defaultPixmap, QObject *parent = nullptr);

    /** Ends the client. The service finishes what it was asked for. */
    ~Thumbnailer() override;

    /**
     * Asks for the thumbnails of \a uris, whose MIME types are \a mimeTypes in the same order. Both lists
     * stay as they are. A URI without a scheme is taken as the path of a local file.
     *
     * Returns at once; each thumbnail is announced by thumbnail(), with its pixels when \a sendPixmap is set.
     * \a flavor is the size, such as "normal" (128 pixels, also for an empty string) or "large" (256 pixels);
     * \a scheduler the order of work, such as "default" (also for an empty string), "foreground" or
     * "background". \a autoCancel takes what this object asked for before out of the service's queue; of
     * that, what still arrives is announced only when \a sendRemainingSignals is set.
     *
     * The service is started when it is not running. When there is none, or it refuses, one warning says so.
     */
    void request(QList<QUrl> &uris, QStringList &mimeTypes, bool sendPixmap, QString flavor,
                 QString scheduler, bool autoCancel, bool sendRemainingSignals);

Q_SIGNALS:
    /**
     * Announces the thumbnail of \a uri, spelled as it was in the request: \a thumbnail is the file that
     * holds it, \a pixmap its pixels when they were asked for.
     */
    void thumbnail(const QUrl &uri, const QUrl &thumbnail, const QPixmap &pixmap, const QString &flavor);

private:
    ThumbnailerPrivate *d;
};

} // namespace Thumbnails

#endif
