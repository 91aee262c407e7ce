// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_VIEWER_NDEFHANDLER_H
#define CONNUI_VIEWER_NDEFHANDLER_H

#include <QByteArray>
#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>

class TagViewer;

/** Takes what was on a tag. */
class NdefHandler : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tavix.nfc.NDEFHandler")

public:
    /** Hands the data on to \a viewer. Exported with \a object, its parent. */
    NdefHandler(TagViewer *viewer, QObject *object);

public Q_SLOTS:
    void NDEFData(const QDBusObjectPath &target, const QByteArray &data);

private:
    TagViewer *const viewer;
};

#endif
