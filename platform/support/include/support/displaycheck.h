// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SUPPORT_DISPLAYCHECK_H
#define CONNUI_SUPPORT_DISPLAYCHECK_H

#include <QtGlobal>

namespace Support {

/**
 * Ends the program with the exit code NoDisplay when Qt finds no display, instead of the crash that would
 * follow. It has to exist while the application object is created.
 */
class DisplayCheck
{
public:
    DisplayCheck();
    ~DisplayCheck();
    Q_DISABLE_COPY_MOVE(DisplayCheck)
};

} // namespace Support

#endif
