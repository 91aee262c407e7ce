// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MBESIDELIBRARY_P_H
#define MBESIDELIBRARY_P_H

#include <QString>

/** Returns the path of what is installed with the library, which is \a path away from it, wherever that is.
 */
QString pathBesideLibrary(const QString &path);

#endif
