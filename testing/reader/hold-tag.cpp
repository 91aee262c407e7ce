// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Holds a virtual tag against a reader of with-reader until SIGTERM ends it, and reports what
// became of it.
#include <csignal>
#include <cstdio>
#include <memory>

#include <QCommandLineParser>
#include <QCoreApplication>

#include "foreigncard.h"
#include "heldtag.h"
#include "virtualtype2.h"
#include "virtualtype4.h"

namespace {

constexpr int badArguments = 64;

// A tag that was on the reader before, of which memory() has returned the \a bytes.
std::unique_ptr<VirtualTag> tagOfMemory(const QString &kind, const QByteArray &bytes)
{
    if (kind == QLatin1String("type2"))
        return std::make_unique<VirtualType2>(bytes);
    if (kind == QLatin1String("type4"))
        return std::make_unique<VirtualType4>(VirtualType4::ofFile(bytes));
    return nullptr;
}

std::unique_ptr<VirtualTag> virtualTag(const QString &kind, const QByteArray &bytes)
{
    if (kind == QLatin1String("type2"))
        return std::make_unique<VirtualType2>(VirtualType2::sticker(bytes));
    if (kind == QLatin1String("type4"))
        return std::make_unique<VirtualType4>(VirtualType4::holding(bytes));
    if (kind == QLatin1String("card"))
        return std::make_unique<ForeignCard>(bytes);
    return nullptr;
}

/** Everything that can be seen of a tag when it is off the reader. */
QByteArray memory(const VirtualTag *tag)
{
    if (const auto *type2 = dynamic_cast<const VirtualType2 *>(tag))
        return type2->memory;
    if (const auto *type4 = dynamic_cast<const VirtualType4 *>(tag))
        return type4->files.value(VirtualType4::messageFile);
    return {};
}

void waitToBeSentAway()
{
    sigset_t signalSet;
    sigemptyset(&signalSet);
    sigaddset(&signalSet, SIGTERM);
    int received = 0;
    sigwait(&signalSet, &received);
}

// Before there is a thread that a signal could end.
void blockTermination()
{
    sigset_t signalSet;
    sigemptyset(&signalSet);
    sigaddset(&signalSet, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signalSet, nullptr);
}

void print(const char *what, const QByteArray &text)
{
    std::printf("hold-tag: %s%s\n", what, text.constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Holds a tag against a virtual reader until SIGTERM: "
                                                    "type2 or type4 with the bytes of a message, or card "
                                                    "with those of its answer to reset."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("kind"), QStringLiteral("type2, type4 or card"));
    parser.addPositionalArgument(QStringLiteral("bytes"), QStringLiteral("hexadecimal digits"));
    const QCommandLineOption leavesAt(QStringLiteral("leaves-at"),
                                      QStringLiteral("Leave at the command <number>, counted from 0."),
                                      QStringLiteral("number"), QStringLiteral("-1"));
    parser.addOption(leavesAt);
    const QCommandLineOption again(
        QStringLiteral("again"),
        QStringLiteral("The bytes are what such a tag held when it left: its memory, or its file."));
    parser.addOption(again);
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    const QByteArray bytes = QByteArray::fromHex(arguments.value(1).toLatin1());
    const auto make = parser.isSet(again) ? tagOfMemory : virtualTag;
    const std::unique_ptr<VirtualTag> tag = make(arguments.value(0), bytes);
    if (!tag || arguments.size() != 2)
        parser.showHelp(badArguments);

    blockTermination();
    HeldTag held(*tag, {parser.value(leavesAt).toInt(), -1, {}});
    print("on the reader", {});
    waitToBeSentAway();
    held.leave();
    print("commands: ", QByteArray::number(held.commands()));
    print("holds ", memory(tag.get()).toHex());
}
