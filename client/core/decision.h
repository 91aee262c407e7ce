// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_DECISION_H
#define CONNUI_CLIENT_DECISION_H

#include <QStringList>

#include "core/question.h"
#include "core/tagcontent.h"

/** The circumstances in which a tag's content is delivered. */
struct Circumstances
{
    QStringList handlers; ///< The ids of the applications that take it, in the daemon's order
    int inFront = -1;     ///< Which of them the user is looking at; -1 for none
    QString desktop; ///< The application that the desktop opens the first record's link with; empty for none
    bool wantsToBeAsked = true; ///< The user's setting
    bool isLocked = false;      ///< The session was locked when it came
};

/** The decision about a tag's content. */
struct Decision
{
    enum Outcome {
        Refuse,      ///< It is malformed, or nothing takes it: tell the user, and reject
        AcceptEmpty, ///< There is nothing on the tag: tell the user, and grant
        Forward,     ///< The first of the applications gets it, without a question
        Ask,         ///< The user decides
    };

    Outcome outcome = Refuse;
    /** The applications that can get it; the first is offered. One that is not a handler is the desktop's. */
    QStringList applications = {};
    Question::Kind question = Question::OtherContent;
    /** Whether the user is offered to call or to send. */
    bool hasDirectAction = false;
};

/**
 * Decides what is to become of \a content under \a circumstances.
 *
 * This is the whole of the rule, see the table in docs/client-guide.md; it looks at nothing but its
 * arguments.
 */
Decision decide(const TagContent &content, const Circumstances &circumstances);

#endif
