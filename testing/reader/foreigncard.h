// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTING_FOREIGNCARD_H
#define CONNUI_TESTING_FOREIGNCARD_H

#include "virtualtag.h"

/** A card that is not a tag: any with an answer to reset of its own. */
class ForeignCard : public VirtualTag
{
public:
    explicit ForeignCard(const QByteArray &atr) : answerToReset(atr) {}

    QByteArray atr() const override { return answerToReset; }
    QByteArray answer(const QByteArray &) override { return success; }

private:
    const QByteArray answerToReset;
};

#endif
