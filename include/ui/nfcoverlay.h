// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCOVERLAY_H
#define CONNUI_NFCOVERLAY_H

#include <connui_nfc_export.h>

#include <MWindow>

namespace ConnUi {

class NfcOverlayPrivate;

/**
 * Indicates a touch for two seconds by a banner that slides in from the edge that is on top for the user.
 *
 * It is a separate translucent window that never takes the focus, masked to the banner's strip so that the
 * rest of the screen stays usable. On X11 it is as large as the screen. Follows the orientation of its scene
 * manager, whose angles are those of a screen that is wide at angle 0. Where the compositor turns the screen,
 * the window becomes wide and the angle stays 0, so that the banner is whole. Does nothing until
 * showIndication().
 *
 * @image html nfcoverlay.png width=240px
 */
class CONNUI_NFC_EXPORT NfcOverlay : public MWindow
{
    Q_OBJECT

public:
    /** Makes the window, hidden. */
    NfcOverlay();

    ~NfcOverlay() override;

public Q_SLOTS:
    /** Slides the banner in, from the start when it is there already, and lets it stay for 2000 ms. */
    void showIndication();

    /** Slides the banner out now. Does nothing while it is hidden or on its way out. */
    void hideIndication();

protected:
    /** Makes the banner when the window comes onto the display. */
    void enterDisplayEvent() override;

private:
    NfcOverlayPrivate *d;
};

} // namespace ConnUi

#endif
