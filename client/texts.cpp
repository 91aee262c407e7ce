// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "texts.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

void loadTexts()
{
    auto *translator = new QTranslator(QCoreApplication::instance());
    const QString catalogues =
        QCoreApplication::applicationDirPath() + QStringLiteral("/../share/connui-nfc/translations");
    const QString name = QStringLiteral("connui-nfc");
    const bool loaded = translator->load(QLocale(), name, QStringLiteral("_"), catalogues) ||
                        translator->load(name + QStringLiteral("_en"), catalogues);
    if (!loaded) {
        qWarning("No texts in %s", qUtf8Printable(catalogues));
        return;
    }
    QCoreApplication::installTranslator(translator);
}
