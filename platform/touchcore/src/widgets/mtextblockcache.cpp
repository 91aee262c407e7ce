// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "widgets/mtextblockcache_p.h"

namespace {

constexpr size_t keptBlocks = 8;

} // namespace

const MTextBlock &MTextBlockCache::block(const QString &text, const MTextBlock::Shape &shape)
{
    for (const Known &known : blocks)
        if (known.shape == shape && known.text == text)
            return known.block;
    if (blocks.size() == keptBlocks)
        blocks.pop_front();
    return blocks.emplace_back(Known{text, shape, MTextBlock(text, shape)}).block;
}
