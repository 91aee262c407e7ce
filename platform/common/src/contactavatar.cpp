// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QImage>

#include <ContactExporter>

namespace ConnUi {

bool ContactExporter::resolveContactAvatar(const QString &contact, QImage &avatar)
{
    const QByteArrayList photos = contactPhotos(contact);
    for (const QByteArray &photo : photos) {
        const auto image = QImage::fromData(photo);
        if (image.isNull())
            continue;
        avatar = image;
        return true;
    }
    return false;
}

} // namespace ConnUi
