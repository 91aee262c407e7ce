// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_APPLICATIONSTART_H
#define CONNUI_APPLICATIONSTART_H

#include <QString>

namespace ContentAction {
class Action;
}

namespace ConnUi {

/** Starts \a application with \a uri as NfcApplication::openUri() describes it. */
void startApplication(const ContentAction::Action &application, const QString &uri);

} // namespace ConnUi

#endif
