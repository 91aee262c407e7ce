// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_NOTICES_H
#define CONNUI_CLIENT_NOTICES_H

#include "core/question.h"

/** Returns a notice in words of ours. */
Question notice(const QString &title, const QString &text);

/** Returns the notice that there is nothing on a tag. */
Question emptyTagNotice();

/** Returns the notice that a tag, or what it holds, cannot be read. */
Question unreadableTagNotice();

#endif
