// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CONTENTACTION_H
#define CONNUI_CONTENTACTION_H

#include <contentaction_export.h>

#include <QString>
#include <QUrl>

namespace ContentAction {

/**
 * Names and starts the application that opens some content by default: the user's choice, else the system's
 * (mimeapps.list, as freedesktop.org defines it). One whose desktop file says Hidden=true is none.
 */
class CONTENTACTION_EXPORT Action
{
public:
    /**
     * Returns the default application for the scheme of \a uri, which may also be the bare scheme with its
     * colon.
     */
    static Action defaultActionForScheme(const QString &uri);

    /**
     * Returns the default application for a piece of text: the one for its scheme when all of it is a URI,
     * else the one for the content type that its first bytes show. Text with blanks in it is not a URI,
     * whatever it begins with; blanks and line ends around one do not count.
     */
    static Action defaultActionForString(const QString &data);

    /**
     * Returns the default application for content of the type \a mimeType (its case does not matter). The \a
     * file itself is not looked at.
     */
    static Action defaultActionForFile(const QUrl &file, const QString &mimeType);

    /**
     * Returns the default application for the content type of the local \a file, as far as its name and its
     * content show. Blocks to read the file's beginning. There is none for a file that does not exist.
     */
    static Action defaultActionForFile(const QUrl &file);

    /** Makes an invalid action. */
    Action() = default;

    /** Returns whether there is such an application. */
    bool isValid() const;

    /** Returns the application's id, the base name of its desktop file without ".desktop"; empty when
     * invalid. */
    QString name() const;

    /** Returns the path of the application's desktop file; empty when the action is invalid or the
     * application has been removed meanwhile. */
    QString desktopFile() const;

    /**
     * Starts the application with \a uri. Returns whether that began: false when the action is invalid, the
     * application has been removed meanwhile, or its program cannot be run. Does not wait for the program.
     */
    bool open(const QString &uri) const;

private:
    explicit Action(const QString &name);

    QString id;
};

} // namespace ContentAction

#endif
