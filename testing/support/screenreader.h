// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TEST_SCREENREADER_H
#define CONNUI_TEST_SCREENREADER_H

#include <QJsonObject>
#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QStringList>

// A thing in the accessibility tree, with all below it.
struct SpokenNode
{
    QString role;
    QString name;
    QString description;
    QStringList states;
    QStringList actions;
    QList<double> value; // Least, most, present
    QRect rect;
    int index = -1;
    QList<SpokenNode> children;

    bool is(const char *state) const { return states.contains(QLatin1String(state)); }

    // The first below this one, or this one, with that role and, if it is not empty, that name.
    const SpokenNode *find(const char *role, const QString &name = QString()) const;
    // The names of all below this one with that role, in the order of reading.
    QStringList names(const char *role) const;
};

struct SpokenEvent
{
    QString type; // As AT-SPI calls it, "object:announcement"
    QString role;
    QString name;
    QString description;
    QString text;
    int detail = 0;
};

// Assistive technology: it reads and uses this program's windows from a process of its own, over AT-SPI.
// While it is asked, this program's events are handled.
class ScreenReader
{
public:
    ScreenReader();
    ~ScreenReader();

    // The windows. Everything is read anew.
    SpokenNode tree();
    // Whether there is something of that name, which then does what a press does.
    bool press(const QString &name);
    // Whether there is something of that name, which then is to have the keyboard focus.
    bool focus(const QString &name);
    // The name of what stands at that point of the screen.
    QString at(const QPoint &point);

    // Waits until this program, which has a window, knows who listens, and forgets all events so far: Qt
    // joins the registry in its own time, and learns there what to announce.
    void listen();
    // Whether such an event has come, now or soon; a text or name is only looked at when it is given.
    bool hears(const QString &type, const QString &text);
    // All events since the last call.
    QList<SpokenEvent> events();

private:
    bool waitForLine();
    QJsonValue ask(const QJsonObject &request);

    QProcess process;
    QList<SpokenEvent> heard;
};

/**
 * Fails the running test on each warning but those of Qt 6.8 about a question of AT-SPI for a thing that has
 * gone. The screen reader cannot know yet.
 */
void failOnWarningsExceptOfThingsThatAreGone();

#endif
