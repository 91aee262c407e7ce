// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_FAKEHANDLERITEM_H
#define CONNUI_TESTS_FAKEHANDLERITEM_H

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "applicationsfolder.h"
#include "fakehandler.h"

/** An application that takes tags, for a test of QML. */
class FakeHandlerItem : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(FakeHandler)

public:
    /** Writes the desktop file of an application with these \a lines. */
    Q_INVOKABLE void install(const QString &application, const QString &lines);
    /** Makes the application the default for a MIME type. */
    Q_INVOKABLE void makeDefault(const QString &application, const QString &type);
    Q_INVOKABLE void start();
    Q_INVOKABLE void kill();
    Q_INVOKABLE void hold(const QString &member);
    Q_INVOKABLE void release(const QString &member);
    /** Returns how often \a member was called. */
    Q_INVOKABLE int calls(const QString &member);

private:
    const ApplicationsFolder applications;
    FakeHandler handler;
};

#endif
