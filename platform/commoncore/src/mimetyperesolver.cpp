// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "mimetyperesolver.h"

#include <QMimeDatabase>

namespace ConnUi {

QString MimeTypeResolver::mimeTypeForFilePath(const QString &path)
{
    // Qt warns when it is to look into a file without a name.
    const auto mode = path.isEmpty() ? QMimeDatabase::MatchExtension : QMimeDatabase::MatchDefault;
    return QMimeDatabase().mimeTypeForFile(path, mode).name();
}

} // namespace ConnUi
