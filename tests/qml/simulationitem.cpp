// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "simulationitem.h"

#include <QDir>
#include <QFile>
#include <QProcess>

void SimulationItem::start()
{
    daemon.start();
}

void SimulationItem::kill()
{
    daemon.kill();
}

void SimulationItem::tap(const QStringList &arguments)
{
    setOutcome({});
    auto *process = new QProcess(this);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    connect(process, &QProcess::finished, this, [this, process] {
        process->deleteLater();
        setOutcome(QString::fromUtf8(process->readAllStandardOutput()).section(u':', 0, 0));
    });
    process->start(QStringLiteral(NFCTAP), arguments);
}

QString SimulationItem::file(const QString &name, const QString &content)
{
    QFile file(QDir::homePath() + u'/' + name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content.toUtf8()) < 0)
        qFatal("cannot write %s", qUtf8Printable(file.fileName()));
    return file.fileName();
}

QString SimulationItem::outcome() const
{
    return word;
}

void SimulationItem::setOutcome(const QString &outcome)
{
    word = outcome;
    Q_EMIT outcomeChanged();
}
