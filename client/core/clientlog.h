// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_CLIENTLOG_H
#define CONNUI_CLIENT_CLIENTLOG_H

#include <QLoggingCategory>

/** "connui.nfc-ui": warnings; with QT_LOGGING_RULES="connui.nfc-ui=true" also what is asked and answered. */
Q_DECLARE_LOGGING_CATEGORY(clientLog)

#endif
