// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_FAKEFACE_H
#define CONNUI_FAKEFACE_H

#include <optional>
#include <utility>

#include <QStringList>

#include "core/face.h"

/** A face that keeps what it should show, and a user who answers when the test says so. */
class FakeFace : public Face
{
public:
    void show(const Question &question) override
    {
        if (shown)
            qFatal("'%s' covers '%s'", qPrintable(question.title), qPrintable(shown->title));
        shown = question;
        history.append(question.title);
    }

    void withdraw() override
    {
        if (!std::exchange(shown, std::nullopt))
            qFatal("There is nothing to withdraw");
    }

    void setWaiting(qsizetype now) override { waiting = now; }
    void setProgress(quint64 now, quint64) override { received = now; }
    void indicateTouch() override { ++touches; }
    bool isInFront() const override { return inFront; }

    void answer(Answer::Choice choice, const QString &application = {})
    {
        if (!std::exchange(shown, std::nullopt))
            qFatal("There is nothing to answer");
        Q_EMIT answered({choice, application});
    }

    QString title() const { return shown ? shown->title : QString(); }

    std::optional<Question> shown;
    QStringList history; // the titles of all that was shown
    qsizetype waiting = 0;
    quint64 received = 0;
    int touches = 0;
    bool inFront = true;
};

#endif
