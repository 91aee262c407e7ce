// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MTYPES_H
#define MTYPES_H

#include <QChar>
#include <QFlags>
#include <QMetaType>
#include <quenzotouchcore_export.h>

/** Names that several classes of the toolkit share. */
namespace M {
Q_NAMESPACE_EXPORT(QUENZOTOUCHCORE_EXPORT)

/** Buttons that every dialog knows. The code of the pressed one is the dialog's result. */
enum StandardButton {
    NoStandardButton = 0, ///< A button that a program added itself
    OkButton = 0x400,
    YesButton = 0x4000,
    NoButton = 0x10000,
    CancelButton = 0x400000,
};
Q_ENUM_NS(StandardButton)
Q_DECLARE_FLAGS(StandardButtons, StandardButton)
Q_FLAG_NS(StandardButtons)

/** The purpose of a button of a dialog, numbered as QDialogButtonBox::ButtonRole. */
enum ButtonRole {
    InvalidRole = -1,
    AcceptRole,
    RejectRole,
    DestructiveRole,
    ActionRole,
    HelpRole,
    YesRole,
    NoRole,
    ResetRole,
    ApplyRole,
};
Q_ENUM_NS(ButtonRole)

/** Shape of the area that the user sees. */
enum Orientation {
    Landscape, ///< Wider than high
    Portrait,  ///< At least as high as wide
};
Q_ENUM_NS(Orientation)

/** Degrees that the contents of a window are turned by, clockwise. */
enum OrientationAngle {
    Angle0 = 0,
    Angle90 = 90,
    Angle180 = 180,
    Angle270 = 270,
};
Q_ENUM_NS(OrientationAngle)

/** Separates the variants of different length that a text may hold; the longest one that fits is shown. */
constexpr QChar lengthVariantSeparator{0x9c};
} // namespace M

Q_DECLARE_OPERATORS_FOR_FLAGS(M::StandardButtons)

#endif
