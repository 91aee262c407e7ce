// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MWIDGETCONTROLLER_P_H
#define MWIDGETCONTROLLER_P_H

#include <QString>

struct MStyle;

class MWidgetControllerPrivate
{
public:
    QString styleName;
    QString accessibleName;
    const MStyle *style = nullptr;
    bool focusShown = false;
};

#endif
