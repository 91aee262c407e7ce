// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "console/console.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>

#include <QString>

namespace {

bool isHarmless(QChar character)
{
    return character.isSurrogate() || (character.isPrint() && character.category() != QChar::Other_Format);
}

} // namespace

Console::Console(QObject *parent) : QObject(parent), input(STDIN_FILENO, QSocketNotifier::Read)
{
    connect(&input, &QSocketNotifier::activated, this, &Console::readInput);
}

void Console::print(const QString &line)
{
    QString shown = line;
    for (QChar &character : shown)
        if (!isHarmless(character))
            character = QChar::ReplacementCharacter;
    std::printf("%s\n", qUtf8Printable(shown));
    std::fflush(stdout);
}

void Console::readInput()
{
    char buffer[4096];
    const ssize_t size = ::read(STDIN_FILENO, buffer, sizeof buffer);
    if (size < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (size <= 0) {
        input.setEnabled(false);
        Q_EMIT ended();
        return;
    }
    unfinishedLine.append(buffer, size);
    QList<QByteArray> lines = unfinishedLine.split('\n');
    unfinishedLine = lines.takeLast();
    for (const QByteArray &line : std::as_const(lines))
        Q_EMIT lineEntered(QString::fromLocal8Bit(line).trimmed());
}
