// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "urindefrecord.h"

#include <iterator>

namespace {

// NFC Forum URI Record Type Definition 1.0, table 3: the identifier code is the index.
constexpr const char *prefixes[] = {
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

} // namespace

URINDEFRecord::URINDEFRecord(const QByteArray &payload) : payload(payload) {}

QByteArray URINDEFRecord::getURI() const
{
    if (payload.isEmpty())
        return QByteArray();
    const auto code = static_cast<unsigned char>(payload.front());
    const QByteArray rest = payload.sliced(1);
    return code < std::size(prefixes) ? prefixes[code] + rest : rest;
}
