// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SAMPLE_NDEFHANDLER_H
#define CONNUI_SAMPLE_NDEFHANDLER_H

#include <QByteArray>
#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>

/** Takes what was on a tag. Exported at the path that the announcement file names. */
class NdefHandler : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tavix.nfc.NDEFHandler")

public:
    explicit NdefHandler(QObject *parent);

public Q_SLOTS:
    /** Takes the NDEF bytes \a data of \a target. The client waits for the answer: do long work later. */
    void NDEFData(const QDBusObjectPath &target, const QByteArray &data);
};

#endif
