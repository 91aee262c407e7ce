// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SEQUENCES_H
#define CONNUI_SEQUENCES_H

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <ostream>

#include "amount.h"

/** Appends all messages to a list instead of printing them, for as long as it lives. There is one at a time.
 */
class MessageLog
{
public:
    explicit MessageLog(QStringList *messages)
    {
        kept = messages;
        previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { kept->append(text); });
    }
    ~MessageLog() { qInstallMessageHandler(previous); }
    Q_DISABLE_COPY_MOVE(MessageLog)

private:
    static inline QStringList *kept = nullptr;
    QtMessageHandler previous;
};

/** Sets how many sequences RapidCheck tries, unless the environment does: every day the same few. */
inline void chooseSequences()
{
    if (!qEnvironmentVariableIsSet("RC_PARAMS"))
        qputenv("RC_PARAMS", amount(0, 1) ? "max_success=10000" : "max_success=300 seed=1");
}

// For RapidCheck's messages

inline std::ostream &operator<<(std::ostream &out, const QString &text)
{
    return out << qPrintable(text);
}

inline std::ostream &operator<<(std::ostream &out, const QStringList &texts)
{
    return out << texts.join(QLatin1String(", "));
}

#endif
