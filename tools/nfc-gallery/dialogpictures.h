// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_GALLERY_DIALOGPICTURES_H
#define CONNUI_GALLERY_DIALOGPICTURES_H

#include <MSceneWindow>

#include "pictures.h"

/** A dialog or a sheet with one of the contents that it may have. */
struct Dialog
{
    QString name;
    std::function<MSceneWindow *()> make;
};

/** Returns the pictures of \a dialogs on several screens, in all languages. */
QList<Picture> dialogPictures(const QList<Dialog> &dialogs);

#endif
