// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads the input as an application's desktop file, twice, which must give the same.
#include <MDesktopEntry>

#include "support.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // Several translations to choose from.
    qputenv("LANGUAGE", "de_AT@euro:fi");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QString path = filePath(QStringLiteral("fuzzed.desktop"));
    writeFile(path, inputBytes(data, size));

    const MDesktopEntry entry(path);
    const MDesktopEntry again(path);
    require(entry.name() == again.name() && entry.icon() == again.icon());
    require(!entry.name().contains(QChar(QChar::Null)) && !entry.icon().contains(QChar(QChar::Null)));
    return 0;
}
