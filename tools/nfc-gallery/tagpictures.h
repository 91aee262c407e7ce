// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_GALLERY_TAGPICTURES_H
#define CONNUI_GALLERY_TAGPICTURES_H

#include "dialogpictures.h"

/** Returns the questions about each kind of content of a tag. */
QList<Dialog> tagDialogs();

/**
 * Returns the pictures of the questions about each kind of content of a tag, each as dialogPictures() takes
 * them.
 *
 * The applications in them are those of the folder applications/; without their desktop files they have no
 * names.
 */
QList<Picture> tagPictures();

#endif
