// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MPROGRESSINDICATOR_P_H
#define MPROGRESSINDICATOR_P_H

#include <QBasicTimer>
#include <QElapsedTimer>

#include <MProgressIndicator>

class MProgressIndicatorPrivate
{
public:
    explicit MProgressIndicatorPrivate(MProgressIndicator *indicator, MProgressIndicator::ViewType type)
        : q(indicator)
        , type(type)
    {}

    void setRange(int newMinimum, int newMaximum);
    /** Is called for each picture of a spinner: another one will be wanted. */
    void keepTurning();
    /** Asks for another picture, if somebody has seen the one before. */
    void turn();
    void paintBar(QPainter *painter, const MStyle &style);
    void paintSpinner(QPainter *painter, const MStyle &style);

    MProgressIndicator *const q;
    MProgressIndicator::ViewType type;
    int minimum = 0;
    int maximum = 100;
    int value = 0;
    QBasicTimer frames;
    QElapsedTimer turning;
    bool seen = false;
};

#endif
