// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/manager.h"

Manager::Manager(const QDBusObjectPath &adapter, QObject *parent) : QObject(parent), adapter(adapter) {}

QDBusObjectPath Manager::DefaultAdapter() const
{
    return adapter;
}
