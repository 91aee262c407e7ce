// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTING_VIRTUALTAG_H
#define CONNUI_TESTING_VIRTUALTAG_H

#include <QByteArray>

/** A tag without a radio: answers commands as a reader with such a tag on it does. */
class VirtualTag
{
public:
    virtual ~VirtualTag() = default;

    /** The answer to reset that a reader makes up for it. */
    virtual QByteArray atr() const = 0;

    /** The answer to \a command, status bytes included. */
    virtual QByteArray answer(const QByteArray &command) = 0;

protected:
    static inline const QByteArray success = QByteArray::fromHex("9000");
    static inline const QByteArray failure = QByteArray::fromHex("6300");
};

#endif
