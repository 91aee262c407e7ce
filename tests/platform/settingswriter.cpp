// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// settingswriter KEY COUNT: stores 1, 2, ... COUNT under KEY, and prints each on standard output before and
// after.
#include <cstdio>
#include <cstdlib>

#include <ConnectivitySettings>

int main(int, char **argv)
{
    ConnUi::ConnectivitySettings settings(1);
    const int count = atoi(argv[2]);
    for (int value = 1; value <= count; ++value) {
        printf("begin %d\n", value);
        fflush(stdout);
        settings.set(QString::fromLocal8Bit(argv[1]), value);
        printf("end %d\n", value);
        fflush(stdout);
    }
}
