// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_VIEWER_CONTACTCARD_H
#define CONNUI_VIEWER_CONTACTCARD_H

#include <QByteArray>
#include <QList>
#include <QString>

/** A line of a contact card that a reader cares about. */
struct CardDetail
{
    /** The id of the text that names it, such as "qtn_nfc_viewer_phone". */
    const char *label;
    QString value;
};

/** The name on the vCard \a card; empty when there is none. */
QString cardName(const QByteArray &card);

/** The details of the vCard \a card in its order: numbers, addresses, notes. Values in quoted-printable are
 * left out. */
QList<CardDetail> cardDetails(const QByteArray &card);

#endif
