// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTING_VIRTUALTYPE4_H
#define CONNUI_TESTING_VIRTUALTYPE4_H

#include <QMap>

#include "virtualtag.h"

/** A tag of Type 4: the NDEF application and its files. */
class VirtualType4 : public VirtualTag
{
public:
    static constexpr quint16 containerFile = 0xe103;
    static constexpr quint16 messageFile = 0xe104;

    /** A tag with these \a files, by their identifiers. */
    explicit VirtualType4(const QMap<quint16, QByteArray> &files);

    /** A tag that holds \a message in a file of \a size bytes, and takes parts of \a longest bytes. */
    static VirtualType4 holding(const QByteArray &message, int size = 2048, int longest = 0xf6);

    /** A tag whose message is in \a file, which takes parts of \a longest bytes. */
    static VirtualType4 ofFile(const QByteArray &file, int longest = 0xf6);

    /** The capability container of such a tag. */
    static QByteArray container(int size, int longest);

    QByteArray atr() const override;
    QByteArray answer(const QByteArray &command) override;

    QMap<quint16, QByteArray> files;

private:
    QByteArray select(const QByteArray &command);
    QByteArray read(int offset, int length) const;
    QByteArray update(int offset, const QByteArray &data);

    bool isSelected = false;
    quint16 selectedFile = 0;
};

#endif
