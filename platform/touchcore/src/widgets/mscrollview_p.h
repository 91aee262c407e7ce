// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MSCROLLVIEW_P_H
#define MSCROLLVIEW_P_H

class MLayout;
class MScrollArea;
class MScrollView;
class MWidget;
class QGraphicsWidget;

class MScrollViewPrivate
{
public:
    explicit MScrollViewPrivate(MScrollView *view);

    /** Holds the widget in a layout, which notices every change of its size. */
    MWidget *const frame;
    MLayout *const layout;
    MScrollArea *const area;
    QGraphicsWidget *widget = nullptr;
};

#endif
