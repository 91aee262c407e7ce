// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "transfer.h"

#include <algorithm>

namespace {

constexpr int stepsPerSecond = 10;

} // namespace

Transfer::Transfer(quint64 size, quint64 rate, quint64 cancelAfter, QObject *parent)
    : QObject(parent)
    , size(size)
    , stepSize(std::max<quint64>(rate / stepsPerSecond, 1))
    , cancelAfter(cancelAfter)
{
    connect(&timer, &QTimer::timeout, this, &Transfer::takeStep);
    timer.start(1000 / stepsPerSecond);
}

void Transfer::cancel()
{
    end(QStringLiteral("canceled"));
}

void Transfer::takeStep()
{
    transferred += std::min(stepSize, size - transferred);
    Q_EMIT progressed(transferred);
    if (cancelAfter && transferred >= cancelAfter)
        cancel();
    else if (transferred == size)
        end(QStringLiteral("completed"));
}

void Transfer::end(const QString &outcome)
{
    timer.stop();
    Q_EMIT ended(outcome);
}
