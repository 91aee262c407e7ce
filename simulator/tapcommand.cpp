// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tapcommand.h"

#include <algorithm>
#include <limits>

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "tagmessages.h"

namespace {

constexpr int any = std::numeric_limits<int>::max();
constexpr qint64 largestTag = 1 << 20; // bytes; more than any tag, less than the bus carries

Tap tag(const QByteArray &message, const QString &what)
{
    return {Tap::Touch, QStringLiteral("TouchTag"), {message}, what};
}

std::optional<QByteArray> contents(const QString &name, QString &fault)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        fault = QStringLiteral("cannot read %1: %2").arg(name, file.errorString());
        return std::nullopt;
    }
    const QByteArray data = file.read(largestTag + 1);
    if (file.error() != QFile::NoError) {
        fault = QStringLiteral("cannot read %1: %2").arg(name, file.errorString());
        return std::nullopt;
    }
    if (data.size() > largestTag) {
        fault = QStringLiteral("%1 is too large: a tag holds at most %2 bytes").arg(name).arg(largestTag);
        return std::nullopt;
    }
    return data;
}

// A message that cannot be made is empty, and the fault known.
std::optional<Tap> generatedTag(const QByteArray &message, const QString &description)
{
    if (message.isEmpty())
        return std::nullopt;
    return tag(message, description);
}

std::optional<Tap> uriTag(const QStringList &arguments, QString &fault)
{
    return generatedTag(TagMessages::uri(arguments[0], &fault),
                        QStringLiteral("tag with %1").arg(arguments[0]));
}

std::optional<Tap> textTag(const QStringList &arguments, QString &)
{
    return tag(TagMessages::text(arguments[0]), QStringLiteral("tag with text '%1'").arg(arguments[0]));
}

std::optional<Tap> mimeTag(const QStringList &arguments, QString &fault)
{
    const std::optional<QByteArray> data = contents(arguments[1], fault);
    if (!data)
        return std::nullopt;
    return generatedTag(TagMessages::mime(arguments[0], *data, &fault),
                        QStringLiteral("tag with %1").arg(arguments[0]));
}

std::optional<Tap> dumpedTag(const QStringList &arguments, QString &fault)
{
    const std::optional<QByteArray> message = contents(arguments[0], fault);
    if (!message)
        return std::nullopt;
    return tag(*message, QStringLiteral("tag from %1").arg(arguments[0]));
}

std::optional<Tap> emptyTag(const QStringList &, QString &)
{
    return tag(TagMessages::empty(), QStringLiteral("empty tag"));
}

std::optional<Tap> blankTag(const QStringList &arguments, QString &fault)
{
    bool isNumber = false;
    const uint room = arguments[0].toUInt(&isNumber);
    if (!isNumber) {
        fault = QStringLiteral("'%1' is not a number of bytes").arg(arguments[0]);
        return std::nullopt;
    }
    return Tap{Tap::Touch,
               QStringLiteral("TouchBlankTag"),
               {room},
               QStringLiteral("blank tag of %1 bytes").arg(room)};
}

// The tag that the other commands would hold against the daemon, to be written.
std::optional<Tap> writing(const QStringList &arguments, QString &fault)
{
    const TapCommand *content = TapCommand::named(arguments[0]);
    const QStringList own = arguments.mid(1);
    std::optional<Tap> tap;
    if (content && content->accepts(own))
        tap = content->make(own, fault);
    const bool isTag = tap && tap->method == QLatin1String("TouchTag");
    if (!isTag && fault.isEmpty())
        fault = QStringLiteral("'%1' cannot be written").arg(arguments.join(QLatin1Char(' ')));
    if (!isTag)
        return std::nullopt;
    tap->kind = Tap::Writing;
    tap->method = QStringLiteral("WriteNdef");
    return tap;
}

std::optional<Tap> unsupportedTag(const QStringList &, QString &)
{
    return Tap{Tap::Touch,
               QStringLiteral("TouchFaultyTag"),
               {QStringLiteral("unsupported-tag-type")},
               QStringLiteral("unsupported tag")};
}

std::optional<Tap> malformedTag(const QStringList &, QString &)
{
    return Tap{Tap::Touch,
               QStringLiteral("TouchFaultyTag"),
               {QStringLiteral("malformed-content")},
               QStringLiteral("malformed tag")};
}

std::optional<Tap> device(const QString &method, const QString &purpose, const QStringList &arguments,
                          QString &fault)
{
    static const QRegularExpression address(
        QRegularExpression::anchoredPattern(QStringLiteral("([0-9A-Fa-f]{2}:){5}[0-9A-Fa-f]{2}")));
    if (!address.match(arguments[0]).hasMatch()) {
        fault = QStringLiteral("'%1' is not a Bluetooth address").arg(arguments[0]);
        return std::nullopt;
    }
    bool isNumber = false;
    const uint classOfDevice = arguments[2].toUInt(&isNumber, 0);
    if (!isNumber) {
        fault = QStringLiteral("'%1' is not a Class of Device; try 0x240404").arg(arguments[2]);
        return std::nullopt;
    }
    return Tap{Tap::Touch,
               method,
               {arguments[0], arguments[1], classOfDevice},
               QStringLiteral("%1 %2 (%3)").arg(purpose, arguments[1], arguments[0])};
}

std::optional<Tap> pairing(const QStringList &arguments, QString &fault)
{
    std::optional<Tap> tap =
        device(QStringLiteral("TouchToPair"), QStringLiteral("pairing with"), arguments, fault);
    if (tap)
        tap->arguments.append(arguments.value(3));
    return tap;
}

std::optional<Tap> connection(const QStringList &arguments, QString &fault)
{
    return device(QStringLiteral("TouchToConnect"), QStringLiteral("connection to"), arguments, fault);
}

std::optional<Tap> disconnection(const QStringList &arguments, QString &fault)
{
    return device(QStringLiteral("TouchToDisconnect"), QStringLiteral("disconnection from"), arguments,
                  fault);
}

// The client may run in another folder; an argument that is not a file (as "contact:7") stays unchanged.
QString resource(const QString &name)
{
    const QFileInfo file(name);
    return file.exists() ? file.absoluteFilePath() : name;
}

std::optional<Tap> sharing(const QStringList &arguments, QString &)
{
    QStringList resources;
    std::transform(arguments.cbegin(), arguments.cend(), std::back_inserter(resources), resource);
    return Tap{Tap::Touch,
               QStringLiteral("TouchToShare"),
               {resources},
               QStringLiteral("sharing %1").arg(arguments.join(QStringLiteral(", ")))};
}

std::optional<Tap> selection(const QStringList &, QString &)
{
    return Tap{Tap::Touch, QStringLiteral("TouchToSelect"), {}, QStringLiteral("selection of what to share")};
}

std::optional<Tap> handover(const QStringList &arguments, QString &)
{
    return Tap{Tap::Touch,
               QStringLiteral("TouchForHandover"),
               {arguments[0]},
               QStringLiteral("handover to %1").arg(arguments[0])};
}

std::optional<quint64> number(const QString &argument, const QString &what, QString &fault)
{
    bool isNumber = false;
    const quint64 value = argument.toULongLong(&isNumber);
    if (isNumber)
        return value;
    fault = QStringLiteral("'%1' is not a number of %2").arg(argument, what);
    return std::nullopt;
}

std::optional<Tap> reception(const QStringList &arguments, QString &fault)
{
    const bool cancels = arguments.size() > 3;
    if (cancels && (arguments.size() != 5 || arguments[3] != QLatin1String("--cancel-after"))) {
        fault = QStringLiteral("usage: nfctap receive NAME SIZE RATE [--cancel-after BYTES]");
        return std::nullopt;
    }
    const std::optional<quint64> size = number(arguments[1], QStringLiteral("bytes"), fault);
    const std::optional<quint64> rate = number(arguments[2], QStringLiteral("bytes a second"), fault);
    const std::optional<quint64> cancelAfter =
        cancels ? number(arguments[4], QStringLiteral("bytes"), fault) : std::numeric_limits<quint64>::max();
    if (!size || !rate || !cancelAfter)
        return std::nullopt;
    const QFileInfo file(arguments[0]);
    const QString name = file.isFile() ? file.fileName() : arguments[0];
    return Tap{Tap::Touch,
               QStringLiteral("ReceiveFile"),
               {name, *size, *rate, *cancelAfter, file.isFile() ? file.absoluteFilePath() : QString()},
               QStringLiteral("file %1 of %2 bytes").arg(arguments[0], arguments[1])};
}

std::optional<Tap> power(const QStringList &arguments, QString &fault)
{
    const bool on = arguments[0] == QLatin1String("on");
    if (!on && arguments[0] != QLatin1String("off")) {
        fault = QStringLiteral("'%1' is neither on nor off").arg(arguments[0]);
        return std::nullopt;
    }
    return Tap{Tap::Touch, QStringLiteral("SetPowered"), {on}, QStringLiteral("power %1").arg(arguments[0])};
}

std::optional<Tap> release(const QStringList &, QString &)
{
    return Tap{Tap::Touch, QStringLiteral("Release"), {}, QStringLiteral("release of the agent")};
}

std::optional<Tap> hang(const QStringList &arguments, QString &fault)
{
    bool isNumber = false;
    const uint seconds = arguments[0].toUInt(&isNumber);
    if (!isNumber) {
        fault = QStringLiteral("'%1' is not a number of seconds").arg(arguments[0]);
        return std::nullopt;
    }
    return Tap{Tap::Touch,
               QStringLiteral("Hang"),
               {seconds},
               QStringLiteral("daemon that hangs for %1 s").arg(seconds)};
}

std::optional<Tap> crash(const QStringList &, QString &)
{
    return Tap{Tap::Touch, QStringLiteral("Crash"), {}, QStringLiteral("crash of the daemon")};
}

std::optional<Tap> conformance(const QStringList &, QString &)
{
    return Tap{Tap::Check, QString(), {}, QStringLiteral("conformance")};
}

} // namespace

const QList<TapCommand> &TapCommand::all()
{
    static const QList<TapCommand> commands = {
        {"uri", "URI", "a tag with a URI", 1, 1, uriTag},
        {"text", "TEXT", "a tag with plain text", 1, 1, textTag},
        {"mime", "TYPE FILE", "a tag with the file's content, of that MIME type", 2, 2, mimeTag},
        {"message", "FILE.ndef", "a tag with the bytes of the file as its message", 1, 1, dumpedTag},
        {"unsupported", "", "a tag that the reader cannot read", 0, 0, unsupportedTag},
        {"malformed", "", "a tag whose content is not an NDEF message", 0, 0, malformedTag},
        {"empty", "", "a tag without content", 0, 0, emptyTag},
        {"blank", "ROOM", "a writable empty tag for messages of up to ROOM bytes", 1, 1, blankTag},
        {"write", "TAG...", "write a tag, for example: write uri URI; with any daemon", 1, any, writing},
        {"pair", "ADDR NAME COD [PIN]", "a Bluetooth device to pair with", 3, 4, pairing},
        {"connect", "ADDR NAME COD", "a Bluetooth device to connect to", 3, 3, connection},
        {"disconnect", "ADDR NAME COD", "a Bluetooth device to disconnect from", 3, 3, disconnection},
        {"share-permission", "FILE...", "a phone that gets these files, or contact:ID", 1, any, sharing},
        {"share-selection", "", "a phone that gets files which the user selects", 0, 0, selection},
        {"handover", "CARRIER", "a phone that continues over CARRIER (bluetooth)", 1, 1, handover},
        {"receive", "NAME SIZE RATE [--cancel-after BYTES]",
         "a phone that sends a file of SIZE bytes, RATE bytes a second", 3, 5, reception},
        {"power", "on|off", "switch the adapter", 1, 1, power},
        {"release", "", "make the daemon release its agent", 0, 0, release},
        {"hang", "SECONDS", "make the daemon hang for that long", 1, 1, hang},
        {"crash", "", "make the daemon die", 0, 0, crash},
        {"conformance", "", "check whether the daemon, any daemon, follows the protocol", 0, 0, conformance},
    };
    return commands;
}

bool TapCommand::accepts(const QStringList &arguments) const
{
    return arguments.size() >= fewestArguments && arguments.size() <= mostArguments;
}

const TapCommand *TapCommand::named(const QString &name)
{
    const auto command = std::find_if(all().cbegin(), all().cend(), [&name](const TapCommand &candidate) {
        return name == QLatin1String(candidate.name);
    });
    return command == all().cend() ? nullptr : &*command;
}
