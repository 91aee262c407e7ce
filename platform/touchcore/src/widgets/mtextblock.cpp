// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <numeric>
#include <string>

#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>
#include <QTextBoundaryFinder>
#include <QtMath>

#include "support/foreigntext.h"
#include "widgets/mtextblock_p.h"

namespace {

// Sizes are rounded on their way through layouts.
constexpr qreal tolerance = 0.5;
// Greater than any text is wide.
constexpr qreal unlimited = 1e7;
// A layout takes time with the square of its length where directions alternate.
constexpr qsizetype longestLayout = 2048;
// So many may follow a letter in Unicode's stream-safe text format. More than that are not writing, and take
// time with the square of their number to be stacked.
constexpr int mostMarks = 30;

QString withoutStacks(const QString &text)
{
    std::u32string characters = text.toStdU32String();
    int marks = 0;
    std::erase_if(characters, [&marks](char32_t character) {
        marks = QChar::isMark(character) ? marks + 1 : 0;
        return marks > mostMarks;
    });
    return QString::fromStdU32String(characters);
}

// Returns where to end the first layout of a paragraph, at best where a line may end.
qsizetype layoutEnd(const QString &paragraph)
{
    for (const auto type : {QTextBoundaryFinder::Line, QTextBoundaryFinder::Grapheme}) {
        QTextBoundaryFinder finder(type, paragraph.left(longestLayout + 1));
        finder.setPosition(longestLayout);
        if (finder.isAtBoundary() || finder.toPreviousBoundary() > 0)
            return finder.position();
    }
    return longestLayout;
}

// The part of the free space above the text.
qreal verticalShare(Qt::Alignment alignment)
{
    if (alignment & Qt::AlignVCenter)
        return 0.5;
    return alignment & Qt::AlignBottom ? 1 : 0;
}

// The part of the free space left of a line.
qreal horizontalShare(Qt::Alignment alignment)
{
    if (alignment & Qt::AlignHCenter)
        return 0.5;
    return alignment & Qt::AlignRight ? 1 : 0;
}

} // namespace

MTextBlock::MTextBlock(const QString &text, const Shape &shape) : shape(shape)
{
    const auto drawn = [&text](qsizetype length) { return withoutStacks(text.left(length)).size(); };
    Emphasis &emphasis = this->shape.emphasis;
    const qsizetype end = drawn(emphasis.start + emphasis.length);
    emphasis.start = drawn(emphasis.start);
    emphasis.length = end - emphasis.start;
    const QStringList parts = Support::paragraphs(withoutStacks(text));
    for (const QString &part : parts) {
        QString rest = part;
        while (shape.wrapMode != QTextOption::NoWrap && rest.size() > longestLayout) {
            const qsizetype end = layoutEnd(rest);
            addParagraph(rest.left(end));
            rest.remove(0, end);
        }
        addParagraph(rest);
        ++laidOut;
    }
}

void MTextBlock::addParagraph(const QString &text)
{
    QTextLayout &layout = layouts.emplace_back(text, shape.font);
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(shape.wrapMode);
    option.setTextDirection(Qt::LayoutDirectionAuto);
    layout.setTextOption(option);
    emphasize(&layout, laidOut);
    laidOut += text.size();
    layout.setCacheEnabled(true);

    const qreal advance = lineAdvance();
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(shape.width < 0 ? unlimited : shape.width);
        line.setPosition(QPointF(0, extent.height() + (advance - line.height()) / 2));
        extent =
            QSizeF(qMax(extent.width(), qreal(qCeil(line.naturalTextWidth()))), extent.height() + advance);
    }
    layout.endLayout();
}

// Marks the part of it in a layout whose text begins at the position.
void MTextBlock::emphasize(QTextLayout *layout, qsizetype position) const
{
    const qsizetype start = qMax<qsizetype>(shape.emphasis.start - position, 0);
    const qsizetype end =
        qMin(shape.emphasis.start + shape.emphasis.length - position, layout->text().size());
    if (start >= end)
        return;
    QTextCharFormat format;
    format.setFontWeight(shape.emphasis.weight);
    format.setForeground(shape.emphasis.color);
    layout->setFormats({{int(start), int(end - start), format}});
}

qreal MTextBlock::lineAdvance() const
{
    return qCeil(QFontMetricsF(shape.font).height() * shape.lineHeight);
}

bool MTextBlock::fits(const QSizeF &size) const
{
    return extent.width() <= size.width() + tolerance && extent.height() <= size.height() + tolerance;
}

// Returns all that is left from that line on in one line of its own.
QString MTextBlock::elidedFrom(size_t layout, int line, qreal width) const
{
    QString rest = layouts[layout].text().mid(layouts[layout].lineAt(line).textStart());
    for (size_t i = layout + 1; i < layouts.size(); ++i)
        rest += QLatin1Char(' ') + layouts[i].text();
    return QFontMetricsF(shape.font).elidedText(rest.simplified(), Qt::ElideRight, width);
}

QString MTextBlock::elided(const QSizeF &size) const
{
    QStringList shown;
    int linesLeft = qMax(1, int((size.height() + tolerance) / lineAdvance()));
    for (size_t i = 0; i < layouts.size(); ++i) {
        const QTextLayout &layout = layouts[i];
        if (layout.lineCount() >= linesLeft) {
            const int last = linesLeft - 1;
            if (last > 0)
                shown.append(layout.text().left(layout.lineAt(last).textStart()));
            shown.append(elidedFrom(i, last, size.width()));
            break;
        }
        linesLeft -= layout.lineCount();
        // A line that wraps fits already.
        shown.append(shape.wrapMode == QTextOption::NoWrap
                         ? QFontMetricsF(shape.font).elidedText(layout.text(), Qt::ElideRight, size.width())
                         : layout.text());
    }
    return shown.join(QLatin1Char('\n'));
}

int MTextBlock::lineCount() const
{
    return std::accumulate(
        layouts.cbegin(), layouts.cend(), 0,
        [](int sum, const QTextLayout &layout) { return sum + layout.lineCount(); });
}

void MTextBlock::draw(QPainter *painter, const QRectF &rect, Qt::Alignment alignment,
                      Qt::LayoutDirection direction, const QRectF &exposed) const
{
    const Qt::Alignment visual = QStyle::visualAlignment(direction, alignment);
    const qreal top = qMax(qreal(0), (rect.height() - extent.height()) * verticalShare(visual));
    for (const QTextLayout &layout : layouts) {
        for (int i = 0; i < layout.lineCount(); ++i) {
            const QTextLine line = layout.lineAt(i);
            const qreal left = (rect.width() - line.naturalTextWidth()) * horizontalShare(visual);
            const QRectF natural = line.naturalTextRect();
            const QPointF place = rect.topLeft() + QPointF(left - natural.left(), top);
            const QRectF covered = natural.translated(place);
            if (covered.bottom() >= exposed.top() && covered.top() <= exposed.bottom())
                line.draw(painter, place);
        }
    }
}
