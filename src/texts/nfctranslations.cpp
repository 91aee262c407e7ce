// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "nfctranslations.h"

#include <dlfcn.h>
#include <memory>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QTranslator>

namespace {

// Something that is in the library: the address of a function may be one in the program that calls it.
const char anchor = 0;

QString cataloguesBesideLibrary()
{
    Dl_info library;
    if (dladdr(&anchor, &library) == 0)
        return QString();
    return QFileInfo(QFile::decodeName(library.dli_fname)).canonicalPath() +
           QStringLiteral("/" DATA_FROM_LIBRARIES "/connui-nfc/translations");
}

// Returns the translator, which the application owns, or null when the texts do not exist.
QTranslator *install(const QLocale &locale, const QString &name, const QString &folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(locale, name, QStringLiteral("_"), folder))
        return nullptr;
    QCoreApplication::installTranslator(translator.get());
    translator->setParent(QCoreApplication::instance());
    return translator.release();
}

} // namespace

bool ConnUi::installTranslations(const QLocale &locale)
{
    const QString folder = cataloguesBesideLibrary();
    const QString name = QStringLiteral("connui-nfc");
    const QTranslator *texts = install(locale, name, folder);
    if (!texts)
        texts = install(QLocale(QLocale::English), name, folder);
    if (!texts) {
        qWarning("No texts in %s", qUtf8Printable(folder));
        return false;
    }
    install(QLocale(texts->language()), QStringLiteral("qtbase"),
            QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    return true;
}
