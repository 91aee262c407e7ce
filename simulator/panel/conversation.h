// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_CONVERSATION_H
#define CONNUI_SIM_CONVERSATION_H

#include <QByteArray>
#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>

/**
 * Listens to what the daemon, its client and the world around them say to each other on the system bus, by
 * busctl(1), whose JSON shows where each message and each value ends, whatever it holds.
 */
class Conversation : public QObject
{
    Q_OBJECT

public:
    /** A message. Its answer has the same caller and receiver. */
    struct Message
    {
        QString caller;
        QString receiver;
        bool isAnswer;
        QString what;
        QStringList values; // a line for each
    };

    explicit Conversation(QObject *parent = nullptr);
    ~Conversation() override;

Q_SIGNALS:
    void said(const Conversation::Message &message);
    /** There is no program to listen with. */
    void failed();

private:
    void read();
    void readCall(const QJsonObject &message);
    void readAnswer(const QJsonObject &message);

    QProcess monitor;
    QHash<QString, Message> calls; // that have no answer yet, by caller's bus name and serial number
};

#endif
