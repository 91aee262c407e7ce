// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "application.h"

#include "tagviewer.h"

Application::Application(TagViewer *viewer, QObject *object) : QDBusAbstractAdaptor(object), viewer(viewer) {}

void Application::launch()
{
    viewer->comeToFront();
}
