// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_VIEWER_SECTIONWIDGETS_H
#define CONNUI_VIEWER_SECTIONWIDGETS_H

#include <QByteArray>
#include <QList>

class QGraphicsWidget;
struct Section;

/**
 * Makes the widget that shows \a sections one below the other; that there is nothing when there are none. The
 * caller owns it.
 */
QGraphicsWidget *newSectionWidgets(const QList<Section> &sections);

#endif
