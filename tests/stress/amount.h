// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_AMOUNT_H
#define CONNUI_AMOUNT_H

#include <QtGlobal>

/** Returns how much a stress test does: \a few for everyday, \a all with CONNUI_STRESS=full in the
 * environment. */
inline int amount(int few, int all)
{
    return qEnvironmentVariable("CONNUI_STRESS") == QLatin1String("full") ? all : few;
}

#endif
