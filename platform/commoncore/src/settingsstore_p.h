// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SETTINGSSTORE_P_H
#define CONNUI_SETTINGSSTORE_P_H

#include <functional>

#include <QCborMap>

namespace ConnUi {

// The one file in which the user's settings are kept: a map of groups, each a map of keys to values.
namespace SettingsStore {

// Returns a group as it is on the disk now; empty when there is none.
QCborMap read(const QString &group);

// Applies a change to a group and puts the whole file on the disk in one step. No other process's change is
// lost: a lock is held from reading to replacing. Warns and leaves the file alone when it cannot be written.
void change(const QString &group, const std::function<void(QCborMap &)> &apply);

} // namespace SettingsStore
} // namespace ConnUi

#endif
