// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_FAKERECORDS_H
#define CONNUI_FAKERECORDS_H

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QList>
#include <QString>
#include <QVariantList>

/** A method call that a fake has received. */
struct FakeCall
{
    QString sender;
    QString path;
    QString interface;
    QString member;
    QString signature; ///< The D-Bus types that were sent.
    QVariantList arguments;
};

/** The answer to a call that a fake has made. */
struct FakeReply
{
    int id = 0;    ///< The value that FakeService::call() returned.
    QString error; ///< The error's name; empty when the call succeeded.
    QString message;
    QVariantList arguments;
};

inline QDBusArgument &operator<<(QDBusArgument &argument, const FakeCall &call)
{
    argument.beginStructure();
    argument << call.sender << call.path << call.interface << call.member << call.signature << call.arguments;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument &operator>>(const QDBusArgument &argument, FakeCall &call)
{
    argument.beginStructure();
    argument >> call.sender >> call.path >> call.interface >> call.member >> call.signature >> call.arguments;
    argument.endStructure();
    return argument;
}

inline QDBusArgument &operator<<(QDBusArgument &argument, const FakeReply &reply)
{
    argument.beginStructure();
    argument << reply.id << reply.error << reply.message << reply.arguments;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument &operator>>(const QDBusArgument &argument, FakeReply &reply)
{
    argument.beginStructure();
    argument >> reply.id >> reply.error >> reply.message >> reply.arguments;
    argument.endStructure();
    return argument;
}

inline void registerFakeRecords()
{
    qDBusRegisterMetaType<FakeCall>();
    qDBusRegisterMetaType<QList<FakeCall>>();
    qDBusRegisterMetaType<FakeReply>();
    qDBusRegisterMetaType<QList<FakeReply>>();
}

#endif
