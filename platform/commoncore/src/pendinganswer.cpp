// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pendinganswer.h"

#include <QCoreApplication>

namespace ConnUi {

PendingAnswer::PendingAnswer(QObject *parent) : QObject(parent ? parent : QCoreApplication::instance()) {}

PendingAnswer::~PendingAnswer() = default;

bool PendingAnswer::isFinished() const
{
    return isKnown;
}

bool PendingAnswer::isError() const
{
    return !failureName.isEmpty();
}

QString PendingAnswer::errorName() const
{
    return failureName;
}

QString PendingAnswer::errorText() const
{
    return failureText;
}

QVariant PendingAnswer::value() const
{
    return result;
}

void PendingAnswer::finish(const QVariant &value, const QString &errorName, const QString &errorText)
{
    isKnown = true;
    result = value;
    failureName = errorName;
    failureText = errorText;
    // Before the announcement: a slot may delete this object.
    deleteLater();
    Q_EMIT finished(this);
}

} // namespace ConnUi
