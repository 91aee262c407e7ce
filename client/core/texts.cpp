// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/texts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

bool load(const QLocale &locale, const QString &name, const QString &folder)
{
    auto *translator = new QTranslator(QCoreApplication::instance());
    return translator->load(locale, name, QStringLiteral("_"), folder) &&
           QCoreApplication::installTranslator(translator);
}

} // namespace

void loadTexts()
{
    const QString catalogues =
        QCoreApplication::applicationDirPath() + QStringLiteral("/../share/connui-nfc/translations");
    const QString name = QStringLiteral("connui-nfc");
    const QLocale locale;
    if (load(locale, name, catalogues)) {
        // Qt's own has the toolkit's labels, such as OK and Cancel, and says which way the language runs.
        load(locale, QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
        return;
    }
    if (!load(QLocale(QLocale::English), name, catalogues))
        qWarning("No texts in %s", qUtf8Printable(catalogues));
}
