// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_CLIENTSTATUS_H
#define CONNUI_CLIENT_CLIENTSTATUS_H

#include <QDBusServiceWatcher>
#include <QVariantMap>

#include <MWidget>

class MButton;
class MLabel;
class MLayout;

/** Rows below the settings: that the daemon does not ask this session's client, and the way back to files
 * that arrive. */
class ClientStatus : public MWidget
{
    Q_OBJECT

public:
    ClientStatus();

private Q_SLOTS:
    void update(const QString &interface, const QVariantMap &changed);

private:
    void read();
    void forget();
    void take(const QVariantMap &properties);
    void showTransfers();

    QDBusServiceWatcher watcher;
    MLabel *const unregistered;
    MButton *const transfers;
};

#endif
