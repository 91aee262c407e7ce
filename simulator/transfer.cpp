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
    , rate(rate)
    , cancelAfter(cancelAfter)
{
    connect(&timer, &QTimer::timeout, this, &Transfer::takeStep);
    timer.start(1000 / stepsPerSecond);
}

void Transfer::cancel()
{
    timer.stop();
    Q_EMIT canceled();
}

void Transfer::takeStep()
{
    remainder += rate % stepsPerSecond;
    const quint64 arrived = rate / stepsPerSecond + remainder / stepsPerSecond;
    remainder %= stepsPerSecond;
    transferred += std::min({arrived, size - transferred, cancelAfter - transferred});
    Q_EMIT progressed(transferred);
    if (transferred >= cancelAfter) {
        cancel();
    } else if (transferred == size) {
        timer.stop();
        Q_EMIT completed();
    }
}
