// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads the input as a theme file and, if there is no mistake in it, shows one of each widget in its styles.
#include <initializer_list>

#include <QApplication>

#include <MButton>
#include <MImageWidget>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MListItem>
#include <MMessageBox>
#include <MProgressIndicator>
#include <MSceneManager>
#include <MWindow>

#include "support.h"
#include "theme/mtheme_p.h"

namespace {

MWidget *newContents()
{
    auto *contents = new MWidgetController;
    contents->setStyleName(QStringLiteral("CommonPanel"));
    auto *policy = new MLinearLayoutPolicy(new MLayout(contents), Qt::Vertical);
    auto *label = new MLabel(QStringLiteral("The quick brown fox"));
    label->setStyleName(QStringLiteral("CommonTitle"));
    auto *toggle = new MButton;
    toggle->setViewType(MButton::switchType);
    auto *bar = new MProgressIndicator;
    bar->setMaximum(3);
    bar->setValue(1);
    for (MWidget *widget : std::initializer_list<MWidget *>{label, new MButton(QStringLiteral("Call")),
                                                            toggle, bar, new MImageWidget, new MListItem})
        policy->addItem(widget);
    return contents;
}

void show(M::OrientationAngle angle)
{
    MWindow window;
    window.sceneManager()->setOrientationAngle(angle);
    // A small one is painted faster.
    window.resize(240, 320);
    window.show();
    MMessageBox dialog(QStringLiteral("Title"), M::YesButton | M::NoButton);
    dialog.setIconId(QStringLiteral("icon-m-service-nfc"));
    dialog.setTitleBarIconId(QStringLiteral("icon-m-content-url-inverse"));
    dialog.setProgressIndicatorVisible(true);
    dialog.setCentralWidget(newContents());
    dialog.appear(&window);
    QCoreApplication::processEvents();
    window.grab();
}

} // namespace

// The font library never frees what it has read about the fonts.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    new QApplication(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    MThemePrivate *theme = MThemePrivate::instance();
    static const MThemeFile builtIn = theme->file;

    MThemeFile file;
    QString error;
    require(file.read(inputBytes(data, size), &error) == error.isEmpty());
    if (!error.isEmpty())
        return 0;
    file.complete(builtIn);
    theme->file = file;
    theme->variant = MTheme::Light;
    show(M::Angle0);
    theme->variant = MTheme::Dark;
    show(M::Angle90);
    return 0;
}
