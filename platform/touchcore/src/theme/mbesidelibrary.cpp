// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <dlfcn.h>

#include <QFile>
#include <QFileInfo>

#include "theme/mbesidelibrary_p.h"

namespace {

// Something that is in the library: the address of a function may be one in the program that calls it.
const char anchor = 0;

} // namespace

QString pathBesideLibrary(const QString &path)
{
    Dl_info library;
    if (dladdr(&anchor, &library) == 0)
        return {};
    return QFileInfo(QFile::decodeName(library.dli_fname)).canonicalPath() + QLatin1Char('/') + path;
}
