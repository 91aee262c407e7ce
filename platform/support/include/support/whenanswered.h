// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SUPPORT_WHENANSWERED_H
#define CONNUI_SUPPORT_WHENANSWERED_H

#include <utility>

#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QObject>

namespace Support {

/**
 * Calls \a then with the answered \a call, from the event loop, unless \a context has gone by then.
 *
 * Deleting the watcher that is returned takes that back.
 */
template <typename Then>
QDBusPendingCallWatcher *whenAnswered(const QDBusPendingCall &call, QObject *context, Then then)
{
    auto *watcher = new QDBusPendingCallWatcher(call, context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [then = std::move(then)](QDBusPendingCallWatcher *answered) {
                         answered->deleteLater();
                         then(QDBusPendingCall(*answered));
                     });
    return watcher;
}

} // namespace Support

#endif
