// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_GALLERY_PICTURES_H
#define CONNUI_GALLERY_PICTURES_H

#include <functional>

#include <QList>
#include <QPixmap>
#include <QString>

/** A picture of a part of the user interface in one of its states. */
struct Picture
{
    QString name;
    std::function<QPixmap()> take;
};

/** Returns the pictures of the settings, of the sheet for a file that arrives and of the banner. */
QList<Picture> pictures();

#endif
