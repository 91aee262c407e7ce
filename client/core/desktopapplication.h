// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_DESKTOPAPPLICATION_H
#define CONNUI_CLIENT_DESKTOPAPPLICATION_H

#include <QString>

/**
 * Opens \a uri with the application that the desktop has for its scheme, and does not wait for it. A failure
 * is logged. A process that systemd started has systemd start the application, so that it does not inherit
 * the restrictions of the service.
 */
void openLink(const QString &uri);

/** Opens the local \a file with the application that the desktop has for it, as openLink() does. */
void openFile(const QString &file);

/** Returns the name that the desktop file of \a application gives it, in one length; the id where it has
 * none. */
QString applicationName(const QString &application);

#endif
