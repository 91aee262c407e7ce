// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MLABEL_H
#define MLABEL_H

#include <memory>

#include <QTextOption>

#include <MWidgetController>

class MLabelPrivate;

/**
 * A text. It is always drawn as plain text, and directional control characters in it reorder nothing outside
 * of it.
 *
 * A text that holds variants of different length, separated by U+009C, shows the longest one that fits.
 */
class QUENZOTOUCHCORE_EXPORT MLabel : public MWidgetController
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(bool foreignText READ isForeignText WRITE setForeignText)
    Q_PROPERTY(bool wordWrap READ wordWrap WRITE setWordWrap)
    Q_PROPERTY(QTextOption::WrapMode wrapMode READ wrapMode WRITE setWrapMode)
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment)
    Q_PROPERTY(bool textElide READ textElide WRITE setTextElide)
public:
    /** Makes an empty label inside \a parent, which then owns it. */
    explicit MLabel(QGraphicsItem *parent = nullptr);
    /** Makes a label that shows \a text inside \a parent, which then owns it. */
    explicit MLabel(const QString &text, QGraphicsItem *parent = nullptr);
    ~MLabel() override;

    /** Returns the whole text, with all of its length variants. */
    QString text() const;
    /** Shows \a text. */
    void setText(const QString &text);

    /** Returns whether the text was written by somebody else, false by default. */
    bool isForeignText() const;
    /**
     * Draws the text as one that somebody else wrote, for example on a tag: text() stays as it is, but the
     * label reads no length variants in it, and shows U+FFFD for each character that is invisible or steers
     * how others are drawn, such as controls, bidirectional controls, zero-width and tag characters. Joiners
     * and variation selectors stay where a script or an emoji needs them, and no more than one empty line
     * stays between others. The first U+202A and the last U+202C on its line isolate the text between them,
     * as a program writes them round a number.
     */
    void setForeignText(bool foreign);

    /**
     * Sets \a length UTF-16 units of text() from \a from apart: they are drawn in the weight and the color of
     * the style MLabelEmphasis, the others in the color of MLabelBesideEmphasis. For a text without length
     * variants. A length of 0, the default, sets nothing apart; a new text takes this back. Assistive
     * technology reads the text as it is.
     */
    void setEmphasis(qsizetype from, qsizetype length);
    /** Returns the part of the text that is set apart, as it is drawn. */
    QString emphasizedText() const;

    /**
     * Returns the text that the label draws at its present size: the variant that fits, foreign text with
     * its marks, and elided text with its ellipsis.
     */
    QString drawnText() const;

    /**
     * Returns \a text as a label draws foreign text: the marks of setForeignText() in the place of what is
     * invisible or steers others, LF as the only line end. For a name that is to stand in a sentence of the
     * program's own.
     */
    static QString drawableForeignText(const QString &text);

    /** Returns whether the text may take several lines; unless set, the style decides. */
    bool wordWrap() const;
    /** Lets the text take several lines when it is wider than the label. */
    void setWordWrap(bool wrap);

    /** Returns where lines may break, QTextOption::WordWrap by default. */
    QTextOption::WrapMode wrapMode() const;
    /**
     * Sets where lines may break while wordWrap() is on. A word that is wider than a line is broken even with
     * QTextOption::WordWrap, because it would be cut otherwise.
     */
    void setWrapMode(QTextOption::WrapMode mode);

    /** Returns the position of the text in the label, at the left and in the middle of its height by default.
     */
    Qt::Alignment alignment() const;
    /**
     * Sets the position of the text. Left and right change places in a right-to-left layout. Centered text of
     * more than three lines is drawn at the left: nobody reads many lines that begin at different places.
     */
    void setAlignment(Qt::Alignment alignment);

    /** Returns whether a text that does not fit ends in an ellipsis; unless set, the style decides. */
    bool textElide() const;
    /** Lets a text that does not fit end in an ellipsis, so that the label may become narrower than its text.
     */
    void setTextElide(bool elide);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

protected:
    void styleChanged() override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    const std::unique_ptr<MLabelPrivate> d;
};

#endif
