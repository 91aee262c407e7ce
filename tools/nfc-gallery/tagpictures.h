// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_GALLERY_TAGPICTURES_H
#define CONNUI_GALLERY_TAGPICTURES_H

#include "pictures.h"

/**
 * Returns the pictures of the questions about each kind of content of a tag, in portrait and landscape, in
 * English, German and Arabic.
 *
 * The applications in them are those of the folder applications/; without their desktop files they have no
 * names.
 */
QList<Picture> tagPictures();

#endif
