// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MMESSAGEBOX_P_H
#define MMESSAGEBOX_P_H

#include <QPointer>
#include <QString>

#include <MLabel>

class MMessageBox;

class MMessageBoxPrivate
{
public:
    /** Shows the text, unless the box has contents of somebody else. */
    void show(MMessageBox *box);

    QString text;
    QPointer<MLabel> label;
};

#endif
