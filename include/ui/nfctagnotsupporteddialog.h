// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCTAGNOTSUPPORTEDDIALOG_H
#define CONNUI_NFCTAGNOTSUPPORTEDDIALOG_H

#include <connui_nfc_export.h>

#include <MMessageBox>

namespace ConnUi {

/**
 * Reports that a tag cannot be read, or that it is empty: finishes with M::OkButton.
 *
 * @image html nfctagnotsupporteddialog.png width=240px
 */
class CONNUI_NFC_EXPORT NfcTagNotSupportedDialog : public MMessageBox
{
    Q_OBJECT

public:
    /** The fault of the tag. */
    enum ErrorType : int {
        UnsupportedTagError = 0, /**< It cannot be read. */
        EmptyTagError = 1        /**< It holds nothing. */
    };
    Q_ENUM(ErrorType)

    /** Shows \a error; any value except EmptyTagError reports that the tag cannot be read. */
    explicit NfcTagNotSupportedDialog(ErrorType error);
};

} // namespace ConnUi

#endif
