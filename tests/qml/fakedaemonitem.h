// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_FAKEDAEMONITEM_H
#define CONNUI_TESTS_FAKEDAEMONITEM_H

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>
#include <QVariantList>

#include "fakedaemon.h"

/** A daemon that asks what a test of QML says, of the agent that registered last. */
class FakeDaemonItem : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(FakeDaemon)

public:
    Q_INVOKABLE void start();
    Q_INVOKABLE void kill();
    /** Says that \a member fails from now on: with \a error, or because there is another agent. */
    Q_INVOKABLE void fail(const QString &member, const QString &error = {});
    /** Says that \a member stays unanswered from now on. */
    Q_INVOKABLE void hold(const QString &member);
    /** Answers the calls of \a member that are held; further ones stay unanswered. */
    Q_INVOKABLE void answerHeld(const QString &member);
    Q_INVOKABLE void recover(const QString &member);
    Q_INVOKABLE void setState(const QString &state);

    /** Returns how often \a member was called. */
    Q_INVOKABLE int calls(const QString &member);

    Q_INVOKABLE void pair(const QString &target, const QString &name, const QString &pin);
    Q_INVOKABLE void connectDevice(const QString &target, const QString &name);
    Q_INVOKABLE void disconnectDevice(const QString &target, const QString &name);
    Q_INVOKABLE void deliver(const QString &target, const QByteArray &data, const QStringList &applications);
    Q_INVOKABLE void share(const QString &info, const QStringList &resources);
    Q_INVOKABLE void select(const QString &info);
    Q_INVOKABLE void touch(const QString &status);
    Q_INVOKABLE void release();

    /** Deletes \a object at once, as a slot in C++ may. */
    Q_INVOKABLE void destroyNow(QObject *object);

    /** Returns the replies in the order of their arrival: the number of the question, counted from 0 since
     * the start, and "granted" or the last part of the error's name. */
    Q_INVOKABLE QStringList replies();

private:
    void ask(const QString &member, const QVariantList &arguments);

    FakeDaemon daemon;
    QList<int> questions;
};

#endif
