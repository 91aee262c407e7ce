// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "adapter/nfchandoverrequestor.h"

#include "adapter/nfcadapter_p.h"

namespace ConnUi {

NfcHandoverRequestor::NfcHandoverRequestor(NfcAdapterPrivate *d) : QDBusAbstractAdaptor(d) {}

void NfcHandoverRequestor::HandoverStarted() {}

void NfcHandoverRequestor::HandoverCarrierSelected(const QString &) {}

void NfcHandoverRequestor::HandoverCompleted(const QString &, const QDBusVariant &) {}

void NfcHandoverRequestor::HandoverFailed(const QString &) {}

} // namespace ConnUi
