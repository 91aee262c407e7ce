// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "support/overlay.h"

namespace Support {

bool hasOverlays()
{
    return false;
}

void makeOverlay(QWidget *, QLatin1String, OverlayKeys) {}

} // namespace Support
