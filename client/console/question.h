// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_QUESTION_H
#define CONNUI_CLIENT_QUESTION_H

#include <functional>

#include <QString>
#include <QStringList>

/** Something that the person has to decide. */
struct Question
{
    /** What it is about, in one line. */
    QString subject;
    /** What there is to choose from, one a line; none for a plain yes or no. */
    QStringList choices;
    /** Yes, with the number of the choice, counted from 0. */
    std::function<void(int)> grant;
    /** No. */
    std::function<void()> refuse;
};

#endif
