// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfchandler.h"

#include <NfcApplication>
#include <NfcForeignText>

using ConnUi::foreignName;
using ConnUi::NfcApplication;

NfcHandler::NfcHandler(const QString &application, QObject *parent)
    : QObject(parent)
    , id(application)
    , shownName(foreignName(NfcApplication(id).name(), foreignName(id, {})))
    , iconName(NfcApplication(id).icon())
{}

QString NfcHandler::applicationId() const
{
    return id;
}

QString NfcHandler::name() const
{
    return shownName;
}

QString NfcHandler::icon() const
{
    return iconName;
}
