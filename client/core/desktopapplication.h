// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_DESKTOPAPPLICATION_H
#define CONNUI_CLIENT_DESKTOPAPPLICATION_H

#include <QString>

/** Opens \a uri with the application that the desktop has for its scheme. A failure is logged. */
void openLink(const QString &uri);

/** Opens the local \a file with the application that the desktop has for it. A failure is logged. */
void openFile(const QString &file);

/** Returns the name that the desktop file of \a application gives it, in one length; the id where it has
 * none. */
QString applicationName(const QString &application);

#endif
