// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "referencepictures.h"

#include <algorithm>

#include <QTransform>

namespace {

struct Shown
{
    const char *header;
    const char *picture;
    int turned = 0; // clockwise, in degrees
};

constexpr Shown reference[] = {
    {"nfcapplicationselectiondialog", "tag-selection-en"},
    {"nfcenabledialog", "enable-en"},
    {"nfcfilereceivesheet", "sheet-middle"},
    {"nfcfilesenddialog", "send-en"},
    {"nfcfilesendpendingdialog", "send-pending-en"},
    {"nfcoverlay", "banner-270", 90},
    {"nfcpairingdialog", "pair-headset-en"},
    {"nfcsettingsview", "settings-on"},
    {"nfcsharingpermissiondialog", "share-contact-en"},
    {"nfcsharingselectiondialog", "select-picture-en"},
    {"nfctagnotsupporteddialog", "unsupported-en"},
    {"nfctagreadpermissiondialog", "tag-link-en"},
};

} // namespace

QList<Picture> referencePictures(const QList<Picture> &pictures)
{
    QList<Picture> chosen;
    for (const Shown &shown : reference) {
        const auto picture = std::find_if(pictures.cbegin(), pictures.cend(), [&shown](const Picture &each) {
            return each.name == QLatin1String(shown.picture);
        });
        if (picture == pictures.cend())
            qFatal("no picture %s", shown.picture);
        const auto turned = [take = picture->take, transform = QTransform().rotate(shown.turned)] {
            return take().transformed(transform);
        };
        chosen.append({QLatin1String(shown.header), turned});
    }
    return chosen;
}
