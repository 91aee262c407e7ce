// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/prewarm.h"

#include <malloc.h>

#include <QPixmap>

#include <MWindow>
#include <NfcTagReadPermissionDialog>

namespace {

void paintUnseenQuestion()
{
    // Letters are drawn once for each font; those of the title and of the buttons come by themselves.
    const QString letters =
        QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ abcdefghijklmnopqrstuvwxyz 0123456789 .,:;!?'/-@");
    // Never shown, so nothing takes it for the user's window.
    MWindow window;
    ConnUi::NfcTagReadPermissionDialog dialog(letters);
    dialog.appear(&window);
    window.grab();
}

} // namespace

void prewarmQuestion()
{
    paintUnseenQuestion();
    // Reading the fonts takes twice as much memory as they keep, and the process now waits for long.
    malloc_trim(0);
}
