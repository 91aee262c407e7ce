// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SAMPLE_APPLICATION_H
#define CONNUI_SAMPLE_APPLICATION_H

#include <QDBusAbstractAdaptor>

/** Comes to the front when it is asked to. Exported at "/org/orvik/m", as every application is. */
class Application : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tavix.MApplicationIf")

public:
    explicit Application(QObject *parent);

public Q_SLOTS:
    /** Shows the application: here a line, in yours a window. */
    void launch();
};

#endif
