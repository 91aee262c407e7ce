// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MWIDGETCONTROLLER_P_H
#define MWIDGETCONTROLLER_P_H

#include <QString>

#include <MWidgetController>

struct MStyle;

class MWidgetControllerPrivate
{
public:
    static MWidgetControllerPrivate *of(MWidgetController *widget) { return widget->d.get(); }

    /** Shows that \a widget, whose private part this is, has the focus. */
    void showFocus(MWidgetController *widget);

    QString styleName;
    QString accessibleName;
    const MStyle *style = nullptr;
    bool byKeyboard = false; ///< Whether the user moved the focus here with the keyboard
    bool focusShown = false;
};

#endif
