// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bluetoothdeviceinfoutils.h"

#include <algorithm>
#include <iterator>

namespace ConnUi {
namespace {

// A row holds for the classes of device that have its bits under its mask; the first such row counts.
// Bits 12 to 8 are the major class, bits 7 to 2 the minor (Bluetooth assigned numbers, section 2.8).
struct Row
{
    unsigned int mask;
    unsigned int bits;
    const char16_t *icon;
};

constexpr unsigned int major = 0x1f00;
constexpr unsigned int minor = 0x00fc;

constexpr Row icons[] = {
    {major, 0x0100, u"icon-m-bluetooth-computer"},
    {major, 0x0200, u"icon-m-bluetooth-phone"},
    {major, 0x0300, u"icon-m-bluetooth-network"},
    {major | minor, 0x0404, u"icon-m-bluetooth-headset"}, // wearable headset
    {major | minor, 0x0408, u"icon-m-bluetooth-headset"}, // hands-free
    {major | minor, 0x0410, u"icon-m-bluetooth-microphone"},
    {major | minor, 0x0418, u"icon-m-bluetooth-headset"}, // headphones
    {major | minor, 0x0424, u"icon-m-bluetooth-video"},   // set-top box
    {major | minor, 0x042c, u"icon-m-bluetooth-video"},   // recorder
    {major | minor, 0x0430, u"icon-m-bluetooth-camera"},  // video camera
    {major | minor, 0x0434, u"icon-m-bluetooth-camera"},  // camcorder
    {major | minor, 0x0438, u"icon-m-bluetooth-video"},   // monitor
    {major | minor, 0x043c, u"icon-m-bluetooth-video"},   // display with loudspeaker
    {major | minor, 0x0440, u"icon-m-bluetooth-video"},   // conferencing
    {major | minor, 0x0448, u"icon-m-bluetooth-toy"},     // gaming
    {major, 0x0400, u"icon-m-bluetooth-speaker"},
    {major | 0x40, 0x0540, u"icon-m-bluetooth-keyboard"}, // also combined with a pointer
    {major | 0x80, 0x0580, u"icon-m-bluetooth-mouse"},
    {major | 0x3c, 0x0504, u"icon-m-bluetooth-gamepad"}, // joystick
    {major | 0x3c, 0x0508, u"icon-m-bluetooth-gamepad"},
    {major | 0x80, 0x0680, u"icon-m-bluetooth-printer"}, // imaging devices can be several things at once
    {major | 0x20, 0x0620, u"icon-m-bluetooth-camera"},
    {major | 0x10, 0x0610, u"icon-m-bluetooth-video"},
    {major, 0x0700, u"icon-m-bluetooth-wearable"},
    {major, 0x0800, u"icon-m-bluetooth-toy"},
    {major, 0x0900, u"icon-m-bluetooth-health"},
};

} // namespace

QString BluetoothDeviceInfoUtils::codIconId(unsigned int classOfDevice)
{
    const auto row = std::find_if(std::begin(icons), std::end(icons),
                                  [=](const Row &row) { return (classOfDevice & row.mask) == row.bits; });
    return row == std::end(icons) ? QStringLiteral("icon-m-bluetooth-generic")
                                  : QString::fromUtf16(row->icon);
}

} // namespace ConnUi
