// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CONNECTIVITYSETTINGS_H
#define CONNUI_CONNECTIVITYSETTINGS_H

#include <connui_common_core_export.h>

#include <QString>
#include <QVariant>

namespace ConnUi {

/**
 * Reads and writes the user's connectivity settings, which every process of the user shares.
 *
 * Nothing is cached: each get() sees what any process stored last, each set() is on the disk when it returns.
 * A process that dies in the middle of a set() leaves either the old or the new value.
 *
 * The settings live in $XDG_CONFIG_HOME/connui/settings.cbor (CBOR, RFC 8949), in folders that are made for
 * the user alone; a relative XDG_CONFIG_HOME does not count. Where that file is damaged every setting reads
 * as unset, with one warning for as long as it stays damaged, and the next set() keeps it as
 * settings.cbor.damaged. Where neither XDG_CONFIG_HOME nor HOME names a folder, or HOME is "/", every setting
 * is unset and none is stored.
 */
class CONNUI_COMMON_CORE_EXPORT ConnectivitySettings
{
public:
    /**
     * Opens the settings of one type: a group of keys of its own. Does not touch the disk.
     */
    explicit ConnectivitySettings(int type);

    /**
     * Returns the value stored under \a key with the type it was stored with, or an invalid QVariant when
     * there is none. Integers of every width come back as qlonglong.
     */
    QVariant get(const QString &key) const;

    /**
     * Stores \a value under \a key; an invalid value removes the key. Booleans, numbers, strings, byte
     * arrays, and lists and string maps of these can be stored.
     *
     * Blocks while another process writes, for two seconds at most. When the value cannot be stored (another
     * kind of value, lists in more than some 1,000 lists, more than 1 MiB of settings, full disk, no
     * permission, file locked for too long, no folder for it) one warning says why and the old value stays.
     */
    void set(const QString &key, const QVariant &value);

private:
    QString group;
};

} // namespace ConnUi

#endif
