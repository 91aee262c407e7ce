// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ndefhandler.h"

#include "tagviewer.h"

NdefHandler::NdefHandler(TagViewer *viewer, QObject *object) : QDBusAbstractAdaptor(object), viewer(viewer) {}

void NdefHandler::NDEFData(const QDBusObjectPath &, const QByteArray &data)
{
    viewer->show(data);
}
