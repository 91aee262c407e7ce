// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NDEFFORMAT_H
#define CONNUI_NDEFFORMAT_H

#include <iterator>
#include <span>

#include <QStringView>

// The NFC Forum's NFC Data Exchange Format 1.0: the flags of a record's first byte. The lowest three bits are
// the type name format.
inline constexpr uchar messageBeginFlag = 0x80;
inline constexpr uchar messageEndFlag = 0x40;
inline constexpr uchar chunkFlag = 0x20;
inline constexpr uchar shortRecordFlag = 0x10;
inline constexpr uchar idLengthFlag = 0x08;
inline constexpr uchar typeNameFormatBits = 0x07;

struct UriPrefix
{
    QStringView text;
    char code;
};

// The NFC Forum's URI Record Type Definition 1.0: what an identifier code stands for. The longer of two
// prefixes that begin alike stands first.
inline constexpr UriPrefix uriPrefixes[] = {
    {u"http://www.", 0x01},
    {u"https://www.", 0x02},
    {u"http://", 0x03},
    {u"https://", 0x04},
    {u"tel:", 0x05},
    {u"mailto:", 0x06},
    {u"ftp://anonymous:anonymous@", 0x07},
    {u"ftp://ftp.", 0x08},
    {u"ftps://", 0x09},
    {u"sftp://", 0x0A},
    {u"smb://", 0x0B},
    {u"nfs://", 0x0C},
    {u"ftp://", 0x0D},
    {u"file://", 0x1D},
    {u"dav://", 0x0E},
    {u"news:", 0x0F},
    {u"telnet://", 0x10},
    {u"imap:", 0x11},
    {u"rtsp://", 0x12},
    {u"urn:epc:id:", 0x1E},
    {u"urn:epc:tag:", 0x1F},
    {u"urn:epc:pat:", 0x20},
    {u"urn:epc:raw:", 0x21},
    {u"urn:epc:", 0x22},
    {u"urn:nfc:", 0x23},
    {u"urn:", 0x13},
    {u"pop:", 0x14},
    {u"sip:", 0x15},
    {u"sips:", 0x16},
    {u"tftp:", 0x17},
    {u"btspp://", 0x18},
    {u"btl2cap://", 0x19},
    {u"btgoep://", 0x1A},
    {u"tcpobex://", 0x1B},
    {u"irdaobex://", 0x1C},
};
static_assert(std::size(uriPrefixes) == 35);

// Those that NDEFGenerator::data() uses: up to "file://".
inline constexpr std::span<const UriPrefix> commonUriPrefixes(uriPrefixes, 14);

#endif
