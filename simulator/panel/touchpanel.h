// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_TOUCHPANEL_H
#define CONNUI_SIM_TOUCHPANEL_H

#include <QWidget>

#include "panel/conversation.h"
#include "panel/touchbuttons.h"

class QBoxLayout;
class QGridLayout;
class QLabel;
class QPushButton;
class QTextCharFormat;
class QTextCursor;
class QTextEdit;

/**
 * The panel beside the phone: what can touch it on buttons, and what that makes the bus say. Where the window
 * is narrow, one is above the other.
 */
class TouchPanel : public QWidget
{
    Q_OBJECT

public:
    TouchPanel();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *newButtons();
    QPushButton *addButton(QGridLayout *group, const QString &label);
    QBoxLayout *newTalk();
    void touch(const TouchButton &button);
    void bringDaemonBack();
    void write(const Conversation::Message &message);
    QTextCursor newLine(int textIndent);
    QTextCharFormat formatOf(const QString &role) const;

    Conversation conversation;
    QTextEdit *const transcript;
    QLabel *const outcome;
    QBoxLayout *const halves;
    int steps = 0;
    bool followsEnd = true;
};

#endif
