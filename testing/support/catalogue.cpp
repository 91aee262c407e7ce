// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "catalogue.h"

#include <QCoreApplication>

Catalogue::Catalogue(const QString &language)
{
    const QString file = QStringLiteral(CATALOGUES "/connui-nfc_%1.qm").arg(language);
    if (!QCoreApplication::instance() || !translator.load(file))
        qFatal("Catalogue: unable to load %s", qUtf8Printable(file));
    QCoreApplication::installTranslator(&translator);
}

Catalogue::~Catalogue()
{
    QCoreApplication::removeTranslator(&translator);
}
