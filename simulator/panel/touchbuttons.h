// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_TOUCHBUTTONS_H
#define CONNUI_SIM_TOUCHBUTTONS_H

#include <QList>
#include <QString>
#include <QVariantList>

/** A button of the panel: a call of "com.tavix.nfc.Simulator". */
struct TouchButton
{
    QString group;
    QString label;
    QString method;
    QVariantList arguments;

    /** All there are, in the order of the panel. */
    static QList<TouchButton> all();
};

#endif
