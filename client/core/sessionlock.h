// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_SESSIONLOCK_H
#define CONNUI_CLIENT_SESSIONLOCK_H

#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariantMap>

class QDBusObjectPath;

/**
 * Knows whether the user's session is locked: by logind's hint, or by the desktop's screen saver.
 *
 * Where neither is there the session is never locked. Nothing here waits.
 */
class SessionLock : public QObject
{
    Q_OBJECT

public:
    explicit SessionLock(QObject *parent = nullptr);

    bool isLocked() const;

Q_SIGNALS:
    void changed(bool locked);

private Q_SLOTS:
    void readHint(const QString &interface, const QVariantMap &now);
    void setSaver(bool active);

private:
    void watch(QDBusServiceWatcher &watcher, void (SessionLock::*ask)(), void (SessionLock::*forget)());
    void askManager();
    void follow(const QDBusObjectPath &session);
    void forgetManager();
    void askSaver();
    void forgetSaver();
    void set(bool *state, bool now);

    QDBusServiceWatcher manager;
    QDBusServiceWatcher screenSaver;
    bool hint = false;
    bool saver = false;
};

#endif
