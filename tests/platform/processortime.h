// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef CONNUI_TESTS_PROCESSORTIME_H
#define CONNUI_TESTS_PROCESSORTIME_H

#include <sys/resource.h>

/** Returns how much processor time the processes took that were started here and have ended, in seconds. */
inline double secondsOfChildren()
{
    rusage used{};
    getrusage(RUSAGE_CHILDREN, &used);
    const auto seconds = [](const timeval &time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

#endif
