// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_GALLERY_QUESTIONPICTURES_H
#define CONNUI_GALLERY_QUESTIONPICTURES_H

#include "pictures.h"

/** Returns the pictures of the questions about devices and sharing, and of what is told about a tag. */
QList<Picture> questionPictures();

#endif
