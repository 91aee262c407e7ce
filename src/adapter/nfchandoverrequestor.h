// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCHANDOVERREQUESTOR_H
#define CONNUI_NFCHANDOVERREQUESTOR_H

#include <QDBusAbstractAdaptor>
#include <QDBusVariant>
#include <QString>

namespace ConnUi {

class NfcAdapterPrivate;

/**
 * The living object that a handover request names as its requestor.
 *
 * The daemon's calls are accepted and do nothing: a handover's progress arrives through the adapter's own
 * signals.
 */
class NfcHandoverRequestor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tavix.nfc.HandoverRequestor")

public:
    explicit NfcHandoverRequestor(NfcAdapterPrivate *d);

public Q_SLOTS:
    void HandoverStarted();
    void HandoverCarrierSelected(const QString &carrier);
    void HandoverCompleted(const QString &carrier, const QDBusVariant &data);
    void HandoverFailed(const QString &reason);
};

} // namespace ConnUi

#endif
