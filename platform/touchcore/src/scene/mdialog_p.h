// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MDIALOG_P_H
#define MDIALOG_P_H

#include <QHash>
#include <QObject>
#include <QPointer>

#include <MDialog>

#include "scene/minputguard_p.h"

class MButton;
class MImageWidget;
class MLabel;
class MProgressIndicator;
class MScrollArea;
class MWidget;
class MWidgetController;
struct MStyle;

class MDialogPrivate : public QObject
{
    Q_OBJECT
public:
    enum Arrangement { Column, Row, EqualRow };

    explicit MDialogPrivate(MDialog *dialog);

    static MDialogPrivate *of(const MDialog *dialog) { return dialog->d.get(); }

    void build(const QString &title, M::StandardButtons standard);
    MButtonModel *addButton(const QString &text, M::ButtonRole role, M::StandardButton standard);
    /** Forgets the button \a model, whose view goes with it. */
    void forgetButton(const QObject *model);
    void press(MButtonModel *model);

    /** Shows the picture \a id above the title; none when empty. */
    void setHeadIcon(const QString &id);
    /** Puts what the title bar shows into it. */
    void fillTitleBar();
    /** Puts what the dialog holds into the body, from top to bottom. */
    void fillBody();
    /** Returns how far the focus ring of a button reaches beyond it. */
    static qreal ringRoom();
    /** Fits the card with its parts into the dialog. */
    void layOut();
    /** Gives the contents and the buttons a part of the card each. */
    void layOutParts(const MStyle &look, qreal inner);
    /** Puts the buttons beside the contents. */
    void layOutBeside(const MStyle &look);
    /** Returns whether \a tallest has no room for all contents and the buttons below them. */
    bool isTooLow(const MStyle &look, qreal tallest, qreal inner) const;
    qreal widestButton() const;
    /** Returns how high the buttons are where they are \a width wide together. */
    qreal buttonHeightIn(qreal width) const;
    /** Returns how high the contents are where they are \a width wide. */
    qreal bodyHeightIn(qreal width) const;
    /** Lets the contents and the buttons scroll together in the whole of the dialog. */
    void layOutWhole(const MStyle &look);
    /** Returns whether \a tallest has no room for a button and as much of the contents. */
    bool isTooSmall(qreal tallest, const MStyle &look) const;
    /** Lets the user begin to read: shows the beginning of the contents and of the buttons. */
    void beginAgain();
    /** Puts the buttons side by side if they fit into \a width, or below one another. */
    void arrangeButtons(qreal width);
    Arrangement arrangementIn(qreal width) const;
    /** Returns the buttons from the top of a column to its end, or from the end of a row to its beginning:
     * those that dismiss the dialog come last. */
    QList<MButton *> orderedViews() const;

    MDialog *const q;
    MWidgetController *card;
    MWidget *body;
    MScrollArea *bodyArea;
    MWidget *buttonBox;
    MScrollArea *buttonArea;
    MImageWidget *headIcon;
    MWidgetController *titleBar;
    MImageWidget *titleIcon;
    MLabel *titleLabel;
    MProgressIndicator *spinner;
    MWidgetController *balance; ///< Keeps the title in the middle beside the spinner
    QPointer<QGraphicsWidget> centralWidget;

    QList<MButtonModel *> models;
    QHash<const MButtonModel *, MButton *> views;
    Arrangement arrangement = Column;
    QPointer<MButtonModel> clicked;
    MInputGuard guard{this};
    bool whole = false; ///< Too small for parts that scroll by themselves
    bool busy = false;
    bool notice = false;
    bool done = false;
    int result = 0;
};

#endif
