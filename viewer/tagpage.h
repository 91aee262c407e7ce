// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_VIEWER_TAGPAGE_H
#define CONNUI_VIEWER_TAGPAGE_H

#include <QByteArray>

#include <MDialog>

/** Everything that is on a tag, on a page that scrolls. It shows, and a contact card can be saved: no more.
 */
class TagPage : public MDialog
{
    Q_OBJECT

public:
    TagPage();

    /** Shows the NDEF message \a message in the place of what was shown before. */
    void setMessage(const QByteArray &message);
};

#endif
