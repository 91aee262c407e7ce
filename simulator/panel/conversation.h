// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_CONVERSATION_H
#define CONNUI_SIM_CONVERSATION_H

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QProcess>
#include <QString>

/**
 * Listens to what the daemon, its client and the world around them say to each other on the system bus, by
 * dbus-monitor(1).
 */
class Conversation : public QObject
{
    Q_OBJECT

public:
    explicit Conversation(QObject *parent = nullptr);
    ~Conversation() override;

Q_SIGNALS:
    /** Somebody has said something: a sentence for people. */
    void said(const QString &sentence);
    /** An argument of what was said last, as dbus-monitor writes it, indentation included. */
    void detailed(const QString &argument);

private:
    void read();
    void readLine(const QString &line);
    QString callSentence(const QHash<QString, QString> &fields, const QString &kind);
    QString answerSentence(const QHash<QString, QString> &fields, const QString &kind);

    QProcess monitor;
    QHash<QString, QString> roles; // by unique bus name
    QHash<QString, QString> calls; // that have no answer yet, by caller and serial number: what was called
    bool relevant = false;         // the message that is being read
};

#endif
