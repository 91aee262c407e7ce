// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "connectivitysettings.h"

#include <QCborValue>

#include "settingsstore_p.h"

namespace ConnUi {

ConnectivitySettings::ConnectivitySettings(int type) : group(QStringLiteral("settings-%1").arg(type)) {}

QVariant ConnectivitySettings::get(const QString &key) const
{
    return SettingsStore::read(group).value(key).toVariant();
}

void ConnectivitySettings::set(const QString &key, const QVariant &value)
{
    const QCborValue stored = QCborValue::fromVariant(value);
    if (value.isValid() && stored.isUndefined()) {
        qWarning("ConnectivitySettings: unable to store %s: a %s has no stored form", qUtf8Printable(key),
                 value.typeName());
        return;
    }
    SettingsStore::change(group, [&](QCborMap &group) {
        if (value.isValid())
            group.insert(key, stored);
        else
            group.remove(key);
    });
}

} // namespace ConnUi
