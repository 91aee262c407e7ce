// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_STOREDSWITCH_H
#define CONNUI_CLIENT_STOREDSWITCH_H

#include <functional>

#include <QFileSystemWatcher>
#include <QObject>

#include <MButton>

/** Holds a switch to what is stored, whoever has stored it. */
class StoredSwitch : public QObject
{
    Q_OBJECT

public:
    /**
     * Follows with \a button what \a isStored returns. A press must store it in a slot that was connected
     * earlier; the button must outlive this.
     */
    StoredSwitch(MButton *button, const std::function<bool()> &isStored, QObject *parent);

private:
    void watch();
    void follow();
    void check(bool wanted);

    MButton *const button;
    const std::function<bool()> isStored;
    QFileSystemWatcher watcher;
};

#endif
