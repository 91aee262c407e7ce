// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MTEXTBLOCK_P_H
#define MTEXTBLOCK_P_H

#include <deque>

#include <QColor>
#include <QFont>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <QTextLayout>
#include <QTextOption>

class QPainter;
class QRectF;

/**
 * A plain text broken into lines. Every paragraph is laid out by itself, so that directional control
 * characters end with it.
 */
class MTextBlock
{
public:
    /** A part of the text that is set apart. */
    struct Emphasis
    {
        qsizetype start = 0; ///< In UTF-16 units
        qsizetype length = 0;
        int weight = QFont::Normal;
        QColor color;

        bool operator==(const Emphasis &other) const = default;
    };

    /** How text is broken into lines. */
    struct Shape
    {
        QFont font;
        qreal width = 0; ///< Of a line; unlimited when negative
        QTextOption::WrapMode wrapMode = QTextOption::NoWrap;
        qreal lineHeight = 1; ///< Factor on the font's own
        Emphasis emphasis = {};

        bool operator==(const Shape &other) const = default;
    };

    MTextBlock(const QString &text, const Shape &shape);

    /** Returns the size that the text takes. */
    QSizeF size() const { return extent; }
    /** Returns how many lines the text has. */
    int lineCount() const;
    /** Returns whether the text takes no more than \a size. */
    bool fits(const QSizeF &size) const;
    /** Returns the text as far as it fits into \a size; an ellipsis ends each line that goes on. */
    QString elided(const QSizeF &size) const;

    /**
     * Draws what is inside of \a exposed of the text, which stands in \a rect as \a alignment says for a
     * layout that runs to \a direction.
     */
    void draw(QPainter *painter, const QRectF &rect, Qt::Alignment alignment, Qt::LayoutDirection direction,
              const QRectF &exposed) const;

private:
    void addParagraph(const QString &text);
    void emphasize(QTextLayout *layout, qsizetype position) const;
    qreal lineAdvance() const;
    QString elidedFrom(size_t layout, int line, qreal width) const;

    Shape shape;
    qsizetype laidOut = 0; // UTF-16 units, with the line ends
    std::deque<QTextLayout> layouts;
    QSizeF extent{0, 0};
};

#endif
