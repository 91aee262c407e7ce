// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MWIDGETRECYCLER_P_H
#define MWIDGETRECYCLER_P_H

#include <QHash>
#include <QList>

class MWidget;

class MWidgetRecyclerPrivate
{
public:
    QHash<const QMetaObject *, QList<MWidget *>> kept;
};

#endif
