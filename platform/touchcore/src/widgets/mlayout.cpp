// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mlayout.h"

#include <MLinearLayoutPolicy>

MLayout::MLayout(QGraphicsLayoutItem *parent) : QGraphicsLinearLayout(parent)
{
    setContentsMargins(0, 0, 0, 0);
}

MLayout::~MLayout() = default;
