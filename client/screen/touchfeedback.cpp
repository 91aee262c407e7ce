// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/touchfeedback.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

namespace {

constexpr QLatin1String feedback("org.sigxcpu.Feedback");
// The service's themes have a short one for it.
constexpr QLatin1String event("button-pressed");
// Once, and no longer than it takes by itself.
constexpr int once = -1;

} // namespace

void giveTouchFeedback()
{
    QDBusMessage call = QDBusMessage::createMethodCall(feedback, QStringLiteral("/org/sigxcpu/Feedback"),
                                                       feedback, QStringLiteral("TriggerFeedback"));
    call << QStringLiteral("nfc-ui") << QString(event) << QVariantMap() << once;
    call.setAutoStartService(false);
    // Nobody waits for an answer.
    QDBusConnection::sessionBus().send(call);
}
