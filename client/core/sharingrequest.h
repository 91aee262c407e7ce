// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_SHARINGREQUEST_H
#define CONNUI_CLIENT_SHARINGREQUEST_H

#include <QStringList>
#include <QVariant>

#include "core/request.h"

/** Whether something, or what, is sent to the phone that touches this one. */
class SharingRequest : public Request
{
    Q_OBJECT

public:
    /** Asks whether \a resources, URLs or paths or "contact:" references, may be sent; \a info names the
     * peer. */
    SharingRequest(const QVariant &info, const QStringList &resources, const PendingReply &reply);

    /** Asks what is to be sent. */
    SharingRequest(const QVariant &info, const PendingReply &reply);

    void begin() override;
    void decide(const Answer &answer) override;

Q_SIGNALS:
    /** The user wants to send something: the other phone is to be touched. */
    void selectionGranted();

private:
    QString problem() const;
    void askFor(const QString &peer);

    const QVariant info;
    const QStringList resources;
};

#endif
