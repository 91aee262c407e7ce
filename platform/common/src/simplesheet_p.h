// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIMPLESHEET_P_H
#define CONNUI_SIMPLESHEET_P_H

class MButton;
class MLabel;
class MScrollView;

namespace ConnUi {

class SimpleSheet;

class SimpleSheetPrivate
{
public:
    explicit SimpleSheetPrivate(SimpleSheet *sheet);

    MLabel *title;
    MButton *rejectButton;
    MScrollView *content;
    bool contentMade = false;
};

} // namespace ConnUi

#endif
