// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "urindefrecord.h"

#include <iterator>

// NFC Forum URI Record Type Definition 1.0, table 3: the identifier code is the index.
static constexpr const char *Prefixes[] = {
    "",
    "http://www.",
    "https://www.",
    "http://",
    "https://",
    "tel:",
    "mailto:",
    "ftp://anonymous:anonymous@",
    "ftp://ftp.",
    "ftps://",
    "sftp://",
    "smb://",
    "nfs://",
    "ftp://",
    "dav://",
    "news:",
    "telnet://",
    "imap:",
    "rtsp://",
    "urn:",
    "pop:",
    "sip:",
    "sips:",
    "tftp:",
    "btspp://",
    "btl2cap://",
    "btgoep://",
    "tcpobex://",
    "irdaobex://",
    "file://",
    "urn:epc:id:",
    "urn:epc:tag:",
    "urn:epc:pat:",
    "urn:epc:raw:",
    "urn:epc:",
    "urn:nfc:",
};

URINDEFRecord::URINDEFRecord(const QByteArray &payload) : m_payload(payload) {}

QByteArray URINDEFRecord::getURI() const
{
    if (m_payload.isEmpty())
        return QByteArray();
    const auto code = static_cast<unsigned char>(m_payload.front());
    const QByteArray rest = m_payload.sliced(1);
    return code < std::size(Prefixes) ? Prefixes[code] + rest : rest;
}
