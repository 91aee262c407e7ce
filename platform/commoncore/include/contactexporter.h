// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CONTACTEXPORTER_H
#define CONNUI_CONTACTEXPORTER_H

#include <connui_common_core_export.h>

#include <QByteArrayList>
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
 * holds a slash or ".." names no contact. Cards are vCard 2.1, 3.0 (RFC 2426) or 4.0 (RFC 6350), in the
 * charset that they name, else in UTF-8 or Windows-1252; of several cards in a file the first counts. One
 * that is larger than 4 MiB is refused with a warning. All calls block for as long as the file takes to read.
 */
class CONNUI_COMMON_CORE_EXPORT ContactExporter
{
public:
    /**
     * Writes the card of \a contact into a new file that only the user can read, and returns that file,
     * closed.
     *
     * The caller owns the object; deleting it removes the file. Where the contact does not exist, or it
     * cannot be copied, the file is empty and a warning says so. Never returns null.
     */
    static QTemporaryFile *createContactCardFile(const QString &contact);

    /**
     * Removes what createContactCardFile() of this user's processes has left in the folder of temporary
     * files: the copies of those that ended without deleting them. For a program's start.
     */
    static void removeLeftCopies();

    /**
     * Reads the name in the card \a file: \a first becomes the given name and \a second the family name, each
     * empty when the card has none; several of a kind are separated by blanks. A card without either gives as
     * \a first what else it is called: its formatted name, or the first of its organization, its nickname,
     * its mail address and its telephone number.
     *
     * A file that cannot be read or is not a card leaves both empty, with a warning unless it is an empty
     * file.
     */
    static void resolveContactInfo(const QFileInfo &file, QString &first, QString &second);

    /**
     * Reads the pictures in the card of \a contact: each the bytes of an image file, as the card has them, in
     * their order and eight at most. None when the contact does not exist. A picture that a card only refers
     * to is not fetched.
     */
    static QByteArrayList contactPhotos(const QString &contact);

    /**
     * Decodes the first of contactPhotos() that can be decoded into \a avatar.
     *
     * Returns false, with \a avatar untouched, when there is none. In ConnUi::Common, as it needs QtGui.
     */
    static bool resolveContactAvatar(const QString &contact, QImage &avatar);
};

} // namespace ConnUi

#endif
