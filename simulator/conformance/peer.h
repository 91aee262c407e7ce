// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_PEER_H
#define CONNUI_SIM_PEER_H

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QString>
#include <QVariantList>

/** A client of the daemon under test, with a connection of its own. It leaves the bus with the object. */
class Peer
{
public:
    Peer();
    ~Peer();
    Q_DISABLE_COPY_MOVE(Peer)

    /** The object that the calls go to, "/" at first. */
    void setPath(const QString &path);

    /** Calls "com.tavix.nfc.<interface>.<method>" and waits five seconds for the reply, as an error after
     * that. */
    QDBusMessage call(const char *interface, const char *method, const QVariantList &arguments = {}) const;

    /** Calls without waiting. */
    QDBusPendingCall callLater(const char *interface, const char *method,
                               const QVariantList &arguments) const;

    /** Has \a receiver's \a slot called for the signal of "com.tavix.nfc.Adapter". */
    void connectAdapter(const QString &signal, QObject *receiver, const char *slot);

private:
    QDBusMessage message(const char *interface, const char *method, const QVariantList &arguments) const;

    const QString name;
    QDBusConnection bus;
    QString path;
};

#endif
