// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "dialogpictures.h"

#include <memory>

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include <MWindow>

namespace {

// Phones of several kinds, as they are held. The first two have the pictures of the API reference.
struct Screen
{
    const char *suffix;
    QSize size;
};

constexpr Screen screens[] = {
    {"", {480, 854}},         {"-landscape", {854, 480}},   {"-360x720", {360, 720}},
    {"-720x360", {720, 360}}, {"-1080x2400", {1080, 2400}},
};

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

QPixmap pictureOf(const Dialog &shown, const QString &language, QSize screen)
{
    const Language texts(language);
    MWindow window;
    window.resize(screen);
    const std::unique_ptr<MSceneWindow> dialog(shown.make());
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
        for (const char *language : {"en", "de", "fi", "ar"}) {
            const QString code = QLatin1String(language);
            const QString name = QStringLiteral("%1-%2").arg(dialog.name, code);
            for (const Screen &screen : screens)
                pictures.append({name + QLatin1String(screen.suffix),
                                 [=, size = screen.size] { return pictureOf(dialog, code, size); }});
        }
    }
    return pictures;
}
