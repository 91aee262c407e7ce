// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_PHONECASE_H
#define CONNUI_CLIENT_PHONECASE_H

#include <QMargins>
#include <QWidget>

/** Paints the case of a phone, with the time and a battery above the screen, around what lies below it. */
class PhoneCase : public QWidget
{
    Q_OBJECT

public:
    explicit PhoneCase(QWidget *parent);

    /** Returns the room that the screen leaves on each side, in device-independent pixels. */
    static QMargins margins();

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
};

#endif
