// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_REMOTECONTROL_H
#define CONNUI_CLIENT_REMOTECONTROL_H

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <MDialog>

class Terminal;
class MButton;

/**
 * Lets another program see what is on the screen, and touch it, on lines of text.
 *
 * Whenever the screen changes, a line "screen: " reports the texts and, in brackets, the buttons of what is
 * in front; "screen: nothing" that nothing is shown. A line "banner: turned by ANGLE" reports that a touch is
 * indicated, "banner: gone" that it is not. It executes the lines "press TEXT", "select TEXT" (a row of a
 * list), "escape", "close" (the window), "turn ANGLE" (0, 90, 180 or 270) and "picture FILE" (writes a PNG),
 * and answers each line: "done: LINE", "failed: LINE" when there was nothing to do it to, "not understood:
 * LINE" otherwise.
 */
class RemoteControl : public QObject
{
    Q_OBJECT

public:
    explicit RemoteControl(Terminal *terminal, QObject *parent = nullptr);

private:
    void tellChanges();
    void tellChange(const QString &what, const QString &now, QString &before);
    void execute(const QString &line);

    Terminal *const terminal;
    QTimer timer;
    QString seen;
    QString banner;
};

#endif
