// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_RADIOSTATE_H
#define CONNUI_RADIOSTATE_H

#include <connui_common_core_export.h>

#include <QObject>

namespace ConnUi {

/**
 * Reports whether the user wants a radio of the device on, and changes that wish.
 *
 * The wish is persistent and shared by all processes of the user: it is kept beside the connectivity
 * settings, under the same guarantees.
 */
class CONNUI_COMMON_CORE_EXPORT RadioState : public QObject
{
    Q_OBJECT
public:
    /** A radio of the device, a flag. */
    enum Radio {
        NFC = 16, ///< Near Field Communication
    };

    /**
     * Creates an object for \a radios: one Radio, or several joined by "|", which are then read and switched
     * together.
     */
    explicit RadioState(int radios, QObject *parent = nullptr);

    /**
     * Returns whether all of the radios are on. A radio that nobody has switched yet is on.
     */
    bool enabled() const;

    /**
     * Switches all of the radios on or off. May block and fail as ConnectivitySettings::set() does.
     */
    void setEnabled(bool enabled);

private:
    int radios;
};

} // namespace ConnUi

#endif
