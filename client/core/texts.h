// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_TEXTS_H
#define CONNUI_CLIENT_TEXTS_H

/**
 * Loads the texts in the user's language, the toolkit's own among them, or in English where there are none.
 * Needs the application object.
 */
void loadTexts();

#endif
