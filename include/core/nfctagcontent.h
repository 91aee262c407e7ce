// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCTAGCONTENT_H
#define CONNUI_NFCTAGCONTENT_H

#include <connui_nfc_core_export.h>

#include <QByteArray>
#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QMetaType>
#include <QObject>

#include "nfctagrecord.h"

namespace ConnUi {

class NfcTagContentPrivate;

/**
 * Reads what a tag holds: the NDEF message (NFC Forum NDEF 1.0) that NfcAgent::dataDeliveryRequested()
 * brings.
 *
 * @code
 * const NfcTagContent content(data);
 * for (const NfcTagRecord &record : content.records())
 *     if (record.kind() == NfcTagRecord::Uri)
 *         show(record.link().host());
 * @endcode
 */
class CONNUI_NFC_CORE_EXPORT NfcTagContent
{
    Q_GADGET
    /** Whether the bytes are one message. */
    Q_PROPERTY(bool wellFormed READ isWellFormed CONSTANT)
    /** The records that are not empty. */
    Q_PROPERTY(QList<ConnUi::NfcTagRecord> records READ records CONSTANT)

public:
    /** Makes the content of an empty tag. */
    NfcTagContent();

    /** Reads \a message. Without any bytes it is that of an empty tag. */
    explicit NfcTagContent(const QByteArray &message);

    /** Shares the content of \a other. */
    NfcTagContent(const NfcTagContent &other);

    /** Shares the content of \a other. */
    NfcTagContent &operator=(const NfcTagContent &other);

    /** Deletes the content. */
    ~NfcTagContent();

    /** Returns whether the bytes are exactly one NDEF message. Otherwise there are no records. */
    bool isWellFormed() const;

    /** Returns the records in their order, without those of the type "empty". */
    QList<NfcTagRecord> records() const;

private:
    QExplicitlySharedDataPointer<NfcTagContentPrivate> d;
};

} // namespace ConnUi

// A growing list may move it byte by byte: it is a pointer.
Q_DECLARE_TYPEINFO(ConnUi::NfcTagContent, Q_RELOCATABLE_TYPE);

#endif
