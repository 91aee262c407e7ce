// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCAPPLICATION_H
#define CONNUI_NFCAPPLICATION_H

#include <connui_nfc_core_export.h>

#include <QExplicitlySharedDataPointer>
#include <QMetaType>
#include <QObject>
#include <QString>

namespace ConnUi {

class NfcApplicationPrivate;

/**
 * Names an application that can get the content of a tag, a handler's for instance, and opens links and files
 * with default applications.
 */
class CONNUI_NFC_CORE_EXPORT NfcApplication
{
    Q_GADGET
    /** The id of the application. */
    Q_PROPERTY(QString id READ id CONSTANT)
    /** The name to show, see name(). */
    Q_PROPERTY(QString name READ name CONSTANT)
    /** The icon, see icon(). */
    Q_PROPERTY(QString icon READ icon CONSTANT)

public:
    /** Names no application. */
    NfcApplication();

    /** Names the application \a id, the base name of its desktop file
     * (NdefMessageHandler::applicationId()). */
    explicit NfcApplication(const QString &id);

    /** Names the same application as \a other. */
    NfcApplication(const NfcApplication &other);

    /** Names the same application as \a other. */
    NfcApplication &operator=(const NfcApplication &other);

    /** Deletes the name, not the application. */
    ~NfcApplication();

    /** Returns the id. */
    QString id() const;

    /**
     * Returns the path of the desktop file, "/usr/share/applications/<id>.desktop"; empty when it does not
     * exist. An id that would lead out of that folder names no application. Blocks to look at the file.
     */
    QString desktopFile() const;

    /**
     * Returns the name from the desktop file in the language of the process, in its longest form; id() where
     * it has none. Blocks to read the file.
     *
     * The desktop file is the application's: pass the name through foreignName() before showing it.
     */
    QString name() const;

    /** Returns the icon from the desktop file: a theme id or an absolute path; empty where it has none.
     * Blocks to read the file. */
    QString icon() const;

    /** Returns the default application for the scheme of \a uri; one without an id when there is none. Blocks
     * to read files, and the first call of a process to load GIO. */
    static NfcApplication defaultForUri(const QString &uri);

    /**
     * Opens \a uri with the default application for its scheme, without waiting for it. A failure is logged
     * as "NfcApplication: unable to start the application '<id>'".
     *
     * A process that systemd has started lets systemd start the application, so that the restrictions of its
     * service do not apply to the application. Call it from the thread of the application object.
     */
    static void openUri(const QString &uri);

    /** Opens the local file \a path with the default application for its content, like openUri(). */
    static void openFile(const QString &path);

private:
    QExplicitlySharedDataPointer<NfcApplicationPrivate> d;
};

} // namespace ConnUi

// A growing list may move it byte by byte: it is a pointer.
Q_DECLARE_TYPEINFO(ConnUi::NfcApplication, Q_RELOCATABLE_TYPE);

#endif
