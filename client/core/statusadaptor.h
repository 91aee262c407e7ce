// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_STATUSADAPTOR_H
#define CONNUI_CLIENT_STATUSADAPTOR_H

#include <QDBusAbstractAdaptor>

class Session;

/** Reports the state of the client to other programs of the session: interfaces/org.connui.NfcUi.xml. */
class StatusAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.connui.NfcUi")
    Q_PROPERTY(bool Registered READ isRegistered)
    Q_PROPERTY(uint HiddenTransfers READ hiddenTransfers)

public:
    explicit StatusAdaptor(Session *session);

    bool isRegistered() const;
    uint hiddenTransfers() const;

public Q_SLOTS:
    void ShowTransfers();

private:
    void announce(const QString &property, const QVariant &value);

    Session *const session;
};

#endif
