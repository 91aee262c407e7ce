// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/screenface.h"

#include <utility>

#include <QGuiApplication>

#include <MDialog>
#include <NfcFileReceiveSheet>

#include "core/inputdelay.h"
#include "screen/dialogs.h"
#include "screen/prewarm.h"
#include "screen/touchfeedback.h"

using ConnUi::NfcFileReceiveSheet;

ScreenFace::ScreenFace(const MWindow *phone) : touch(phone) {}

ScreenFace::~ScreenFace()
{
    withdraw();
}

void ScreenFace::show(const Question &question)
{
    if (question.kind == Question::Receiving)
        showSheet(question.file);
    else
        showDialog(question);
    shown->appear(MSceneWindow::DestroyWhenDone);
    touch.questionAppeared();
}

void ScreenFace::showDialog(const Question &question)
{
    MDialog *dialog = newDialog(question);
    dialog->setInputDelay(inputDelay());
    connect(dialog, &MDialog::finished, this,
            [this, question, dialog](int result) { end(answerOf(question, dialog, result)); });
    shown = dialog;
}

void ScreenFace::showSheet(const Question::File &file)
{
    auto *sheet = new NfcFileReceiveSheet;
    sheet->setDraggable(true);
    sheet->setRemoteDeviceName(file.sender);
    sheet->setFileName(file.name);
    sheet->setThumbnailImage(QStringLiteral("icon-m-content-nfc-inverse"));
    sheet->setProgress(file.name, file.received, file.size);
    connect(
        sheet, &NfcFileReceiveSheet::transferCanceled, this,
        [this, sheet] {
            end({});
            sheet->disappear();
        });
    connect(sheet, &NfcFileReceiveSheet::disappeared, this, [this, sheet] {
        if (shown == sheet)
            end({Answer::Yes, {}});
    });
    shown = sheet;
}

void ScreenFace::end(const Answer &answer)
{
    shown = nullptr;
    Q_EMIT answered(answer);
}

void ScreenFace::withdraw()
{
    MSceneWindow *window = std::exchange(shown, nullptr);
    if (!window)
        return;
    // Nobody has decided anything.
    window->disconnect(this);
    window->disappear();
}

void ScreenFace::setWaiting(qsizetype waiting)
{
    badge.show(shown, waiting);
}

void ScreenFace::setProgress(quint64 received, quint64 size)
{
    if (auto *sheet = qobject_cast<NfcFileReceiveSheet *>(shown))
        sheet->setProgress({}, received, size);
}

void ScreenFace::indicateTouch()
{
    touch.show();
    giveTouchFeedback();
}

bool ScreenFace::isInFront() const
{
    return QGuiApplication::applicationState() == Qt::ApplicationActive;
}

void ScreenFace::prepare()
{
    touch.prepare();
    prewarmQuestion();
}
