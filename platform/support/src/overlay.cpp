// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "support/overlay.h"

#include <LayerShellQt/Window>
#include <memory>
#include <wayland-client.h>

#include <QGuiApplication>
#include <QWidget>

using LayerShellQt::Window;

namespace Support {

namespace {

struct Ends
{
    void operator()(wl_event_queue *queue) const { wl_event_queue_destroy(queue); }
    void operator()(wl_registry *registry) const { wl_registry_destroy(registry); }
    void operator()(void *wrapper) const { wl_proxy_wrapper_destroy(wrapper); }
};

template <typename T>
using Owned = std::unique_ptr<T, Ends>;

void noteInterface(void *found, wl_registry *, uint32_t, const char *interface, uint32_t)
{
    if (qstrcmp(interface, "zwlr_layer_shell_v1") == 0)
        *static_cast<bool *>(found) = true;
}

void forgetInterface(void *, wl_registry *, uint32_t) {}

// On a queue of its own, so that the events of Qt stay where they are. LayerShellQt itself only warns when
// the compositor lacks the protocol, and the window would take a translucent background for nothing.
bool offersLayerShell(wl_display *display)
{
    const Owned<wl_event_queue> queue(wl_display_create_queue(display));
    const Owned<void> wrapper(wl_proxy_create_wrapper(display));
    wl_proxy_set_queue(static_cast<wl_proxy *>(wrapper.get()), queue.get());
    const Owned<wl_registry> registry(wl_display_get_registry(static_cast<wl_display *>(wrapper.get())));
    constexpr wl_registry_listener listener = {noteInterface, forgetInterface};
    bool found = false;
    wl_registry_add_listener(registry.get(), &listener, &found);
    wl_display_roundtrip_queue(display, queue.get());
    return found;
}

} // namespace

bool hasOverlays()
{
    static const bool found = [] {
        const auto *wayland = qGuiApp->nativeInterface<QNativeInterface::QWaylandApplication>();
        return wayland && offersLayerShell(wayland->display());
    }();
    return found;
}

void makeOverlay(QWidget *window, QLatin1String scope, OverlayKeys keys)
{
    if (!hasOverlays())
        return;
    // Only a native window has a surface.
    window->winId();
    Window *surface = Window::get(window->windowHandle());
    surface->setLayer(Window::LayerOverlay);
    surface->setAnchors({Window::AnchorTop, Window::AnchorBottom, Window::AnchorLeft, Window::AnchorRight});
    // Panels of the shell take no part of the screen away.
    surface->setExclusiveZone(-1);
    surface->setKeyboardInteractivity(keys == OverlayKeys::ToOverlay ? Window::KeyboardInteractivityExclusive
                                                                     : Window::KeyboardInteractivityNone);
    // The one that the user looks at.
    surface->setScreenConfiguration(Window::ScreenFromCompositor);
    surface->setScope(scope);
}

} // namespace Support
