// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_DIALOGS_H
#define CONNUI_CLIENT_DIALOGS_H

#include "core/question.h"

class MDialog;

/** Makes the dialog for \a question, which may be of any kind but Receiving. */
MDialog *newDialog(const Question &question);

/** Returns what \a dialog, made for \a question and finished with \a result, says. */
Answer answerOf(const Question &question, const MDialog *dialog, int result);

#endif
