// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DIALOGQUEUE_H
#define CONNUI_DIALOGQUEUE_H

#include <functional>

#include <QList>
#include <QObject>
#include <QPointer>

#include <MDialog>

/** A dialog that is to be shown, and what its end means. */
struct DialogRequest
{
    /** Makes the dialog when its turn has come. */
    std::function<MDialog *()> make;
    /** Is told the result once; never when the dialog is dropped. The dialog lives until the event loop
     * turns. */
    std::function<void(MDialog *dialog, int result)> decided;
};

/** Shows one dialog after the other, in the order in which they were asked for. */
class DialogQueue : public QObject
{
    Q_OBJECT

public:
    explicit DialogQueue(QObject *parent = nullptr);
    ~DialogQueue() override;

    /** Shows a dialog, after those that were asked for before. */
    void ask(const DialogRequest &request);

    /** Takes every dialog away, undecided. */
    void dropAll();

    /** Returns the dialog that is shown, or null. */
    MDialog *dialog() const;

    /** Returns how many dialogs wait behind the one that is shown. */
    qsizetype waiting() const;

Q_SIGNALS:
    /** Another dialog is shown, or another number of them waits. */
    void waitingChanged(qsizetype waiting);

private:
    void showNext();
    void finish(MDialog *dialog, int result);

    QList<DialogRequest> requests; // the first is the one that is shown
    QPointer<MDialog> shown;
};

#endif
