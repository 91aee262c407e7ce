// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_FAKESERVICE_H
#define CONNUI_FAKESERVICE_H

#include <QDBusConnection>
#include <QObject>
#include <QProcess>

#include "fakerecords.h"

/**
 * A D-Bus service that lives in a process of its own and does what the test says.
 *
 * It answers every method on every path and interface. Unless scripted otherwise a call is answered at once:
 * with the usual answer of the daemon or of the policy daemon where there is one (see
 * fakeserviceprocess.cpp), else with an empty reply. Scripts go by member name.
 *
 * The effect of a function below has reached the program's own connection to the bus when it returns: the
 * events that it causes wait in the event queue.
 *
 * The process starts when it is first needed, so a fake can be scripted before start() lets the world see it.
 * It does not survive this object.
 */
class FakeService : public QObject
{
    Q_OBJECT

public:
    FakeService(QDBusConnection::BusType bus, const QString &service);
    ~FakeService() override;

    QString service() const;

    /** Takes the service name; with a fresh process, scripts forgotten, after kill(). */
    void start();
    /** Takes \a service too, in the moment in which its present owner leaves it: it is never without one. */
    void succeed(const QString &service);
    /** Gives the service name up. The process, its scripts and its calls stay. */
    void stop();
    /** Kills the process, as kill -9 does, and returns when the bus has noticed. */
    void kill();
    /** Stops the process, as kill -STOP does; only resume() and kill() are left. */
    void suspend();
    void resume();
    /** Whether the service name is on the bus. */
    bool isOnBus() const;
    /** Has the bus start the service on demand: this fake, or another command. */
    void makeActivatable(const QString &command = {});

    /** Answers further calls of \a member with \a arguments. */
    void reply(const QString &member, const QVariantList &arguments = {});
    /** Answers further calls of \a member with an error. */
    void fail(const QString &member, const QString &error, const QString &message);
    /** Keeps further calls of \a member unanswered. */
    void hold(const QString &member);
    /** Answers the calls that are held, oldest first, as scripted by now, and holds no more. */
    void release(const QString &member);
    /** Answers further calls of \a member after some time. */
    void delay(const QString &member, int milliseconds);
    /** Has the process answer the next call of \a member and then do nothing more; only kill() is left. */
    void hangAfter(const QString &member);
    /** Kills the process when the next call of \a member arrives. */
    void dieOn(const QString &member);
    /** Gives the service name up before the next call of \a member is answered. */
    void leaveOn(const QString &member);

    /** Returns the calls received, in their order; of one member when it is given. */
    QList<FakeCall> calls(const QString &member = {});
    /** Returns the members called, in their order. */
    QStringList members();
    void clearCalls();

    void emitSignal(const QString &path, const QString &interface, const QString &member,
                    const QVariantList &arguments = {}, int times = 1);

    /** Calls somebody without waiting and without a time limit. Returns the number of the call. */
    int call(const QString &service, const QString &path, const QString &interface, const QString &member,
             const QVariantList &arguments = {});
    /** Returns the replies to call() that have arrived, in the order of their arrival. */
    QList<FakeReply> replies();

Q_SIGNALS:
    /** The fake has received a call of \a member. */
    void called(const QString &member);
    /** A reply to call() has arrived. */
    void replied(int id);

private:
    QDBusMessage control(const QString &method, const QVariantList &arguments = {});
    bool isRunning() const;
    void ensureRunning();

    QDBusConnection bus;
    QDBusConnection::BusType busType;
    QString serviceName;
    QString controlName;
    QString serviceFile;
    QProcess process;
};

#endif
