// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_TOUCHINDICATION_H
#define CONNUI_CLIENT_TOUCHINDICATION_H

#include <optional>

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <IndicationItem>
#include <NfcOverlay>

#include "core/desktopnotification.h"

class MWindow;

/**
 * Shows that something has touched the phone, and leaves in sight what the user does.
 *
 * That is a banner above all windows. A Wayland compositor without overlays may show every window alone,
 * filling the screen: there the banner is drawn within the window of the question that the touch brings, and
 * a notification of the desktop stands in for it when there is none.
 */
class TouchIndication : public QObject
{
    Q_OBJECT

public:
    /** With \a phone, that window is the phone's screen, whose edges the banner slides along. */
    explicit TouchIndication(const MWindow *phone);
    ~TouchIndication() override;

    /** Makes ready for the first touch. */
    void prepare();

    /** Indicates a touch. */
    void show();

    /** Is called when a question has appeared: the banner of its touch is then drawn within it, or above it.
     */
    void questionAppeared();

private:
    bool canBeAbove() const;
    MWindow *windowInFront() const;
    void showAbove();
    void slideInto(MWindow *window);
    void notify();

    const MWindow *const phone;
    // Made when there is a daemon that may want it, and kept.
    std::optional<ConnUi::NfcOverlay> overlay;
    QPointer<ConnUi::IndicationItem> banner;
    QTimer awaitingQuestion;
    DesktopNotification notification;
};

#endif
