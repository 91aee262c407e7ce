// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTING_VIRTUALTYPE2_H
#define CONNUI_TESTING_VIRTUALTYPE2_H

#include "virtualtag.h"

/** A tag of Type 2, which is nothing but its memory. */
class VirtualType2 : public VirtualTag
{
public:
    /** A tag with this \a memory, from page 0 on. */
    explicit VirtualType2(const QByteArray &memory);

    /**
     * A sticker as shops sell it, with 144 bytes of data, that holds \a message.
     *
     * Before the message is the block that most of them are delivered with, for the locks behind their data.
     */
    static VirtualType2 sticker(const QByteArray &message);

    /** A tag whose data area of \a size bytes begins with \a data. */
    static VirtualType2 formatted(const QByteArray &data, int size = 144);

    QByteArray atr() const override;
    QByteArray answer(const QByteArray &command) override;

    /** Has it refuse to write the pages from \a page on. */
    void lockFrom(int page);

    void setUid(const QByteArray &uid);

    QByteArray memory;

private:
    QByteArray read(int page) const;
    QByteArray write(int page, const QByteArray &data);

    QByteArray uid = QByteArray::fromHex("04a1b2c3d4e5f6");
    int firstLocked = 0x10000;
};

#endif
