// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mlabel.h"

#include <algorithm>
#include <numeric>

#include <QFontMetricsF>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <MTypes>

#include "accessibility/maccessible_p.h"
#include "support/foreigntext.h"
#include "theme/mtheme_p.h"
#include "widgets/mlabel_p.h"

namespace {

// The number of lines that are easy to read where each begins at another place.
constexpr int longestCentered = 3;

} // namespace

MTextBlock::Shape MLabelPrivate::shape(qreal width, const MStyle &style) const
{
    if (!wraps(style))
        return {style.font, -1, QTextOption::NoWrap, style.lineHeight, drawnEmphasis()};
    const QTextOption::WrapMode mode =
        wrapMode == QTextOption::WordWrap ? QTextOption::WrapAtWordBoundaryOrAnywhere : wrapMode;
    return {style.font, width, mode, style.lineHeight, drawnEmphasis()};
}

const MTextBlock &MLabelPrivate::block(int variant, qreal width, const MStyle &style)
{
    return blocks.block(variants.at(variant), shape(width, style));
}

QList<int> MLabelPrivate::longestFirst(const MStyle &style)
{
    QList<int> order(variants.size());
    std::iota(order.begin(), order.end(), 0);
    if (order.size() > 1) {
        const QFontMetricsF metrics(style.font);
        std::stable_sort(order.begin(), order.end(), [&](int one, int other) {
            return metrics.horizontalAdvance(variants.at(one)) >
                   metrics.horizontalAdvance(variants.at(other));
        });
    }
    return order;
}

int MLabelPrivate::fittingVariant(const QSizeF &size, const MStyle &style)
{
    if (variants.size() == 1)
        return 0;
    const QList<int> order = longestFirst(style);
    for (const int variant : order)
        if (block(variant, size.width(), style).fits(size))
            return variant;
    return order.last();
}

QString MLabelPrivate::drawable(const QString &part) const
{
    return foreign ? Support::drawableForeignText(part) : part;
}

MTextBlock::Emphasis MLabelPrivate::drawnEmphasis() const
{
    if (emphasisLength <= 0)
        return {};
    const MStyle &style = MThemePrivate::ownStyle("MLabelEmphasis");
    const qsizetype start = drawable(text.left(emphasisStart)).size();
    const qsizetype end = drawable(text.left(emphasisStart + emphasisLength)).size();
    return {start, end - start, style.font.weight(), style.color};
}

void MLabelPrivate::readText()
{
    variants = foreign ? QStringList{drawable(text)} : text.split(M::lengthVariantSeparator);
    blocks.clear();
}

QString MLabelPrivate::textIn(const QSizeF &size, const MStyle &style)
{
    const int variant = fittingVariant(size, style);
    if (!elides(style))
        return variants.at(variant);
    const MTextBlock &whole = block(variant, size.width(), style);
    return whole.fits(size) ? variants.at(variant) : whole.elided(size);
}

const MTextBlock &MLabelPrivate::blockIn(const QSizeF &size, const MStyle &style)
{
    return blocks.block(textIn(size, style), shape(size.width(), style));
}

Qt::Alignment MLabelPrivate::alignmentOf(const MTextBlock &text) const
{
    if (text.lineCount() <= longestCentered || !(alignment & Qt::AlignHCenter))
        return alignment;
    return (alignment & Qt::AlignVertical_Mask) | Qt::AlignLeft;
}

MLabel::MLabel(QGraphicsItem *parent) : MLabel(QString(), parent) {}

MLabel::MLabel(const QString &text, QGraphicsItem *parent)
    : MWidgetController(parent)
    , d(std::make_unique<MLabelPrivate>())
{
    // For the exposed part of a text that is longer than the screen.
    setFlag(ItemUsesExtendedStyleOption);
    setText(text);
    applyStyle();
}

MLabel::~MLabel() = default;

QString MLabel::text() const
{
    return d->text;
}

void MLabel::setText(const QString &text)
{
    d->text = text;
    d->emphasisLength = 0;
    d->readText();
    updateGeometry();
    update();
    MAccessible::tell(this, QAccessible::NameChanged);
}

bool MLabel::isForeignText() const
{
    return d->foreign;
}

void MLabel::setForeignText(bool foreign)
{
    if (d->foreign == foreign)
        return;
    d->foreign = foreign;
    d->readText();
    updateGeometry();
    update();
}

QString MLabel::drawableForeignText(const QString &text)
{
    return Support::drawableForeignText(text);
}

void MLabel::setEmphasis(qsizetype from, qsizetype length)
{
    d->emphasisStart = from;
    d->emphasisLength = length;
    updateGeometry();
    update();
}

QString MLabel::emphasizedText() const
{
    const MTextBlock::Emphasis emphasis = d->drawnEmphasis();
    return d->variants.first().mid(emphasis.start, emphasis.length);
}

QString MLabel::drawnText() const
{
    return d->textIn(contentsRect().size(), style());
}

bool MLabel::wordWrap() const
{
    return d->wraps(style());
}

void MLabel::setWordWrap(bool wrap)
{
    d->wordWrap = wrap;
    styleChanged();
}

QTextOption::WrapMode MLabel::wrapMode() const
{
    return d->wrapMode;
}

void MLabel::setWrapMode(QTextOption::WrapMode mode)
{
    d->wrapMode = mode;
    styleChanged();
}

Qt::Alignment MLabel::alignment() const
{
    return d->alignment;
}

void MLabel::setAlignment(Qt::Alignment alignment)
{
    d->alignment = alignment;
    update();
}

bool MLabel::textElide() const
{
    return d->elides(style());
}

void MLabel::setTextElide(bool elide)
{
    d->textElide = elide;
    styleChanged();
}

void MLabel::styleChanged()
{
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(wordWrap());
    setSizePolicy(policy);
    updateGeometry();
    update();
}

void MLabel::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    MWidgetController::paint(painter, option, widget);
    const MStyle &look = style();
    const QRectF area = contentsRect();
    const QColor color =
        d->emphasisLength > 0 ? MThemePrivate::ownStyle("MLabelBesideEmphasis").color : look.color;
    painter->setPen(isEnabled() ? color : look.disabledColor);
    const MTextBlock &block = d->blockIn(area.size(), look);
    // Nobody would clean up what is drawn outside.
    if (!block.fits(area.size()))
        painter->setClipRect(rect(), Qt::IntersectClip);
    block.draw(painter, area, d->alignmentOf(block), layoutDirection(), option->exposedRect);
}

QSizeF MLabel::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    const MStyle &look = style();
    QSizeF size = MWidgetController::sizeHint(which, constraint);
    if (which != Qt::MinimumSize && which != Qt::PreferredSize)
        return size;
    qreal left, top, right, bottom;
    getContentsMargins(&left, &top, &right, &bottom);
    const QSizeF margins(left + right, top + bottom);
    const qreal width = constraint.width() < 0 ? -1 : qMax(qreal(0), constraint.width() - margins.width());

    const QList<int> order = d->longestFirst(look);
    QSizeF text = d->block(order.first(), width, look).size();
    if (which == Qt::MinimumSize) {
        const bool narrow = wordWrap() || textElide();
        text.setWidth(narrow ? 0 : d->block(order.last(), width, look).size().width());
    }
    size = size.expandedTo(text + margins);
    return look.width < 0 ? size : QSizeF(look.width, size.height());
}
