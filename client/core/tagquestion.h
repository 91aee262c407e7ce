// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_TAGQUESTION_H
#define CONNUI_CLIENT_TAGQUESTION_H

#include "core/question.h"

namespace ConnUi {
class NfcDeliveryDecision;
}

/** Returns the question that \a decision calls for. */
Question tagQuestion(const ConnUi::NfcDeliveryDecision &decision);

/** Returns the notice that shows the content to a user who wants to see it and has no application for that.
 */
Question contentNotice(const ConnUi::NfcDeliveryDecision &decision);

#endif
