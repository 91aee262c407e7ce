// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_FAKEOHM_H
#define CONNUI_FAKEOHM_H

#include "fakeservice.h"

/** A fake policy daemon, which reports the application in front. */
class FakeOhm : public FakeService
{
public:
    FakeOhm() : FakeService(QDBusConnection::SystemBus, QStringLiteral("org.freedesktop.ohm")) {}

    /** Sets the application that a subscriber gets at once. */
    void setActive(const QString &binary, const QString &group, const QString &argv1, uint pid)
    {
        reply(QStringLiteral("Subscribe"), {binary, group, argv1, pid});
    }

    /** Announces that another application has come to the front. */
    void emitActive(const QString &binary, const QString &group, const QString &argv1, uint pid)
    {
        emitSignal(QStringLiteral("/com/tavix/ApplicationTracker"),
                   QStringLiteral("com.tavix.ApplicationTracker"), QStringLiteral("CurrentActiveApplication"),
                   {binary, group, argv1, pid});
    }
};

#endif
