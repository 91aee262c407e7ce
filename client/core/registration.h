// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_REGISTRATION_H
#define CONNUI_CLIENT_REGISTRATION_H

#include <QDBusError>
#include <QObject>
#include <QTimer>

/**
 * Registers an agent with the NFC daemon, and tries again, less and less often, for as long as the daemon
 * refuses.
 *
 * Nothing here blocks: the event loop reports the result.
 */
class Registration : public QObject
{
    Q_OBJECT

public:
    /**
     * Begins to register the agent at the object path \a agent. The first pause before another attempt takes
     * \a pause milliseconds, each further one twice as long, up to 30 times the first.
     */
    explicit Registration(const QString &agent, int pause = 1000, QObject *parent = nullptr);

    /** Takes the registration back. */
    ~Registration() override;

    bool isComplete() const;

Q_SIGNALS:
    /** The daemon's default adapter, at the object path \a adapter, knows the agent. */
    void succeeded(const QString &adapter);
    /** The daemon has refused; it will be asked again. */
    void failed();

private:
    void begin();
    void registerWith(const QString &adapterPath);
    void fail(const QDBusError &reason);

    const QString agent;
    QString adapter;        // empty until it knows the agent
    const int longestPause; // milliseconds
    int pause;
    QTimer retry;
};

#endif
