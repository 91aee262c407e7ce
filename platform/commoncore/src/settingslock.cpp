// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include "settingslock_p.h"

namespace ConnUi {
namespace {

constexpr int lockTimeout = 2000; // ms
constexpr int lockRetry = 1;      // ms

bool isRegular(int file)
{
    struct stat status;
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

// Until when others, who look every lockRetry, are let in first. A program that writes on and on would keep
// them out for as long as it does.
QDeadlineTimer &turnOfOthers()
{
    static QDeadlineTimer deadline;
    return deadline;
}

} // namespace

// The opening leaves any object in the file's place unchanged: it neither shortens it, nor follows a link,
// nor waits for the other end of a pipe.
SettingsLock::SettingsLock(const QString &path)
    : file(open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC,
                0600))
{
    if (file < 0) {
        failure = qt_error_string();
        return;
    }
    if (!isRegular(file)) {
        failure = QStringLiteral("not a file");
        return;
    }
    QThread::msleep(ulong(turnOfOthers().remainingTime()));
    const QDeadlineTimer deadline(lockTimeout);
    while (flock(file, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || deadline.hasExpired()) {
            failure = qt_error_string();
            return;
        }
        QThread::msleep(lockRetry);
    }
}

SettingsLock::~SettingsLock()
{
    if (file < 0)
        return;
    close(file);
    turnOfOthers().setRemainingTime(qint64(2) * lockRetry, Qt::PreciseTimer);
}

} // namespace ConnUi
