// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_PUBLICSUFFIXES_H
#define CONNUI_PUBLICSUFFIXES_H

#include <QByteArray>

namespace ConnUi {

/**
 * Returns the end of the host \a name, in ASCII, that somebody has registered, by the public suffix list;
 * the name itself where nobody can have.
 *
 * The first call of a process loads the list's library: most links are followed long after the start, by
 * clients that start often. Without the library there is a warning, and every name counts as registered.
 */
QByteArray registrableDomain(const QByteArray &name);

} // namespace ConnUi

#endif
