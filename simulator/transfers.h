// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_TRANSFERS_H
#define CONNUI_SIM_TRANSFERS_H

#include <QDBusAbstractAdaptor>
#include <QDBusMessage>
#include <QHash>
#include <QString>

class Adapter;
class Transfer;

/** com.tavix.nfc.Transfers on the adapter: the files that arrive. */
class Transfers : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tavix.nfc.Transfers")

public:
    explicit Transfers(Adapter *adapter);

    /**
     * Lets the file \a name of \a size bytes arrive, \a rate bytes a second, and returns its transfer.
     *
     * The sender gives up when \a cancelAfter bytes have arrived. A complete file is said to be kept at
     * \a file. Switching the adapter off cancels it.
     */
    const Transfer *receive(const QString &name, quint64 size, quint64 rate, quint64 cancelAfter,
                            const QString &file);

    /** Cancels the transfer \a number if it is under way. */
    void cancel(uint number);

public Q_SLOTS:
    void CancelTransfer(uint transfer, const QDBusMessage &message);

Q_SIGNALS:
    void TransferStarted(uint transfer, const QString &sender, const QString &name, qulonglong size);
    void TransferProgressed(uint transfer, qulonglong transferred, qulonglong size);
    void TransferEnded(uint transfer, const QString &outcome, const QString &file);

private:
    void cancelAll();
    void forget(uint transfer);

    Adapter *const adapter;
    QHash<uint, Transfer *> transfers; // that are under way
    uint nextTransfer = 0;
};

#endif
