// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NDEFRECORD_H
#define CONNUI_NDEFRECORD_H

#include <connui_nfc_core_export.h>

#include <QByteArray>
#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>

namespace ConnUi {

class NdefRecordPrivate;

/**
 * Holds one record of an NDEF message that was read from a tag or came from a peer (NFC Forum, NFC Data
 * Exchange Format 1.0).
 *
 * @code
 * const QList<ConnUi::NdefRecord> records = ConnUi::NdefRecord::fromMessage(data);
 * for (const ConnUi::NdefRecord &record : records)
 *     if (!record.uri().isEmpty())
 *         show(record.uri());
 * @endcode
 *
 * All contents are those of the tag, and may be hostile: texts may hold control characters and reorder what
 * stands beside them, and nothing is as long as expected. NDEFGenerator makes messages.
 *
 * A record is a value that does not change; copies share their content. In QML its properties are those of a
 * value type.
 */
class CONNUI_NFC_CORE_EXPORT NdefRecord
{
    Q_GADGET

    /** The kind of name that type() is. */
    Q_PROPERTY(ConnUi::NdefRecord::TypeNameFormat typeNameFormat READ typeNameFormat CONSTANT)
    /** The name of the payload's format. */
    Q_PROPERTY(QByteArray type READ type CONSTANT)
    /** The record's identifier. */
    Q_PROPERTY(QByteArray id READ id CONSTANT)
    /** The content. */
    Q_PROPERTY(QByteArray payload READ payload CONSTANT)
    /** The URI of a URI record. */
    Q_PROPERTY(QString uri READ uri CONSTANT)
    /** The text of a text record. */
    Q_PROPERTY(QString text READ text CONSTANT)
    /** The MIME type of a MIME record. */
    Q_PROPERTY(QString mimeType READ mimeType CONSTANT)

public:
    /** The kinds of a record's type, numbered as in the message. */
    enum TypeNameFormat : uchar {
        /** There is neither a type nor a payload. */
        Empty = 0,
        /** The type is one of the NFC Forum's, such as "U" for a URI. */
        WellKnown = 1,
        /** The type is a MIME type. */
        Mime = 2,
        /** The type is a URI itself. */
        AbsoluteUri = 3,
        /** The type was named by somebody else, as in "example.org:type". */
        External = 4,
        /** There is a payload, without a type. */
        Unknown = 5
    };
    Q_ENUM(TypeNameFormat)

    /** Makes an empty record. */
    NdefRecord();

    /** Shares the other record's content. */
    NdefRecord(const NdefRecord &other);

    /** Takes over the other record's content, and leaves it empty. */
    NdefRecord(NdefRecord &&other) noexcept;

    /** Shares the other record's content. */
    NdefRecord &operator=(const NdefRecord &other);

    /** Takes over the other record's content. */
    NdefRecord &operator=(NdefRecord &&other) noexcept;

    ~NdefRecord();

    /**
     * Returns the records of \a message in their order, those that came in chunks put together. Time and
     * memory are linear in the message's size.
     *
     * The list is empty when the bytes are not exactly one message that conforms to NDEF 1.0: its flags,
     * lengths and chunks must agree, and nothing may follow its end. A decoder that forgives would have two
     * programs read different messages from the same bytes. A message always has a record, though it may be
     * an Empty one.
     */
    static QList<NdefRecord> fromMessage(const QByteArray &message);

    /** Returns what kind of name type() is. */
    TypeNameFormat typeNameFormat() const;

    /** Returns the name of the payload's format, at most 255 bytes; empty in an Empty or Unknown record. */
    QByteArray type() const;

    /** Returns the identifier by which other records may refer to this one, at most 255 bytes. */
    QByteArray id() const;

    /**
     * Returns the content as it is in the message. The data of a MIME record needs no decoding, and the
     * payload of a smart poster (WellKnown, "Sp") is a message for fromMessage().
     */
    QByteArray payload() const;

    /**
     * Returns the URI of a WellKnown record "U", its beginning written out for any of the 35 codes of the NFC
     * Forum's URI Record Type Definition 1.0, or the type of an AbsoluteUri record; empty in other records.
     *
     * A reserved code stands for nothing. Bytes that are not UTF-8 become U+FFFD. The result may lack a
     * scheme, and is not checked.
     */
    QString uri() const;

    /**
     * Returns the text of a WellKnown record "T" (NFC Forum, Text Record Type Definition 1.0) without its
     * language, in UTF-8 or UTF-16; empty in other records. UTF-16 without a byte order mark is big endian.
     */
    QString text() const;

    /** Returns the type of a Mime record, in the letter case of the tag and with its parameters, if any;
     * empty in other records. */
    QString mimeType() const;

private:
    friend class NdefRecordPrivate;

    QExplicitlySharedDataPointer<NdefRecordPrivate> d;
};

} // namespace ConnUi

// A record is a pointer to its content: a growing list may move it byte by byte.
Q_DECLARE_TYPEINFO(ConnUi::NdefRecord, Q_RELOCATABLE_TYPE);

#endif
