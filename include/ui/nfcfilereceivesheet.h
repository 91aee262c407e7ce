// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCFILERECEIVESHEET_H
#define CONNUI_NFCFILERECEIVESHEET_H

#include <connui_nfc_export.h>

#include <QString>

#include <SimpleSheet>

namespace ConnUi {

class NfcFileReceiveSheetPrivate;

/**
 * Shows a file that arrives from a peer: the sender, the name and picture of the file, the amount received
 * and the remaining time.
 *
 * The sheet only displays; call setProgress() during the transfer. All setters work before the sheet is
 * shown.
 *
 * @image html nfcfilereceivesheet.png width=240px
 */
class CONNUI_NFC_EXPORT NfcFileReceiveSheet : public SimpleSheet
{
    Q_OBJECT

public:
    /** Makes a sheet that shows nothing yet. */
    NfcFileReceiveSheet();

    ~NfcFileReceiveSheet() override;

    /** Shows \a name as the sender. */
    void setRemoteDeviceName(const QString &name);

    /** Shows \a name as the name of the file. */
    void setFileName(const QString &name);

    /** Shows the theme's image \a id as the file's picture. */
    void setThumbnailImage(const QString &id);

    /**
     * Shows that \a transferred of \a total bytes have arrived; \a transfer, the transfer's name, does not
     * matter.
     *
     * Sizes are shown without decimals in decimal units. The unit follows from what has arrived: kilobytes up
     * to 1000 kB, gigabytes beyond 1000000 kB, megabytes between; so the total begins in a small unit and
     * changes as data arrives. From the second report on, the time that remains is estimated from the median
     * of the last ten speeds. A report without new bytes, or less than a millisecond after the one before,
     * leaves the estimate as it was; so does one with fewer bytes than before. The displayed time wraps at 24
     * hours and does not change beyond 2^31 - 1 ms.
     */
    void setProgress(const QString &transfer, quint64 transferred, quint64 total);

Q_SIGNALS:
    /** The user has pressed the cancel button. */
    void transferCanceled();

protected:
    /** Fills the sheet. */
    void createContent() override;

private:
    NfcFileReceiveSheetPrivate *d;
};

} // namespace ConnUi

#endif
