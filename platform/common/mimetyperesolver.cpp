// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "mimetyperesolver.h"

#include <QMimeDatabase>

namespace ConnUi {

QString MimeTypeResolver::mimeTypeForFilePath(const QString &path)
{
    return QMimeDatabase().mimeTypeForFile(path).name();
}

} // namespace ConnUi
