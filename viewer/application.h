// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_VIEWER_APPLICATION_H
#define CONNUI_VIEWER_APPLICATION_H

#include <QDBusAbstractAdaptor>

class TagViewer;

/** Brings the viewer to the front when the client has handed it the data. */
class Application : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tavix.MApplicationIf")

public:
    /** The application of \a viewer. Exported with \a object, its parent. */
    Application(TagViewer *viewer, QObject *object);

public Q_SLOTS:
    void launch();

private:
    TagViewer *const viewer;
};

#endif
