// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads the input as an application's desktop file, twice, which must give the same.
#include <MDesktopEntry>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

const QString &filePath()
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(QStringLiteral("fuzzed.desktop"));
    return path;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // Several translations to choose from.
    qputenv("LANGUAGE", "de_AT@euro:fi");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QFile file(filePath());
    require(file.open(QIODevice::WriteOnly) &&
            file.write(reinterpret_cast<const char *>(data), qint64(size)) == qint64(size));
    file.close();

    const MDesktopEntry entry(filePath());
    const MDesktopEntry again(filePath());
    require(entry.name() == again.name() && entry.icon() == again.icon());
    require(!entry.name().contains(QChar(QChar::Null)) && !entry.icon().contains(QChar(QChar::Null)));
    return 0;
}
