// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_OFFLINEMODE_H
#define CONNUI_OFFLINEMODE_H

#include <connui_common_core_export.h>

#include <QObject>

namespace ConnUi {

class PendingAnswer;

/**
 * Reports whether the device is in offline (flight) mode, as the connection manager on the system bus sees
 * it.
 */
class CONNUI_COMMON_CORE_EXPORT OfflineMode : public QObject
{
    Q_OBJECT
public:
    /**
     * Creates an object that asks at every currentStatus(). Sends nothing by itself.
     */
    explicit OfflineMode(QObject *parent = nullptr);

    /**
     * Returns 0 in offline mode, 1 otherwise.
     *
     * Asks "net.connman" and blocks until it answers, for 100 ms at most. Without a connection manager on the
     * bus, which is not started for this, the device is not offline. The same is said, with one warning,
     * where the manager is too slow, refuses or answers nonsense.
     */
    int currentStatus() const;

    /**
     * Returns an answer whose value is what currentStatus() returns, and returns at once.
     *
     * A manager that does not answer within 2 s is too slow. A failure is logged as by currentStatus(), and
     * is the answer's error; a manager that is not there is no failure. The answer belongs to this object.
     */
    PendingAnswer *currentStatusAsync();
};

} // namespace ConnUi

#endif
