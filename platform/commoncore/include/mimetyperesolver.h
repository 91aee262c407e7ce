// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_MIMETYPERESOLVER_H
#define CONNUI_MIMETYPERESOLVER_H

#include <connui_common_core_export.h>

#include <QString>

namespace ConnUi {

/**
 * Finds out what kind of content a file holds.
 */
class CONNUI_COMMON_CORE_EXPORT MimeTypeResolver
{
public:
    /**
     * Returns the MIME type of the file at \a path, such as "image/jpeg", from its name and, where that
     * leaves a doubt, its content; "application/octet-stream" when nothing is known. The file need not exist.
     */
    static QString mimeTypeForFilePath(const QString &path);
};

} // namespace ConnUi

#endif
