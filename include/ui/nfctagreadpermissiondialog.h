// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCTAGREADPERMISSIONDIALOG_H
#define CONNUI_NFCTAGREADPERMISSIONDIALOG_H

#include <connui_nfc_export.h>

#include <QFileInfo>
#include <QString>
#include <QStringList>

#include <MMessageBox>

class URINDEFRecord;

namespace ConnUi {

class NfcTagReadPermissionDialogPrivate;

/**
 * Shows the content of a tag and asks whether to open it.
 *
 * The constructor depends on the kind of content. The dialog only asks: show it with appear(), and act on
 * finished():
 *
 * - M::YesButton (0x4000): open the content, or, while isDirectActionSelected(), call the number or send the
 * message;
 * - 0 with isDirectActionSelected() false: the view button beside a call or a message was pressed, open the
 * content;
 * - M::OkButton (0x400): open it with selectedApplication(), which the user has picked from several;
 * - M::NoButton (0x10000) or M::CancelButton (0x400000): discard it.
 *
 * Application ids are base names of desktop files in /usr/share/applications; the name and the icon shown are
 * those of the desktop file. If there is none, "NfcTagReadPermissionDialog: No desktop file provided for
 * application <id>" is logged and the dialog asks without naming an application. All text of the tag is shown
 * whole and as plain text: U+009C, which separates the length variants of a translation, is replaced in it by
 * U+FFFD.
 *
 * @image html nfctagreadpermissiondialog.png width=240px
 */
class CONNUI_NFC_EXPORT NfcTagReadPermissionDialog : public MMessageBox
{
    Q_OBJECT
    /** The id of the application that is to open the content; empty when the dialog is not about an
     * application. */
    Q_PROPERTY(QString selectedApplication READ selectedApplication)
    /** Whether the main button calls or sends instead of opening. */
    Q_PROPERTY(bool directActionSelected READ isDirectActionSelected)

public:
    /** Asks about the plain text \a text. Control characters other than line feed and carriage return are
     * left out. */
    explicit NfcTagReadPermissionDialog(const QString &text);

    /**
     * Asks whether to open the content with \a defaultApplication, or with the first of \a applications when
     * it is not among them. With several applications a button lets the user change to another. \a
     * applications must not be empty.
     */
    NfcTagReadPermissionDialog(const QStringList &applications, const QString &defaultApplication);

    /**
     * Asks about the URI of \a record, introduced by \a description.
     *
     * Web links, phone numbers (tel:, callto:) and messages (sms:, RFC 5724) are shown as such; a URI without
     * a scheme counts as a web link. Any other scheme asks about the application that opens it by default. A
     * message is percent-decoded before it is taken apart, so that its body is shown up to the first
     * ampersand, equals sign or number sign, encoded or not.
     * The constructor does not keep \a record; null counts as an empty URI.
     */
    NfcTagReadPermissionDialog(const URINDEFRecord *record, const QString &description);

    /**
     * Asks about a record of the type \a type with the content \a data: a link into the store, or content for
     * the default application for \a data.
     */
    NfcTagReadPermissionDialog(const QString &type, const QString &data);

    /**
     * Asks about the content of \a file, of the MIME type \a mimeType: a contact card (vCard, RFC 2425 and
     * 2426), or content for the default application for the file. Reads the file before it returns.
     */
    NfcTagReadPermissionDialog(const QString &mimeType, const QFileInfo &file);

    ~NfcTagReadPermissionDialog() override;

    /** Returns the id of the application that is to open the content. */
    QString selectedApplication() const;

    /** Returns whether the main button calls or sends; false again once the view button was pressed instead.
     */
    bool isDirectActionSelected() const;

    /** Closes the dialog with the result M::OkButton: the user has picked an application. */
    void applicationSelected();

    /**
     * Closes the dialog with \a result, unless the change-application button was pressed: that opens an
     * NfcApplicationSelectionDialog above this one.
     */
    void done(int result) override;

protected:
    /** Fills the dialog for a URI, introduced by \a description. */
    virtual void createContent(const URINDEFRecord *record, const QString &description);
    /** Fills the dialog for the content of a file. */
    virtual void createContent(const QString &mimeType, const QFileInfo &file);
    /** Fills the dialog for a plain text. */
    virtual void createContent(const QString &text);
    /** Fills the dialog for a record's type and data. */
    virtual void createContent(const QString &type, const QString &data);
    /** Fills the dialog for a choice of applications. */
    virtual void createContent(const QStringList &applications);

private:
    friend class NfcTagReadPermissionDialogPrivate;
    NfcTagReadPermissionDialogPrivate *d;
};

} // namespace ConnUi

#endif
