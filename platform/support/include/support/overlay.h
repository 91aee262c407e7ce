// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SUPPORT_OVERLAY_H
#define SUPPORT_OVERLAY_H

#include <QLatin1String>

class QWidget;

namespace Support {

/**
 * Returns whether the Wayland compositor lets windows stand above all others, full-screen ones included: it
 * offers zwlr_layer_shell_v1, and this build can use that. The first call waits for the compositor.
 */
bool hasOverlays();

/** Decides where the keyboard's input goes while an overlay is shown. */
enum class OverlayKeys {
    ToOthers,  ///< Where it went before
    ToOverlay, ///< To the overlay and to nothing else
};

/**
 * Lets \a window, which has not been shown yet, cover the whole screen above all other windows, those of the
 * shell included. Compositors' rules know it by the name \a scope. Does nothing without hasOverlays().
 */
void makeOverlay(QWidget *window, QLatin1String scope, OverlayKeys keys);

} // namespace Support

#endif
