// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/terminal.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>

#include <QCoreApplication>
#include <QString>

namespace {

bool isHarmless(QChar character)
{
    return character.isSurrogate() || (character.isPrint() && character.category() != QChar::Other_Format);
}

} // namespace

Terminal::Terminal(QObject *parent) : QObject(parent), input(STDIN_FILENO, QSocketNotifier::Read)
{
    connect(&input, &QSocketNotifier::activated, this, &Terminal::readInput);
}

void Terminal::print(const QString &line)
{
    QString shown = line;
    for (QChar &character : shown)
        if (!isHarmless(character))
            character = QChar::ReplacementCharacter;
    std::printf("%s\n", qUtf8Printable(shown));
    std::fflush(stdout);
}

void Terminal::readInput()
{
    char buffer[4096];
    const ssize_t size = ::read(STDIN_FILENO, buffer, sizeof buffer);
    if (size < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (size <= 0) {
        input.setEnabled(false);
        QCoreApplication::exit();
        return;
    }
    unfinishedLine.append(buffer, size);
    QList<QByteArray> lines = unfinishedLine.split('\n');
    unfinishedLine = lines.takeLast();
    for (const QByteArray &line : std::as_const(lines))
        Q_EMIT lineEntered(QString::fromLocal8Bit(line).trimmed());
}
