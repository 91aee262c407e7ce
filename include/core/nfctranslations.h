// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCTRANSLATIONS_H
#define CONNUI_NFCTRANSLATIONS_H

#include <connui_nfc_core_export.h>

#include <QLocale>

namespace ConnUi {

/**
 * Installs the texts of all dialogs in the first language of the locale that has texts, or else in English.
 * Without them, the dialogs show the ids of their texts.
 *
 * Qt's own texts for that language come with them: the labels of buttons such as OK and Cancel, and whether
 * the language runs from right to left.
 *
 * The texts are read from the folder of data that was installed with the library, wherever that is. Call it
 * once, after the application object has been made and before the first dialog. The texts last as long as the
 * application object.
 *
 * Returns false, after a warning, when that folder does not contain texts.
 */
CONNUI_NFC_CORE_EXPORT bool installTranslations(const QLocale &locale = QLocale());

} // namespace ConnUi

#endif
