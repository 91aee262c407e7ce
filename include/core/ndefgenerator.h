// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NDEFGENERATOR_H
#define CONNUI_NDEFGENERATOR_H

#include <connui_nfc_core_export.h>

#include <QByteArray>
#include <QObject>
#include <QString>

class NDEFGeneratorPrivate;

/**
 * Encodes URIs and MIME data as one NDEF message.
 *
 * The bytes are those of the NFC Forum's NFC Data Exchange Format and URI Record Type Definition, ready to be
 * written to a tag or pushed to a peer. Records appear in the message in the order in which they were added.
 * Use message(), unless the flags have to be those of data(). ConnUi::NdefRecord reads messages.
 *
 * @code
 * NDEFGenerator generator;
 * generator.addRecord(NDEFGenerator::Record(QStringLiteral("https://www.example.org/")));
 * const QByteArray message = generator.message();
 * @endcode
 *
 * A generator is used from one thread.
 */
class CONNUI_NFC_CORE_EXPORT NDEFGenerator : public QObject
{
    Q_OBJECT

public:
    /**
     * A URI, or a MIME type with its data, that awaits encoding. It is a value type: copies are deep, and a
     * moved-from record is empty.
     */
    class CONNUI_NFC_CORE_EXPORT Record
    {
    public:
        /** Makes a record of a URI. Any text is accepted; an empty one makes a record that encodes to
         * nothing.
         */
        Record(const QString &uri);

        /**
         * Makes a record of data and its MIME type, as in "text/vcard".
         *
         * Data without a type is kept, but NDEFGenerator::data() leaves it out. A type that is not two parts
         * around one "/" is written with the type name format 0, which other decoders read as an empty
         * record.
         */
        Record(const QString &mimeType, const QByteArray &mimeData);

        /** Copies the record and all that it holds. */
        Record(const Record &other);

        /** Takes over what the other record holds, and leaves it empty. */
        Record(Record &&other) noexcept;

        /** Copies the other record and all that it holds. */
        Record &operator=(const Record &other);

        /** Takes over what the other record holds, and leaves it empty. */
        Record &operator=(Record &&other) noexcept;

        virtual ~Record();

        /** Returns the URI, empty in a MIME record. */
        QString uri() const;

        /** Returns the MIME type, empty in a URI record. */
        QString mimeType() const;

        /** Returns the MIME data, empty in a URI record. */
        QByteArray mimeData() const;

        /**
         * Returns whether both records have the same URI, or else the same MIME type and data.
         *
         * Since only one of the two is ever set, any two URI records are equal, any two MIME records are
         * equal, and an empty record equals every other. NDEFGenerator::data() marks the
         * message's begin and end by this.
         */
        bool operator==(const Record &other) const;

    private:
        friend class NDEFGenerator;
        class Private;
        Private *d;
    };

    /** Makes a generator without records. */
    explicit NDEFGenerator(QObject *parent = nullptr);
    ~NDEFGenerator() override;

    /** Appends a copy of the record. It is not validated, and may be one that was added before. */
    void addRecord(const NDEFGenerator::Record &record);

    /** Appends the record itself. */
    void addRecord(NDEFGenerator::Record &&record);

    /** Removes all records. */
    void clear();

    /**
     * Returns the message, in time linear in its size; empty when no record can be written.
     *
     * Every record that equals the first one carries the flag Message Begin and every record that equals the
     * last one Message End, so a message of only URIs or only MIME data has both flags on every record. A
     * MIME record with data but without a type is omitted with a warning, an empty one without.
     *
     * Nothing is ever split into chunks or given an ID. The type's length is written as one byte even where
     * the type is longer than 255 bytes.
     *
     * Other decoders stop at the first Message End and read only one of several URIs. Use message() for them.
     */
    QByteArray data() const;

    /**
     * Returns a message that every decoder reads, in time linear in its size; empty when there is none.
     *
     * The first record alone carries the flag Message Begin and the last alone Message End. URIs are
     * abbreviated by all 35 codes of the NFC Forum's URI Record Type Definition, with the longest prefix that
     * fits. Nothing is split into chunks or given an ID.
     *
     * The result is empty without records, and when a record is empty, has data without a MIME type, a type
     * that is not two names around one "/" as RFC 6838 restricts them, or exceeds a limit of the format: 255
     * bytes of type, 4 GiB of payload. Then \a error, if given, contains the reason and the number of the
     * record, counted from 1; otherwise it becomes empty. The text is for the log and for developers. Nothing
     * is logged.
     */
    QByteArray message(QString *error = nullptr) const;

private:
    NDEFGeneratorPrivate *const d;
};

// A record is a pointer to its own data, whatever its address: a growing list may move it byte by byte.
Q_DECLARE_TYPEINFO(NDEFGenerator::Record, Q_RELOCATABLE_TYPE);

#endif
