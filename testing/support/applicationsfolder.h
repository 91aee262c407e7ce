// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_APPLICATIONSFOLDER_H
#define CONNUI_APPLICATIONSFOLDER_H

#include <QByteArray>
#include <QString>

/**
 * The applications installed in /usr/share/applications, none at first and none afterwards.
 *
 * Ends the program unless it runs under with-applications: the folder would be everybody's.
 */
class ApplicationsFolder
{
public:
    ApplicationsFolder();
    ~ApplicationsFolder();
    Q_DISABLE_COPY_MOVE(ApplicationsFolder)

    /** Installs an application. Its desktop file has no line for an empty \a name or \a icon. */
    void install(const QString &id, const QString &name, const QString &icon) const;

    /** Writes \a content as the desktop file of the application \a id. */
    void write(const QString &id, const QByteArray &content) const;
};

#endif
