// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_GALLERY_PROMPTPICTURES_H
#define CONNUI_GALLERY_PROMPTPICTURES_H

#include "dialogpictures.h"

/** Returns the prompts and the question whether to share, with all contents that they may have. */
QList<Dialog> promptDialogs();

/** Returns the pictures of the prompts and of the question whether to share, each as dialogPictures() takes
 * them. */
QList<Picture> promptPictures();

#endif
