// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CONTACTEXPORTER_H
#define CONNUI_CONTACTEXPORTER_H

#include <connui_common_core_export.h>

#include <QByteArray>
#include <QFileInfo>
#include <QString>
#include <QTemporaryFile>
#ifdef QT_GUI_LIB
#include <QImage>
#else
class QImage;
#endif

namespace ConnUi {

/**
 * Hands out the user's contacts as vCard files and reads names and pictures from such cards.
 *
 * A contact is named by "contact:" and its id, and is the card $XDG_DATA_HOME/contacts/<id>.vcf. An id that
 * holds a slash or ".." names no contact. Cards are vCard 2.1 or 3.0 (RFC 2426); one that is larger than 4
 * MiB is refused with a warning. All calls block for as long as the file takes to read.
 */
class CONNUI_COMMON_CORE_EXPORT ContactExporter
{
public:
    /**
     * Writes the card of \a contact into a new file that only the user can read, and returns that file,
     * closed.
     *
     * The caller owns the object; deleting it removes the file. Where there is no such contact, or it cannot
     * be copied, the file is empty and a warning says so. Never returns null.
     */
    static QTemporaryFile *createContactCardFile(const QString &contact);

    /**
     * Reads the name in the card \a file: \a first becomes the given name and \a second the family name, each
     * empty when the card has none. A card without either gives its formatted name as \a first.
     *
     * A file that cannot be read or is no card leaves both empty, with a warning unless it is an empty file.
     */
    static void resolveContactInfo(const QFileInfo &file, QString &first, QString &second);

    /**
     * Reads the picture in the card of \a contact: the bytes of an image file, as the card has them. Empty
     * when there is no such contact or no picture in its card. A picture that a card only refers to is not
     * fetched.
     */
    static QByteArray contactPhoto(const QString &contact);

    /**
     * Decodes the picture in the card of \a contact into \a avatar.
     *
     * Returns false, with \a avatar untouched, when contactPhoto() has no picture or one that cannot be
     * decoded. In ConnUi::Common, as it needs QtGui.
     */
    static bool resolveContactAvatar(const QString &contact, QImage &avatar);
};

} // namespace ConnUi

#endif
