// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_SHARINGREQUEST_H
#define CONNUI_QML_SHARINGREQUEST_H

#include <QStringList>

#include "nfcrequest.h"

/**
 * Whether to send something to the phone that touches this one, or to choose something for that: the QML type
 * SharingRequest.
 */
class SharingRequest : public NfcRequest
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The daemon makes requests; NfcAgent has them")
    /** The carrier, such as "bluetooth". */
    Q_PROPERTY(QString carrier READ carrier CONSTANT FINAL)
    /** Whether the user is to choose what is sent. */
    Q_PROPERTY(bool selects READ selects CONSTANT FINAL)
    /** The files and contacts to send: URLs, paths, or "contact:" and an id. Empty when the user is to
     * choose.
     */
    Q_PROPERTY(QStringList resources READ resources CONSTANT FINAL)

public:
    enum Purpose { Permission, Selection };

    SharingRequest(Purpose purpose, const QString &carrier, const QStringList &resources, const Place &place,
                   const Replies &replies);

    QString title() const override;
    QString carrier() const;
    bool selects() const;
    QStringList resources() const;

private:
    const Purpose purpose;
    const QString medium;
    const QStringList shared;
};

#endif
