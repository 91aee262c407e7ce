// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/clientlog.h"

Q_LOGGING_CATEGORY(clientLog, "connui.nfc-ui", QtWarningMsg)
