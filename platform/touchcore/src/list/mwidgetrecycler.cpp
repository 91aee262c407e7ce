// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mwidgetrecycler.h"

#include <typeinfo>
#include <utility>

#include <QGraphicsLayout>
#include <QGraphicsScene>

#include "list/mwidgetrecycler_p.h"

MWidgetRecycler::MWidgetRecycler() : d(std::make_unique<MWidgetRecyclerPrivate>()) {}

MWidgetRecycler::~MWidgetRecycler()
{
    for (const auto &[type, widgets] : std::as_const(d->kept))
        qDeleteAll(widgets);
}

void MWidgetRecycler::recycle(MWidget *widget)
{
    if (widget->scene())
        widget->scene()->removeItem(widget);
    widget->setParentItem(nullptr);
    widget->setLayout(nullptr);
    const QList<QGraphicsItem *> children = widget->childItems();
    qDeleteAll(children);
    d->kept[typeid(*widget)].append(widget);
}

MWidget *MWidgetRecycler::take(std::type_index type)
{
    QList<MWidget *> &widgets = d->kept[type];
    return widgets.isEmpty() ? nullptr : widgets.takeLast();
}
