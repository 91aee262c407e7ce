// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_HANDOVERSTEPS_H
#define CONNUI_SIM_HANDOVERSTEPS_H

#include <QObject>
#include <QTimer>

class Handover;

/** Takes the steps of a handover to the simulated phone, one after another. */
class HandoverSteps : public QObject
{
    Q_OBJECT

public:
    /** The steps of \a handover, its parent, \a stepTime milliseconds apart. */
    HandoverSteps(int stepTime, Handover *handover);

private:
    void takeStep();

    Handover *const handover;
    QTimer timer;
    int nextStep = 0;
};

#endif
