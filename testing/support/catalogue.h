// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CATALOGUE_H
#define CONNUI_CATALOGUE_H

#include <QTranslator>

/**
 * The texts of the build tree in one language, for as long as the object lives. Needs an application object.
 *
 * Ends the program when the catalogue does not exist, since every text would be its id.
 */
class Catalogue
{
public:
    explicit Catalogue(const QString &language = QStringLiteral("en"));
    ~Catalogue();
    Q_DISABLE_COPY_MOVE(Catalogue)

private:
    QTranslator translator;
};

#endif
