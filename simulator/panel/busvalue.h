// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_BUSVALUE_H
#define CONNUI_SIM_BUSVALUE_H

#include <QJsonValue>
#include <QString>

/** The values of D-Bus messages, as busctl(1) writes them in JSON. */
namespace BusValue {

/**
 * Returns \a value in one line. Long strings and arrays are shortened; characters that are not seen, or that
 * change the order of others, are escaped. An array of numbers is one of bytes: there are no others in the
 * daemon's interfaces.
 */
QString text(const QJsonValue &value);

} // namespace BusValue

#endif
