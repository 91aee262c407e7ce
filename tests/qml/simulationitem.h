// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_SIMULATIONITEM_H
#define CONNUI_TESTS_SIMULATIONITEM_H

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include "simulateddaemon.h"

/** nfcd-sim, and one nfctap after the other. */
class SimulationItem : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Simulation)
    /** The word that nfctap ended with, such as "granted"; empty as long as it runs. */
    Q_PROPERTY(QString outcome READ outcome NOTIFY outcomeChanged)

public:
    Q_INVOKABLE void start();
    Q_INVOKABLE void kill();
    /** Holds something against the daemon, as nfctap does with these \a arguments. */
    Q_INVOKABLE void tap(const QStringList &arguments);
    /** Writes a file with \a content, and returns its path. */
    Q_INVOKABLE QString file(const QString &name, const QString &content);

    QString outcome() const;

Q_SIGNALS:
    void outcomeChanged();

private:
    void setOutcome(const QString &outcome);

    SimulatedDaemon daemon;
    QString word;
};

#endif
