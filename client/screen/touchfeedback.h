// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_TOUCHFEEDBACK_H
#define CONNUI_CLIENT_TOUCHFEEDBACK_H

/**
 * Lets the user hear or feel a touch, as the phone's feedback service (org.sigxcpu.Feedback on the session
 * bus) is set to. Does not wait for the service, and does not start it.
 */
void giveTouchFeedback();

#endif
