// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_APPLICATIONDESKTOPFILE_H
#define CONNUI_APPLICATIONDESKTOPFILE_H

#include <QString>

namespace ConnUi {

/**
 * Returns the path of the desktop file of the application \a id, "/usr/share/applications/<id>.desktop", or
 * an empty string when there is none.
 *
 * An id may come from the daemon's handlers; one that would lead out of the folder names no application.
 */
QString applicationDesktopFile(const QString &id);

} // namespace ConnUi

#endif
