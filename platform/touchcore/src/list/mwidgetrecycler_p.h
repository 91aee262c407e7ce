// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MWIDGETRECYCLER_P_H
#define MWIDGETRECYCLER_P_H

#include <unordered_map>

#include <QList>

#include <typeindex>

class MWidget;

class MWidgetRecyclerPrivate
{
public:
    // By the class itself: one without Q_OBJECT has the meta object of its base.
    std::unordered_map<std::type_index, QList<MWidget *>> kept;
};

#endif
