// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MBUTTONMODEL_P_H
#define MBUTTONMODEL_P_H

#include <QString>

#include <MTypes>

class MButtonModelPrivate
{
public:
    QString text;
    M::ButtonRole role;
    M::StandardButton button;
};

#endif
