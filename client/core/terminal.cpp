// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/terminal.h"

#include <cerrno>
#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QMetaObject>
#include <QString>

namespace {

bool isHarmless(QChar character)
{
    return character.isSurrogate() || (character.isPrint() && character.category() != QChar::Other_Format);
}

} // namespace

Terminal::Terminal(QObject *parent) : QObject(parent), input(STDIN_FILENO, QSocketNotifier::Read)
{
    connect(
        &input, &QSocketNotifier::activated, this,
        [this] {
            if (readInput())
                reportLines();
        });
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

qsizetype Terminal::linesAhead()
{
    int size = 0;
    if (::ioctl(STDIN_FILENO, FIONREAD, &size) == 0) {
        // A terminal hands over one line at a time.
        const qsizetype all = unreported.size() + size;
        while (unreported.size() < all && readInput()) {}
    }
    QMetaObject::invokeMethod(this, &Terminal::reportLines, Qt::QueuedConnection);
    return unreported.count('\n');
}

// Returns whether there was something.
bool Terminal::readInput()
{
    char buffer[4096];
    const ssize_t size = ::read(STDIN_FILENO, buffer, sizeof buffer);
    if (size < 0 && (errno == EINTR || errno == EAGAIN))
        return false;
    if (size <= 0) {
        input.setEnabled(false);
        QCoreApplication::exit();
        return false;
    }
    unreported.append(buffer, size);
    return true;
}

void Terminal::reportLines()
{
    for (qsizetype end = unreported.indexOf('\n'); end >= 0; end = unreported.indexOf('\n')) {
        const QByteArray line = unreported.first(end);
        unreported.remove(0, end + 1);
        Q_EMIT lineEntered(QString::fromLocal8Bit(line).trimmed());
    }
}
