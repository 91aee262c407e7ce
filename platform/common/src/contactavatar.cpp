// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QImage>

#include <ContactExporter>

namespace ConnUi {

bool ContactExporter::resolveContactAvatar(const QString &contact, QImage &avatar)
{
    const auto image = QImage::fromData(contactPhoto(contact));
    if (image.isNull())
        return false;
    avatar = image;
    return true;
}

} // namespace ConnUi
