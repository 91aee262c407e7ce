// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TRANSFERNEWS_H
#define CONNUI_TRANSFERNEWS_H

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

/** The signals of com.tavix.nfc.Transfers, a line each. */
class TransferNews : public QObject
{
    Q_OBJECT

public:
    TransferNews()
    {
        listen(QStringLiteral("TransferStarted"), SLOT(noteStart(uint, QString, QString, qulonglong)));
        listen(QStringLiteral("TransferProgressed"), SLOT(noteProgress(uint, qulonglong, qulonglong)));
        listen(QStringLiteral("TransferEnded"), SLOT(noteEnd(uint, QString, QString)));
    }

    QStringList lines;

public Q_SLOTS:
    void noteStart(uint transfer, const QString &sender, const QString &name, qulonglong size)
    {
        lines.append(QStringLiteral("%1 %2 of %3 from %4").arg(transfer).arg(name).arg(size).arg(sender));
    }
    void noteProgress(uint transfer, qulonglong transferred, qulonglong size)
    {
        lines.append(QStringLiteral("%1 at %2 of %3").arg(transfer).arg(transferred).arg(size));
    }
    void noteEnd(uint transfer, const QString &outcome, const QString &file)
    {
        lines.append(QStringLiteral("%1 %2 '%3'").arg(transfer).arg(outcome, file));
    }

private:
    void listen(const QString &signal, const char *slot)
    {
        QDBusConnection::systemBus().connect(QStringLiteral("com.tavix.nfc"),
                                             QStringLiteral("/com/tavix/nfc/adapter0"),
                                             QStringLiteral("com.tavix.nfc.Transfers"), signal, this, slot);
    }
};

#endif
