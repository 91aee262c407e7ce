// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_TAGQUESTION_H
#define CONNUI_CLIENT_TAGQUESTION_H

#include "core/decision.h"
#include "core/question.h"
#include "core/tagcontent.h"

/** Returns the question about \a content that \a decision calls for. */
Question tagQuestion(const TagContent &content, const Decision &decision);

/** Returns the notice that shows \a content to a user who wants to see it and has no application for that. */
Question contentNotice(const TagContent &content, const Decision &decision);

#endif
