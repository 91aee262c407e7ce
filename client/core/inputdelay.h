// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_INPUTDELAY_H
#define CONNUI_CLIENT_INPUTDELAY_H

/**
 * Returns after how many milliseconds a question may be answered: 500, or what the user has stored among the
 * connectivity settings of type 1 as "nfc_question_delay", an integer from 500 to 10,000. Reads a file.
 */
int inputDelay();

/** Returns whether that is more than the usual 500 milliseconds. Reads a file. */
bool isInputDelayLonger();

/** Stores 3 seconds, or that the user wants nothing but the usual. Writes a file. */
void setInputDelayLonger(bool isLonger);

#endif
