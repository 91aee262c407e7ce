// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MDIALOG_P_H
#define MDIALOG_P_H

#include <QHash>
#include <QPointer>

#include <MDialog>

class MButton;
class MImageWidget;
class MLabel;
class MProgressIndicator;
class MScrollArea;
class MWidget;
class MWidgetController;

class MDialogPrivate
{
public:
    explicit MDialogPrivate(MDialog *dialog);

    static MDialogPrivate *of(const MDialog *dialog) { return dialog->d.get(); }

    void build(const QString &title, M::StandardButtons standard);
    MButtonModel *addButton(const QString &text, M::ButtonRole role, M::StandardButton standard);
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
    /** Puts the buttons side by side if they fit into \a width, or below one another. */
    void arrangeButtons(qreal width);

    enum Arrangement { Column, Row, EqualRow };

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
    MButtonModel *clicked = nullptr;
    bool busy = false;
    bool done = false;
    int result = 0;
};

#endif
