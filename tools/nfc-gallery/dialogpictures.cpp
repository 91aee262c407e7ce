// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "dialogpictures.h"

#include <memory>

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include <MWindow>

namespace {

// The texts of a language, and its direction, while it lives.
class Language
{
public:
    explicit Language(const QString &language)
    {
        load(texts, QCoreApplication::applicationDirPath() +
                        QStringLiteral("/../share/connui-nfc/translations/connui-nfc_") + language);
        // The toolkit's own labels, such as OK and Cancel.
        load(labels,
             QLibraryInfo::path(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_") + language);
        QApplication::setLayoutDirection(QLocale(language).textDirection());
    }
    ~Language() { QApplication::setLayoutDirection(Qt::LeftToRight); }

private:
    static void load(QTranslator &translator, const QString &file)
    {
        if (translator.load(file))
            QCoreApplication::installTranslator(&translator);
    }

    QTranslator texts;
    QTranslator labels;
};

QPixmap pictureOf(const Dialog &shown, const QString &language, M::Orientation orientation)
{
    const Language texts(language);
    MWindow window;
    if (orientation == M::Landscape)
        window.resize(window.sizeHint().transposed());
    const std::unique_ptr<MDialog> dialog(shown.make());
    dialog->appear(&window);
    window.show();
    QCoreApplication::processEvents();
    return window.grab();
}

} // namespace

QList<Picture> dialogPictures(const QList<Dialog> &dialogs)
{
    QList<Picture> pictures;
    for (const Dialog &dialog : dialogs) {
        for (const char *language : {"en", "de", "ar"}) {
            const QString code = QLatin1String(language);
            const QString name = QStringLiteral("%1-%2").arg(dialog.name, code);
            pictures.append({name, [=] { return pictureOf(dialog, code, M::Portrait); }});
            pictures.append(
                {name + QStringLiteral("-landscape"), [=] { return pictureOf(dialog, code, M::Landscape); }});
        }
    }
    return pictures;
}
