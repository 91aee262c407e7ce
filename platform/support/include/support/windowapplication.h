// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SUPPORT_WINDOWAPPLICATION_H
#define CONNUI_SUPPORT_WINDOWAPPLICATION_H

#include <memory>

#include <QApplication>

#include "support/displaycheck.h"

namespace Support {

/**
 * Deletes an application object, except on Wayland, where it stays until the process is gone: in its
 * destructor, Qt 6.8 ends the thread that reads frames, sometimes after that has announced that it would
 * read. The other thread, which reads events, then waits for it forever, and the destructor for the other
 * thread.
 */
struct ApplicationEnd
{
    void operator()(QApplication *application) const
    {
        if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
            delete application;
    }
};

using ApplicationPointer = std::unique_ptr<QApplication, ApplicationEnd>;

/** Makes the application object of a program with windows. Without a display it ends the program, see
 * DisplayCheck. */
inline ApplicationPointer newApplication(int &argc, char *argv[])
{
    const DisplayCheck check;
    return ApplicationPointer(new QApplication(argc, argv));
}

} // namespace Support

#endif
