// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "settings/storedswitch.h"

#include <QFileInfo>
#include <QSignalBlocker>
#include <QStandardPaths>

#include <MMessageBox>

namespace {

// The folder of the settings; while there is none, the nearest one above it.
QString watchableFolder()
{
    QString folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/connui");
    while (!QFileInfo::exists(folder))
        folder = QFileInfo(folder).path();
    return folder;
}

} // namespace

StoredSwitch::StoredSwitch(MButton *button, const std::function<bool()> &isStored, QObject *parent)
    : QObject(parent)
    , button(button)
    , isStored(isStored)
{
    connect(button, &MButton::toggled, this, &StoredSwitch::check);
    connect(&watcher, &QFileSystemWatcher::directoryChanged, this, &StoredSwitch::follow);
    follow();
}

// Asking time and again would keep a phone awake.
void StoredSwitch::watch()
{
    // A folder that comes between the look and the watch is found by the next look.
    QString folder = watchableFolder();
    while (!watcher.directories().contains(folder)) {
        if (!watcher.directories().isEmpty())
            watcher.removePaths(watcher.directories());
        if (!watcher.addPath(folder))
            return;
        folder = watchableFolder();
    }
}

void StoredSwitch::follow()
{
    watch();
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
