// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCSHARINGPERMISSIONDIALOG_H
#define CONNUI_NFCSHARINGPERMISSIONDIALOG_H

#include <connui_nfc_export.h>

#include <QStringList>
#include <QUrl>

#include <MMessageBox>

namespace ConnUi {

class NfcSharingPermissionDialogPrivate;

/**
 * Asks whether to send files or a contact to the touched device: finishes with M::YesButton, M::NoButton or,
 * dismissed, M::CancelButton.
 *
 * Names what will be sent and shows a picture: a thumbnail of a picture or video once the thumbnail service
 * has made it, a contact's avatar, or an icon for several files.
 *
 * @image html nfcsharingpermissiondialog.png width=240px
 */
class CONNUI_NFC_EXPORT NfcSharingPermissionDialog : public MMessageBox
{
    Q_OBJECT

public:
    /**
     * Asks about \a resources: each the URL or path of a file, or "contact:" and the contact's id.
     *
     * Reads a contact's card before it returns; thumbnails arrive later. A contact without a picture is
     * logged as "Avatar picture not found for <resource>". An empty list is shown as one thing without a
     * name.
     */
    explicit NfcSharingPermissionDialog(const QStringList &resources);

    ~NfcSharingPermissionDialog() override;

public Q_SLOTS:
    /**
     * Shows the picture in the local file \a thumbnail; \a uri, the file that it depicts, is ignored.
     *
     * A file that is missing or is not a picture is logged, and does not change the dialog.
     */
    void thumbnail(QUrl uri, QUrl thumbnail);

protected:
    /** Fills the dialog. */
    virtual void createContent();

private:
    NfcSharingPermissionDialogPrivate *d;
};

} // namespace ConnUi

#endif
