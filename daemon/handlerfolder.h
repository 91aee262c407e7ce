// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_HANDLERFOLDER_H
#define CONNUI_DAEMON_HANDLERFOLDER_H

#include <QList>
#include <QStringList>

#include "daemon/handler.h"

/**
 * Folders of announcement files (*.handler); nfcd-sim(1) describes their format. A file replaces those of the
 * same name in later folders.
 */
class HandlerFolder
{
public:
    /**
     * The folders in which applications announce themselves to \a user: the user's own, then the system's,
     * those that are missing included.
     */
    static QStringList standardFolders(uint user);

    explicit HandlerFolder(const QStringList &folders);

    /**
     * The handlers that take content of \a kind (see ndefKind()), by file name; those that stand back only
     * when nobody else does.
     *
     * The files are read anew each time, so that an application can be added while the daemon runs. A file
     * that announces nothing usable is skipped with a warning.
     */
    QList<Handler> handlersFor(const QString &kind) const;

private:
    const QStringList folders;
};

#endif
