// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_ABBREVIATIONS_H
#define CONNUI_ABBREVIATIONS_H

#include <QByteArray>
#include <QMap>

/** The NFC Forum's table of URI prefixes, written down anew: code and beginning. */
inline const QMap<int, QByteArray> &abbreviations()
{
    static const QMap<int, QByteArray> table = {
        {0x01, "http://www."},
        {0x02, "https://www."},
        {0x03, "http://"},
        {0x04, "https://"},
        {0x05, "tel:"},
        {0x06, "mailto:"},
        {0x07, "ftp://anonymous:anonymous@"},
        {0x08, "ftp://ftp."},
        {0x09, "ftps://"},
        {0x0A, "sftp://"},
        {0x0B, "smb://"},
        {0x0C, "nfs://"},
        {0x0D, "ftp://"},
        {0x0E, "dav://"},
        {0x0F, "news:"},
        {0x10, "telnet://"},
        {0x11, "imap:"},
        {0x12, "rtsp://"},
        {0x13, "urn:"},
        {0x14, "pop:"},
        {0x15, "sip:"},
        {0x16, "sips:"},
        {0x17, "tftp:"},
        {0x18, "btspp://"},
        {0x19, "btl2cap://"},
        {0x1A, "btgoep://"},
        {0x1B, "tcpobex://"},
        {0x1C, "irdaobex://"},
        {0x1D, "file://"},
        {0x1E, "urn:epc:id:"},
        {0x1F, "urn:epc:tag:"},
        {0x20, "urn:epc:pat:"},
        {0x21, "urn:epc:raw:"},
        {0x22, "urn:epc:"},
        {0x23, "urn:nfc:"},
    };
    return table;
}

#endif
