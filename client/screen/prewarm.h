// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_PREWARM_H
#define CONNUI_PREWARM_H

/**
 * Makes and paints a question that nobody sees.
 *
 * The fonts, the theme and the pictures that a process reads for its first question stay with it, so the
 * first touch after this is answered as quickly as every further one.
 */
void prewarmQuestion();

#endif
