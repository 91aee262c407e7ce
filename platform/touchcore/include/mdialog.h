// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MDIALOG_H
#define MDIALOG_H

#include <memory>

#include <QList>

#include <MButtonModel>
#include <MSceneWindow>
#include <MTypes>

class MDialogPrivate;

/**
 * A question or a notice in front of everything else in its window: a title bar, contents and buttons.
 *
 * Contents that are higher than the screen scroll; the buttons stay in reach. In a window that is wide and
 * too low for all, they stand beside the contents. In one without room for both, everything scrolls together.
 *
 * No button has the focus at first, and Enter presses only one whose focus is seen.
 */
class QUENZOTOUCHCORE_EXPORT MDialog : public MSceneWindow
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle)
    Q_PROPERTY(QString titleBarIconId READ titleBarIconId WRITE setTitleBarIconId)
    Q_PROPERTY(
        bool progressIndicatorVisible READ isProgressIndicatorVisible WRITE setProgressIndicatorVisible)
    Q_PROPERTY(int inputDelay READ inputDelay WRITE setInputDelay)
    Q_PROPERTY(bool notice READ isNotice WRITE setNotice)
public:
    /** Makes a dialog without a title that has \a buttons. */
    explicit MDialog(M::StandardButtons buttons = M::NoStandardButton);
    /** Makes a dialog with \a title that has \a buttons. */
    explicit MDialog(const QString &title, M::StandardButtons buttons = M::NoStandardButton);
    ~MDialog() override;

    /** Returns the text of the title bar. */
    QString title() const;
    /** Shows \a title in the title bar. The bar goes away while it has nothing to show. */
    void setTitle(const QString &title);

    /** Returns the theme id or the absolute path of the icon in the title bar. */
    QString titleBarIconId() const;
    /** Shows the theme's icon \a id, or the file when it is an absolute path, in the title bar; none when
     * empty. */
    void setTitleBarIconId(const QString &id);

    /** Returns whether the title bar shows that an activity is in progress. */
    bool isProgressIndicatorVisible() const;
    /** Shows in the title bar that an activity is in progress. */
    void setProgressIndicatorVisible(bool visible);

    /** Returns the contents, or null. */
    QGraphicsWidget *centralWidget() const;
    /** Makes \a widget the contents. The dialog owns it and deletes the earlier contents. */
    void setCentralWidget(QGraphicsWidget *widget);

    /** Returns after how many milliseconds input counts, 0 by default. */
    int inputDelay() const;
    /**
     * Lets a tap or a key count only when it comes so many \a milliseconds after the dialog was first drawn,
     * or drawn anew since it was uncovered, got other contents, or its buttons moved or changed. Until then
     * the buttons look inactive, and input is lost, also what was in a queue meanwhile; the time begins anew
     * with it, so that nobody who goes on tapping or typing answers.
     *
     * Escape and the back key, which refuse, always count, and so does MButtonModel::click(). A drag and a
     * tap beside the dialog, which refuse too, do not: the finger may have meant what was there before. With
     * 0, everything counts at once.
     */
    void setInputDelay(int milliseconds);

    /** Returns whether the dialog was said to be a notice, false by default. */
    bool isNotice() const;
    /**
     * Says that the user need not answer, although there is a choice of buttons: assistive technology
     * announces a \a notice in a background window when it has finished speaking, and interrupts itself for a
     * question. A dialog with at most one button is announced as a notice in any case.
     */
    void setNotice(bool notice);

    /**
     * Returns the buttons: first the standard ones, Ok before Cancel and Yes before No, then the added ones
     * in the order of adding. On the screen, No and Cancel stand below all others, or first in a row.
     */
    QList<MButtonModel *> buttons() const;
    /** Returns the button for \a button, or null when the dialog was made without it. */
    MButtonModel *button(M::StandardButton button) const;
    /** Adds a button that shows \a text and has the role M::InvalidRole. The dialog owns it. */
    MButtonModel *addButton(const QString &text);
    /** Adds a button that shows \a text. The dialog owns it. */
    MButtonModel *addButton(const QString &text, M::ButtonRole role);

    /**
     * Takes \a button away and deletes it from the event loop. Ignores one that is not the dialog's own.
     * Deleting a button does the same at once.
     */
    void removeButton(MButtonModel *button);

    /** Returns the button whose press closes or closed the dialog; null when it goes away without a press. */
    MButtonModel *clickedButton() const;

    /** Returns the code that the dialog was closed with, 0 while it never was. */
    int result() const;

public Q_SLOTS:
    /**
     * Closes the dialog: stores \a result, emits finished() and goes away as its deletion policy says. Until
     * it appears again, further calls do nothing.
     *
     * A press calls it with the standard button's code, or 0 for an added button.
     */
    virtual void done(int result);
    /** Closes the dialog as without a press, with the code of M::OkButton. */
    virtual void accept();
    /** Closes the dialog as without a press, with the code of M::CancelButton. */
    virtual void reject();

    /** Calls reject(). */
    void dismiss() override;

Q_SIGNALS:
    /** The dialog was closed with \a result. A slot may delete it. */
    void finished(int result);

protected:
    void aboutToAppear() override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void styleChanged() override;

private:
    friend class MDialogPrivate;
    const std::unique_ptr<MDialogPrivate> d;
};

#endif
