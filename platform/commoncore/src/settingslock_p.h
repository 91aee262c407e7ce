// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SETTINGSLOCK_P_H
#define CONNUI_SETTINGSLOCK_P_H

#include <QString>

namespace ConnUi {

// Keeps other processes from changing the settings for as long as it lives. A lock of the kernel's, so that
// it ends with its holder, however that dies. The file stays: removing it would let two processes lock two
// files of the same name.
class SettingsLock
{
public:
    // Waits for two seconds at most.
    explicit SettingsLock(const QString &path);
    ~SettingsLock();
    Q_DISABLE_COPY_MOVE(SettingsLock)

    // Why there is no lock; empty when there is one.
    QString problem() const { return failure; }

private:
    int file;
    QString failure;
};

} // namespace ConnUi

#endif
