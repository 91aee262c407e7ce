// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_VIEWER_TAGVIEWER_H
#define CONNUI_VIEWER_TAGVIEWER_H

#include <QByteArray>
#include <QObject>

#include <MWindow>

#include "tagpage.h"

/** The viewer's window. Closing its page closes it. */
class TagViewer : public QObject
{
    Q_OBJECT

public:
    explicit TagViewer(QObject *parent = nullptr);

    /** Shows the NDEF message \a message, soon: whoever hands it over is not held up. */
    void show(const QByteArray &message);

    /** Shows the window in front of others. */
    void comeToFront();

private:
    MWindow window;
    TagPage page;
};

#endif
