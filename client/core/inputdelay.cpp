// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/inputdelay.h"

#include <QVariant>

#include <ConnectivitySettings>

namespace {

constexpr int userSettings = 1;
constexpr qlonglong shortest = 500; // ms
constexpr qlonglong longer = 3000;
constexpr qlonglong longest = 10000;

QString key()
{
    return QStringLiteral("nfc_question_delay");
}

} // namespace

int inputDelay()
{
    const QVariant stored = ConnUi::ConnectivitySettings(userSettings).get(key());
    const bool isNumber = stored.metaType() == QMetaType::fromType<qlonglong>();
    return int(qBound(shortest, isNumber ? stored.toLongLong() : shortest, longest));
}

bool isInputDelayLonger()
{
    return inputDelay() > shortest;
}

void setInputDelayLonger(bool isLonger)
{
    ConnUi::ConnectivitySettings(userSettings).set(key(), isLonger ? QVariant(longer) : QVariant());
}
