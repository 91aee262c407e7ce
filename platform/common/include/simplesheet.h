// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIMPLESHEET_H
#define CONNUI_SIMPLESHEET_H

#include <connui_common_export.h>
#include <memory>

#include <QString>

#include <MSceneWindow>

namespace ConnUi {

class SimpleSheetPrivate;

/**
 * A page that fills the window: a header with a title and a button that closes the page, and content below,
 * which scrolls where it does not fit.
 *
 * A derived class makes the content in createContent(), which runs once: at the first ensureContent(), at the
 * latest just before the sheet appears. A derived class whose own functions need the content calls
 * ensureContent() at the end of its constructor, or first thing in those functions.
 */
class CONNUI_COMMON_EXPORT SimpleSheet : public MSceneWindow
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle)
    Q_PROPERTY(QString rejectButtonText READ rejectButtonText WRITE setRejectButtonText)
public:
    /** Makes a sheet without title, button and content. */
    SimpleSheet();
    ~SimpleSheet() override;

    /** Returns the text in the header. */
    QString title() const;
    /** Shows \a title in the header. */
    void setTitle(const QString &title);

    /** Returns the text of the button that closes the sheet. */
    QString rejectButtonText() const;
    /** Shows the button that closes the sheet with \a text; no button when that is empty. */
    void setRejectButtonText(const QString &text);

    /** Returns the content, or null when there is none yet. */
    QGraphicsWidget *centralWidget() const;
    /** Makes \a widget the content. The sheet owns it and deletes the earlier content. */
    void setCentralWidget(QGraphicsWidget *widget);

protected:
    /** Creates the content unless it exists. */
    void ensureContent();

    /** Makes the content and hands it to setCentralWidget(). Makes none here. */
    virtual void createContent();

    void aboutToAppear() override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    const std::unique_ptr<SimpleSheetPrivate> d;
};

} // namespace ConnUi

#endif
