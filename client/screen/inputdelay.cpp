// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/inputdelay.h"

#include <ConnectivitySettings>

namespace {

constexpr int userSettings = 1;
constexpr qlonglong shortest = 500; // ms
constexpr qlonglong longest = 10000;

} // namespace

int inputDelay()
{
    const QVariant stored =
        ConnUi::ConnectivitySettings(userSettings).get(QStringLiteral("nfc_question_delay"));
    const bool isNumber = stored.metaType() == QMetaType::fromType<qlonglong>();
    return int(qBound(shortest, isNumber ? stored.toLongLong() : shortest, longest));
}
