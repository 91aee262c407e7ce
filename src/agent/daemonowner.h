// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMONOWNER_H
#define CONNUI_DAEMONOWNER_H

#include <optional>

#include <QDBusPendingReply>
#include <QObject>
#include <QString>

class QDBusMessage;

namespace ConnUi {

/** Knows which connection of the system bus owns the daemon's name. Never waits for the bus. */
class DaemonOwner : public QObject
{
    Q_OBJECT

public:
    /** Asks for the owner. The answer is known before any call that the owner makes later. */
    DaemonOwner();

    /** Returns whether \a message comes from the owner; false while nobody is known to be it. */
    bool isSenderOf(const QDBusMessage &message) const;

private Q_SLOTS:
    void ownerChanged(const QString &service, const QString &oldOwner, const QString &newOwner);

private:
    QDBusPendingReply<QString> firstOwner;
    // The value that counts after the first change.
    std::optional<QString> laterOwner;
};

} // namespace ConnUi

#endif
