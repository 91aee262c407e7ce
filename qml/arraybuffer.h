// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_ARRAYBUFFER_H
#define CONNUI_QML_ARRAYBUFFER_H

#include <QByteArray>

/** Returns \a bytes so that they become an ArrayBuffer: null ones would become one that throws. */
inline QByteArray arrayBuffer(const QByteArray &bytes)
{
    return bytes.isNull() ? QByteArray("") : bytes;
}

#endif
