// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef PAGES_H
#define PAGES_H

#include <QList>
#include <QString>

class MSceneWindow;

/** A page of the gallery. */
struct Page
{
    QString name; ///< Also of its picture's file
    MSceneWindow *(*make)();
};

/** Returns the pages; together they show every widget in every style that programs use. */
QList<Page> pages();

#endif
