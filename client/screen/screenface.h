// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_SCREENFACE_H
#define CONNUI_CLIENT_SCREENFACE_H

#include <QPointer>

#include <MSceneWindow>

#include "core/face.h"
#include "screen/touchindication.h"
#include "screen/waitingbadge.h"

/** Asks in dialogs on the screen. */
class ScreenFace : public Face
{
    Q_OBJECT

public:
    /** With \a phone, that window is the screen of a phone. It must outlive the face. */
    explicit ScreenFace(const MWindow *phone = nullptr);
    ~ScreenFace() override;

    void show(const Question &question) override;
    void withdraw() override;
    void setWaiting(qsizetype waiting) override;
    void setProgress(quint64 received, quint64 size) override;
    void indicateTouch() override;
    bool isInFront() const override;
    void prepare() override;

private:
    void showDialog(const Question &question);
    void showSheet(const Question::File &file);
    void end(const Answer &answer);

    QPointer<MSceneWindow> shown; // a dialog or a sheet
    WaitingBadge badge;
    TouchIndication touch;
};

#endif
