// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCTAGRECORD_H
#define CONNUI_NFCTAGRECORD_H

#include <connui_nfc_core_export.h>

#include <QByteArray>
#include <QExplicitlySharedDataPointer>
#include <QMetaType>
#include <QObject>
#include <QString>

#include "nfclink.h"

namespace ConnUi {

class NfcTagRecordPrivate;

/**
 * Holds one record of a tag, as far as a question about it goes. NfcTagContent reads them.
 *
 * All texts are those of the tag and may be hostile: pass them through foreignText() or foreignName() before
 * showing them.
 */
class CONNUI_NFC_CORE_EXPORT NfcTagRecord
{
    Q_GADGET
    /** The kind of record. */
    Q_PROPERTY(Kind kind READ kind CONSTANT)
    /** The type of the record, see type(). */
    Q_PROPERTY(QString type READ type CONSTANT)
    /** The payload. */
    Q_PROPERTY(QByteArray payload READ payload CONSTANT)
    /** The text or the URI, see text(). */
    Q_PROPERTY(QString text READ text CONSTANT)
    /** The text to show, see displayText(). */
    Q_PROPERTY(QString displayText READ displayText CONSTANT)
    /** The link of a Uri. */
    Q_PROPERTY(ConnUi::NfcLink link READ link CONSTANT)
    /** Whether nothing in the record is unknown, see isUnderstood(). */
    Q_PROPERTY(bool understood READ isUnderstood CONSTANT)

public:
    /** The kinds of records that a question treats differently. */
    enum Kind {
        Uri,         ///< A URI, or a smart poster, which stands for its URI
        Text,        ///< A text (NFC Forum Text Record Type Definition 1.0)
        ContactCard, ///< A vCard
        StoreLink,   ///< A link into the store
        Other,       ///< Everything else
    };
    Q_ENUM(Kind)

    /** Makes a record of the kind Other without a type and a payload. */
    NfcTagRecord();

    /** Shares the content of \a other. */
    NfcTagRecord(const NfcTagRecord &other);

    /** Shares the content of \a other. */
    NfcTagRecord &operator=(const NfcTagRecord &other);

    /** Deletes the record. */
    ~NfcTagRecord();

    /** Returns the kind of record. */
    Kind kind() const;

    /**
     * Returns the type that the record names: a MIME type, or the name of a type of the NFC Forum or of
     * another organization, such as "U" or "example.org:note".
     */
    QString type() const;

    /** Returns the payload: of a smart poster, that of its URI record. */
    QByteArray payload() const;

    /** Returns the text of a Text, or NfcLink::uri() of a Uri; empty for other kinds. */
    QString text() const;

    /**
     * Returns the text to show to the user: text(), or the payload of an Other when it is UTF-8, of which at
     * most 1000 characters; empty when there is none.
     */
    QString displayText() const;

    /** Returns the link of a Uri; for other kinds a link without a URI. */
    NfcLink link() const;

    /** Returns whether everything in the record is known: a smart poster may hold more than a link and its
     * title. */
    bool isUnderstood() const;

private:
    friend class NfcTagRecordPrivate;
    QExplicitlySharedDataPointer<NfcTagRecordPrivate> d;
};

} // namespace ConnUi

// A growing list may move it byte by byte: it is a pointer.
Q_DECLARE_TYPEINFO(ConnUi::NfcTagRecord, Q_RELOCATABLE_TYPE);

#endif
