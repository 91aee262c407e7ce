// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MTEXTBLOCKCACHE_P_H
#define MTEXTBLOCKCACHE_P_H

#include <deque>

#include <QString>

#include "widgets/mtextblock_p.h"

/** The text blocks that a widget was asked for last: layouts ask for the same few widths again and again. */
class MTextBlockCache
{
public:
    /** Returns \a text in lines as \a shape says. It stays until some others have been asked for. */
    const MTextBlock &block(const QString &text, const MTextBlock::Shape &shape);

    void clear() { blocks.clear(); }

private:
    struct Known
    {
        QString text;
        MTextBlock::Shape shape;
        MTextBlock block;
    };
    std::deque<Known> blocks;
};

#endif
