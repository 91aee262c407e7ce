// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mtextblocks_p.h"

namespace {

constexpr size_t keptBlocks = 8;

} // namespace

const MTextBlock &MTextBlocks::block(const QString &text, const MTextBlock::Shape &shape)
{
    for (const Known &known : m_blocks) {
        if (known.shape == shape && known.text == text) {
            return known.block;
        }
    }
    if (m_blocks.size() == keptBlocks) {
        m_blocks.pop_front();
    }
    return m_blocks.emplace_back(Known{text, shape, MTextBlock(text, shape)}).block;
}
