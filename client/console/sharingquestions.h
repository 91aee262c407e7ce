// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_SHARINGQUESTIONS_H
#define CONNUI_CLIENT_SHARINGQUESTIONS_H

#include <QObject>
#include <QStringList>
#include <QVariant>

namespace ConnUi {
class NfcAgent;
}
class QuestionQueue;

/** Asks whether something may be sent to the phone that touches this one. */
class SharingQuestions : public QObject
{
    Q_OBJECT

public:
    SharingQuestions(ConnUi::NfcAgent *agent, QuestionQueue *queue);

private:
    void askForPermission(const QString &carrier, const QVariant &info, const QStringList &resources);
    void askForSelection(const QString &carrier, const QVariant &info);
    void ask(const QString &subject, const QVariant &info);

    ConnUi::NfcAgent *const agent;
    QuestionQueue *const queue;
};

#endif
