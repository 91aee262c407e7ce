// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "settings/storedswitch.h"

#include <QSignalBlocker>

#include <MMessageBox>

namespace {

constexpr int interval = 1000; // milliseconds: the store does not announce what others store

} // namespace

StoredSwitch::StoredSwitch(MButton *button, const std::function<bool()> &isStored, QObject *parent)
    : QObject(parent)
    , button(button)
    , isStored(isStored)
{
    connect(button, &MButton::toggled, this, &StoredSwitch::check);
    connect(&timer, &QTimer::timeout, this, &StoredSwitch::follow);
    follow();
    timer.start(interval);
}

void StoredSwitch::follow()
{
    // Not stored once more: somebody else may be about to change it.
    const QSignalBlocker blocker(button);
    button->setChecked(isStored());
}

void StoredSwitch::check(bool wanted)
{
    if (isStored() == wanted)
        return;
    follow();
    auto *box =
        new MMessageBox(qtTrId("qtn_nfc_store_fail_tit"), qtTrId("qtn_nfc_store_fail_text"), M::OkButton);
    box->appear(MSceneWindow::DestroyWhenDone);
}
