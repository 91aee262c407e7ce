// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusMetaType>

#include "bluez_p.h"

namespace ConnUi {

void BlueZ::registerTypes()
{
    qRegisterMetaType<QDBusObjectPath>();
    qDBusRegisterMetaType<Interfaces>();
    // A signal's types are looked up by the names that stand in its signature.
    qRegisterMetaType<Interfaces>("ConnUi::BlueZ::Interfaces");
    qDBusRegisterMetaType<Objects>();
}

} // namespace ConnUi
