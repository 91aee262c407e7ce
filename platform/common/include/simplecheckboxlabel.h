// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIMPLECHECKBOXLABEL_H
#define CONNUI_SIMPLECHECKBOXLABEL_H

#include <connui_common_export.h>

#include <MButton>
#include <MWidgetController>

class MLabel;
class MProgressIndicator;

namespace ConnUi {

/**
 * A row that names a button, with the button at its end, and shows beside it whether an activity is in
 * progress.
 */
class CONNUI_COMMON_EXPORT SimpleCheckBoxLabel : public MWidgetController
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
    Q_PROPERTY(bool showProgressIndicator READ showProgressIndicator WRITE setShowProgressIndicator)
public:
    /**
     * Makes a row of \a text and \a button, which gets the look \a viewType and which the row then owns,
     * inside \a parent, which then owns the row.
     */
    SimpleCheckBoxLabel(MButton *button, const QString &text, MButton::ViewType viewType,
                        QGraphicsItem *parent = nullptr);

    /** Returns the text. */
    QString text() const;

    /** Returns whether the progress indicator is shown, false by default. */
    bool showProgressIndicator() const;
    /** Shows a turning progress indicator, or hides it. */
    void setShowProgressIndicator(bool show);

private:
    MLabel *label;
    MProgressIndicator *indicator;
};

} // namespace ConnUi

#endif
