// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_VIEWER_SECTION_H
#define CONNUI_VIEWER_SECTION_H

#include <QByteArray>
#include <QList>
#include <QString>

/** A record of a message, as the viewer shows it. */
struct Section
{
    enum Kind { Text, Link, ContactCard, Data };

    Kind kind = Data;
    /** The text or URI; for data its type. It comes from the tag. */
    QString text;
    /** The record's payload. */
    QByteArray payload;
};

/** The records of the NDEF message \a message; those of a smart poster in its place. Nothing when it is none.
 */
QList<Section> readSections(const QByteArray &message);

#endif
