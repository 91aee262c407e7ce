// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_FAKEHANDLER_H
#define CONNUI_FAKEHANDLER_H

#include "fakeservice.h"

/** A fake application that takes the content of tags and can be launched. */
class FakeHandler : public FakeService
{
public:
    explicit FakeHandler(QDBusConnection::BusType bus = QDBusConnection::SessionBus,
                         const QString &service = QStringLiteral("org.example.Viewer"))
        : FakeService(bus, service)
    {}
};

#endif
