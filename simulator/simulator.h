// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_SIMULATOR_H
#define CONNUI_SIM_SIMULATOR_H

#include <functional>

#include <QDBusContext>
#include <QDBusObjectPath>
#include <QObject>
#include <QVariantList>

#include "daemon/handlerfolder.h"
#include "daemon/tags/tagstatus.h"

class Adapter;
class TagWriter;
class Transfers;

/**
 * The simulated world around the adapter: what touches it, and what befalls the daemon.
 *
 * The methods are those of "com.tavix.nfc.Simulator". Each returns an outcome, the touches once the user has
 * decided.
 */
class Simulator : public QObject, protected QDBusContext
{
    Q_OBJECT

public:
    /**
     * The world around \a adapter, whose handovers take steps of \a handoverStep milliseconds.
     *
     * Announcement files are in \a handlerFolders, or in the standard folders when there are none.
     */
    Simulator(Adapter *adapter, const QStringList &handlerFolders, int handoverStep,
              QObject *parent = nullptr);

    QString TouchTag(const QByteArray &message);
    QString TouchBlankTag(uint room);
    QString TouchFaultyTag(const QString &status);
    QString TouchToPair(const QString &address, const QString &name, uint cod, const QString &pin);
    QString TouchToConnect(const QString &address, const QString &name, uint cod);
    QString TouchToDisconnect(const QString &address, const QString &name, uint cod);
    QString TouchToShare(const QStringList &resources);
    QString TouchToSelect();
    QString TouchForHandover(const QString &carrier);
    QString ReceiveFile(const QString &name, qulonglong size, qulonglong rate, qulonglong cancelAfter,
                        const QString &file);
    QString SetPowered(bool on);
    QString Release();
    QString Hang(uint seconds);
    QString Crash();

private:
    QString touch(const QDBusObjectPath &target, const QString &request, const QVariantList &arguments);
    QString ask(const QString &method, const QVariantList &arguments, const QString &success);
    HandlerFolder handlers() const;
    QString finishWriting(TagStatus end);
    // The outcome of a touch that nobody can be asked about; nothing when somebody can.
    QString outcomeUnasked() const;

    std::function<void()> answer(const QString &outcome) const;

    Adapter *const adapter;
    TagWriter *const writer;
    Transfers *const transfers;
    const QStringList handlerFolders;
};

#endif
