// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MDESKTOPENTRY_H
#define MDESKTOPENTRY_H

#include <QString>
#include <quenzotouchcore_export.h>

/** The name and the icon in an application's desktop entry file. */
class QUENZOTOUCHCORE_EXPORT MDesktopEntry
{
public:
    /**
     * Reads the file at \a path at once, as the freedesktop desktop entry format is defined. A file
     * that is missing, malformed or larger than 1 MiB makes an entry whose values are all empty.
     */
    explicit MDesktopEntry(const QString &path);

    /** Returns the application's name in the language of the process, empty when there is none. */
    QString name() const;

    /** Returns the application's icon in the language of the process: a theme id or an absolute path, or
     * empty. */
    QString icon() const;

private:
    QString localizedName;
    QString localizedIcon;
};

#endif
