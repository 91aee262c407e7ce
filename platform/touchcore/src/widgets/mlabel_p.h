// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MLABEL_P_H
#define MLABEL_P_H

#include <optional>

#include <QStringList>
#include <QTextOption>

#include "theme/mstyle_p.h"
#include "widgets/mtextblockcache_p.h"

class MLabelPrivate
{
public:
    QStringList variants{QString()};
    QString text;
    bool foreign = false;
    qsizetype emphasisStart = 0;
    qsizetype emphasisLength = 0;
    std::optional<bool> wordWrap;
    std::optional<bool> textElide;
    QTextOption::WrapMode wrapMode = QTextOption::WordWrap;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;

    bool wraps(const MStyle &style) const { return wordWrap.value_or(style.wordWrap); }
    bool elides(const MStyle &style) const { return textElide.value_or(style.elide); }

    /** Reads the text anew: as variants of ours, or as the one text of somebody else. */
    void readText();
    /** Returns \a part of the text as it is drawn. */
    QString drawable(const QString &part) const;
    /** Returns the part that is set apart, in the text as it is drawn. */
    MTextBlock::Emphasis drawnEmphasis() const;

    /** Returns the text that is drawn into \a size. */
    QString textIn(const QSizeF &size, const MStyle &style);
    /** Returns that text in lines. */
    const MTextBlock &blockIn(const QSizeF &size, const MStyle &style);

    /** Returns how \a text is aligned: nobody reads many lines that begin at different places. */
    Qt::Alignment alignmentOf(const MTextBlock &text) const;

    /** Returns how text is broken into lines of \a width. */
    MTextBlock::Shape shape(qreal width, const MStyle &style) const;

    /** Returns \a variant broken into lines of \a width, or into one for each paragraph when the text does
     * not wrap. */
    const MTextBlock &block(int variant, qreal width, const MStyle &style);

    /** Returns the longest variant that fits into \a size, or the shortest when none does. */
    int fittingVariant(const QSizeF &size, const MStyle &style);

    /** Returns the variants' numbers with the widest first. */
    QList<int> longestFirst(const MStyle &style);

    MTextBlockCache blocks;
};

#endif
