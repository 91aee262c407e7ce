// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_URINDEFRECORD_H
#define CONNUI_URINDEFRECORD_H

#include <ndef_export.h>

#include <QByteArray>

/**
 * Holds a URI record of an NDEF message (NFC Forum URI Record Type Definition 1.0).
 */
class NDEF_EXPORT URINDEFRecord
{
public:
    /**
     * Makes a record from its payload: one identifier code byte that abbreviates the beginning of the URI,
     * then the rest of the URI in UTF-8. Every payload is accepted.
     */
    explicit URINDEFRecord(const QByteArray &payload);

    /**
     * Returns the complete URI as UTF-8 bytes, the abbreviated beginning written out. A reserved identifier
     * code stands for nothing; an empty payload gives an empty URI. The bytes are those of the tag: they are
     * not checked.
     */
    QByteArray getURI() const;

private:
    QByteArray payload;
};

#endif
