// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_GALLERY_REFERENCEPICTURES_H
#define CONNUI_GALLERY_REFERENCEPICTURES_H

#include "pictures.h"

/** Returns one of \a pictures for each class that shows something, by the name of its header. */
QList<Picture> referencePictures(const QList<Picture> &pictures);

#endif
