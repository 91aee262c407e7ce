// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_FACE_H
#define CONNUI_CLIENT_FACE_H

#include <QObject>

#include "core/question.h"

/** Puts one question at a time before the user. All that it decides is how that looks. */
class Face : public QObject
{
    Q_OBJECT

public:
    /** Shows \a question. Nothing else is shown: what was before is answered or withdrawn. */
    virtual void show(const Question &question) = 0;

    /** Takes away what is shown, unanswered. */
    virtual void withdraw() = 0;

    /** Shows how many more questions wait behind the visible one. */
    virtual void setWaiting(qsizetype waiting) = 0;

    /** Shows how much of the visible file has been received, in bytes. */
    virtual void setProgress(quint64 received, quint64 size) = 0;

    /** Shows that something has touched the phone. */
    virtual void indicateTouch() = 0;

    /** Returns whether the user looks at what this face shows, or has shown. */
    virtual bool isInFront() const { return true; }

    /** Is called once, when there is time to make ready for the first question. */
    virtual void prepare() {}

Q_SIGNALS:
    /** The user has answered what is shown, which has gone away. */
    void answered(const Answer &answer);
};

#endif
