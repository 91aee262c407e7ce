// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_TOUCHPANEL_H
#define CONNUI_SIM_TOUCHPANEL_H

#include <QWidget>

#include "panel/conversation.h"
#include "panel/touchbuttons.h"

class QBoxLayout;
class QLabel;
class QPlainTextEdit;

/** The panel beside the phone: what can touch it on buttons, and what that makes the buses say. */
class TouchPanel : public QWidget
{
    Q_OBJECT

public:
    TouchPanel();

private:
    QBoxLayout *newButtons();
    void touch(const TouchButton &button);
    void bringDaemonBack();
    void writeStep(const QString &sentence);

    Conversation conversation;
    QPlainTextEdit *const transcript;
    QLabel *const outcome;
    int steps = 0;
};

#endif
