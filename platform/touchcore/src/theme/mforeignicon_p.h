// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MFOREIGNICON_P_H
#define MFOREIGNICON_P_H

#include <functional>
#include <optional>

#include <QIcon>

class QImage;
class QObject;

/** The size that a drawing has in the end; bitmaps are not larger. */
constexpr QSize foreignIconSize(256, 256);

/**
 * Returns the icon with the theme id or absolute path \a id, a null one where it takes too much to draw, or
 * nothing when there is none.
 *
 * Its file is somebody else's, and a few bytes of a drawing can ask for more work than a machine does in a
 * day. So a process of its own reads and draws it, which ends when that takes more than a second of processor
 * time or half a gigabyte of memory. Waits for it, five seconds at most.
 */
std::optional<QIcon> foreignIcon(const QString &id);

/** The same without waiting, see MTheme::drawForeignImage(). */
void drawForeignImage(const QString &id, QObject *context, const std::function<void(const QImage &)> &then);

#endif
