// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_TRANSFERS_H
#define CONNUI_CLIENT_TRANSFERS_H

#include <map>
#include <memory>
#include <optional>

#include <QObject>

#include "core/question.h"

class DesktopNotification;
class QuestionQueue;
class TransfersProxy;

/**
 * Shows the files that arrive, and lets the user cancel and open them.
 *
 * A file that the user has put away lives on in a notification of the desktop.
 */
class Transfers : public QObject
{
    Q_OBJECT

public:
    /** Listens to the transfers of the daemon's adapter at \a path. */
    Transfers(const QString &path, QuestionQueue *queue);
    ~Transfers() override;

    /** Returns how many files arrive that the user has put away. */
    uint hidden() const;

    /** Shows them again. */
    void showHidden();

Q_SIGNALS:
    void hiddenChanged(uint hidden);

private:
    struct Transfer
    {
        Question::File file;
        std::optional<int> shown;                          // its number in the queue
        std::unique_ptr<DesktopNotification> notification; // while it is not shown
        bool isCanceled = false;                           // by the user
    };

    void show(uint number);
    void showAgain(uint number);
    void start(uint number, const QString &sender, const QString &name, qulonglong size);
    void progress(uint number, qulonglong received);
    void end(uint number, const QString &outcome, const QString &path);
    void answer(uint number, const Answer &answer);
    void notify(uint number);
    void tellEnd(Transfer transfer, bool isCompleted, const QString &path);

    TransfersProxy *const proxy;
    QuestionQueue *const queue;
    std::map<uint, Transfer> transfers;
};

#endif
