// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_PHONEWINDOW_H
#define CONNUI_CLIENT_PHONEWINDOW_H

#include <MWindow>

/** A phone on a desktop: its case with a status bar, and within, the screen, which says what to do. */
class PhoneWindow : public MWindow
{
    Q_OBJECT

public:
    PhoneWindow();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void addHint();

    QWidget *const phoneCase;
};

#endif
