// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/question.h"

#include <QDBusError>
#include <QHash>

namespace {

QString errorOutcome(const QString &error)
{
    static const QHash<QString, QString> outcomes = {
        {QStringLiteral("com.tavix.nfc.UIAgent.Rejected"), QStringLiteral("rejected")},
        {QStringLiteral("com.tavix.nfc.UIAgent.Canceled"), QStringLiteral("canceled")},
        // The bus answers for a process that has left, before or during the call.
        {QDBusError::errorString(QDBusError::NoReply), QStringLiteral("canceled")},
        {QDBusError::errorString(QDBusError::ServiceUnknown), QStringLiteral("canceled")},
        {QDBusError::errorString(QDBusError::UnknownObject), QStringLiteral("no-agent")},
        {QDBusError::errorString(QDBusError::UnknownMethod), QStringLiteral("no-agent")},
    };
    return outcomes.value(error, error);
}

} // namespace

Question::Question(const QDBusPendingCall &call, const QString &success, QObject *parent)
    : QDBusPendingCallWatcher(call, parent)
    , success(success)
{
    connect(this, &QDBusPendingCallWatcher::finished, this, &Question::report);
}

void Question::report()
{
    deleteLater();
    Q_EMIT decided(isError() ? errorOutcome(error().name()) : success);
}
