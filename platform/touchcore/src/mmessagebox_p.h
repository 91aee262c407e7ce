// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MMESSAGEBOX_P_H
#define MMESSAGEBOX_P_H

#include <QPointer>
#include <QString>

class MImageWidget;
class MLabel;
class MMessageBox;
class MWidget;

class MMessageBoxPrivate
{
public:
    /** Shows text and icon, unless the box has contents of somebody else. */
    void show(MMessageBox *box);

    QString text;
    QString iconId;
    QPointer<MWidget> contents;
};

#endif
