// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "panel/touchbuttons.h"

#include <limits>

#include "tagmessages.h"

namespace {

constexpr char card[] = "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Byron;Ada;;;\r\nFN:Ada Byron\r\nEND:VCARD\r\n";

TouchButton tag(const QString &label, const QByteArray &message)
{
    return {QStringLiteral("Tags"), label, QStringLiteral("TouchTag"), {message}};
}

TouchButton faultyTag(const QString &label, const QString &status)
{
    return {QStringLiteral("Faults"), label, QStringLiteral("TouchFaultyTag"), {status}};
}

TouchButton headset(const QString &label, const QString &method, const QVariantList &more = {})
{
    const QVariantList device = {QStringLiteral("00:16:41:7A:0F:11"), QStringLiteral("Headset"), 0x240404U};
    return {QStringLiteral("Devices"), label, method, device + more};
}

TouchButton phone(const QString &label, const QString &method, const QVariantList &arguments = {})
{
    return {QStringLiteral("Phones"), label, method, arguments};
}

TouchButton fault(const QString &label, const QString &method, const QVariantList &arguments = {})
{
    return {QStringLiteral("Faults"), label, method, arguments};
}

TouchButton setting(const QString &label, bool on)
{
    return {QStringLiteral("Settings"), label, QStringLiteral("SetPowered"), {on}};
}

} // namespace

QList<TouchButton> TouchButton::all()
{
    return {
        tag(QStringLiteral("Web link"), TagMessages::uri(QStringLiteral("https://www.example.org/nfc"))),
        tag(QStringLiteral("Phone number"), TagMessages::uri(QStringLiteral("tel:+15550100"))),
        tag(QStringLiteral("Message"), TagMessages::uri(QStringLiteral("sms:+15550100?body=Hi%20there"))),
        tag(QStringLiteral("Text"), TagMessages::text(QStringLiteral("Welcome to the museum"))),
        tag(QStringLiteral("Contact card"), TagMessages::mime(QStringLiteral("text/x-vcard"), card)),
        tag(QStringLiteral("Notes"), TagMessages::mime(QStringLiteral("application/x-notes"), "milk, bread")),
        tag(QStringLiteral("Empty tag"), TagMessages::empty()),
        headset(QStringLiteral("Pair"), QStringLiteral("TouchToPair"), {QStringLiteral("1234")}),
        headset(QStringLiteral("Connect"), QStringLiteral("TouchToConnect")),
        headset(QStringLiteral("Disconnect"), QStringLiteral("TouchToDisconnect")),
        phone(QStringLiteral("Send a file"), QStringLiteral("TouchToShare"),
              {QStringList{QStringLiteral("/beach.txt")}}),
        phone(QStringLiteral("Choose what to send"), QStringLiteral("TouchToSelect")),
        phone(QStringLiteral("Handover"), QStringLiteral("TouchForHandover"), {QStringLiteral("bluetooth")}),
        phone(QStringLiteral("Receive 5 MB"), QStringLiteral("ReceiveFile"),
              {QStringLiteral("beach.jpg"), 5000000ULL, 500000ULL, std::numeric_limits<qulonglong>::max(),
               QString()}),
        faultyTag(QStringLiteral("Unsupported tag"), QStringLiteral("unsupported-tag-type")),
        faultyTag(QStringLiteral("Malformed tag"), QStringLiteral("malformed-content")),
        fault(QStringLiteral("Release the agent"), QStringLiteral("Release")),
        fault(QStringLiteral("Hang for 3 s"), QStringLiteral("Hang"), {3U}),
        fault(QStringLiteral("Crash"), QStringLiteral("Crash")),
        setting(QStringLiteral("Switch NFC off"), false),
        setting(QStringLiteral("Switch NFC on"), true),
    };
}
