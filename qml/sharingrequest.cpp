// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "sharingrequest.h"

#include <QUrl>

#include <NfcForeignText>

SharingRequest::SharingRequest(Purpose purpose, const QString &carrier, const QStringList &resources,
                               const Place &place, const Replies &replies)
    : NfcRequest({}, place, replies)
    , purpose(purpose)
    , medium(carrier)
    , shared(resources)
{}

QString SharingRequest::title() const
{
    const QUrl resource(shared.value(0));
    return ConnUi::foreignName(
        resource.isRelative() || resource.isLocalFile() ? resource.fileName() : resource.toString(), {});
}

QString SharingRequest::carrier() const
{
    return ConnUi::foreignName(medium, {});
}

bool SharingRequest::selects() const
{
    return purpose == Selection;
}

QStringList SharingRequest::resources() const
{
    return shared;
}
