// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/pcsc/mailbox.h"

#include <QObject>

Mailbox::Mailbox(QObject *receiver) : receiver(receiver) {}

void Mailbox::post(const std::function<void()> &call)
{
    const std::lock_guard lock(mutex);
    if (receiver)
        QMetaObject::invokeMethod(receiver, call, Qt::QueuedConnection);
}

void Mailbox::close()
{
    const std::lock_guard lock(mutex);
    receiver = nullptr;
}
