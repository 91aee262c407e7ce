// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_TRANSFER_H
#define CONNUI_SIM_TRANSFER_H

#include <QObject>
#include <QString>
#include <QTimer>

/**
 * A file that arrives from another phone, at a steady rate. It ends in completed() or canceled(), exactly
 * once.
 */
class Transfer : public QObject
{
    Q_OBJECT

public:
    /**
     * A file of \a size bytes that arrives at \a rate bytes a second.
     *
     * The sender cancels it when \a cancelAfter bytes have arrived.
     */
    Transfer(quint64 size, quint64 rate, quint64 cancelAfter, QObject *parent = nullptr);

    void cancel();

Q_SIGNALS:
    void progressed(qulonglong transferred);
    void completed();
    void canceled();

private:
    void takeStep();

    const quint64 size;
    const quint64 rate;
    const quint64 cancelAfter;
    quint64 transferred = 0;
    quint64 remainder = 0; // of the bytes of a step, in parts of a step
    QTimer timer;
};

#endif
