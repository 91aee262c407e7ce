// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_PRIVATEBUS_H
#define CONNUI_PRIVATEBUS_H

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

/** A bus that a test can end. */
class PrivateBus
{
public:
    PrivateBus()
    {
        process.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                      QStringLiteral("--print-address")});
        // It listens once it has said where.
        if (!process.waitForReadyRead())
            qFatal("dbus-daemon does not start");
        busAddress = QString::fromLocal8Bit(process.readAllStandardOutput()).trimmed();
    }

    ~PrivateBus() { end(); }

    QString address() const { return busAddress; }

    /** An environment in which \a variable, such as DBUS_SYSTEM_BUS_ADDRESS, names this bus. */
    QProcessEnvironment environment(const QString &variable) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(variable, busAddress);
        return environment;
    }

    void end()
    {
        process.kill();
        process.waitForFinished();
    }

private:
    QProcess process;
    QString busAddress;
};

#endif
