// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "handoversteps.h"

#include "daemon/handover.h"
#include "peers.h"

HandoverSteps::HandoverSteps(int stepTime, Handover *handover) : QObject(handover), handover(handover)
{
    connect(&timer, &QTimer::timeout, this, &HandoverSteps::takeStep);
    connect(handover, &Handover::completed, &timer, &QTimer::stop);
    connect(handover, &Handover::failed, &timer, &QTimer::stop);
    timer.start(stepTime);
}

void HandoverSteps::takeStep()
{
    static constexpr void (*steps[])(Handover *) = {
        [](Handover *handover) { handover->begin(); },
        [](Handover *handover) { handover->selectCarrier(); },
        [](Handover *handover) { handover->complete(Peers::bluetooth()); },
    };
    steps[nextStep++](handover);
}
