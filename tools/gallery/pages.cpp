// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "pages.h"

#include <initializer_list>
#include <utility>

#include <QGraphicsGridLayout>
#include <QGraphicsLinearLayout>
#include <QStandardItemModel>
#include <QWidget>

#include <MButton>
#include <MImageWidget>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MList>
#include <MMessageBox>
#include <MProgressIndicator>

#include "applicationcreator.h"

namespace {

QString longText()
{
    return QStringLiteral("A tag may hold a text of any length. What does not fit on the screen is scrolled "
                          "with a finger, while the "
                          "buttons stay where they are. Even a word like "
                          "Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbau, "
                          "which is wider than the dialog, is broken rather than cut.\n\n");
}

QGraphicsLinearLayout *plainLayout(Qt::Orientation orientation, qreal spacing = 0)
{
    auto *layout = new QGraphicsLinearLayout(orientation);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

MLabel *label(const QString &text, const char *style)
{
    auto *label = new MLabel(text);
    label->setStyleName(QLatin1String(style));
    return label;
}

MImageWidget *image(const char *id, const char *style)
{
    auto *image = new MImageWidget(QLatin1String(id));
    image->setStyleName(QLatin1String(style));
    return image;
}

MWidgetController *panel(QGraphicsLayout *layout, const char *style)
{
    auto *panel = new MWidgetController;
    panel->setStyleName(QLatin1String(style));
    panel->setLayout(layout);
    panel->setMaximumWidth(QWIDGETSIZE_MAX);
    return panel;
}

MSceneWindow *page(std::initializer_list<QGraphicsLayoutItem *> items)
{
    auto *page = new MSceneWindow;
    page->setStyleName(QStringLiteral("Inverted"));
    QGraphicsLinearLayout *layout = plainLayout(Qt::Vertical);
    for (QGraphicsLayoutItem *item : items)
        layout->addItem(item);
    layout->addStretch();
    page->setLayout(layout);
    return page;
}

MSceneWindow *texts()
{
    QGraphicsLinearLayout *layout = plainLayout(Qt::Vertical, 12);
    for (const char *style :
         {"CommonTitle", "CommonSubTitle", "CommonItemInfo", "CommonQueryTitle", "CommonQueryText",
          "CommonSubTitleInverted", "CommonBodyTextInverted", "CommonSingleTitleInverted"})
        layout->addItem(label(QLatin1String(style), style));
    auto *variants =
        label(QStringLiteral("The longest of three variants that fits, but this one is far too long for "
                             "any screen\u009cThe longest variant that fits\u009cShort"),
              "CommonTitle");
    variants->setTextElide(true);
    layout->addItem(variants);
    return page({panel(layout, "CommonPanel")});
}

MSceneWindow *buttons()
{
    QGraphicsLinearLayout *column = plainLayout(Qt::Vertical, 12);
    for (const char *style : {"CommonSingleButton", "MDialogPrimaryButton", "MDialogButton"}) {
        auto *button = new MButton(QLatin1String(style));
        button->setStyleName(QLatin1String(style));
        column->addItem(button);
        column->setAlignment(button, Qt::AlignCenter);
    }
    auto *disabled = new MButton(QStringLiteral("Disabled"));
    disabled->setEnabled(false);
    column->addItem(disabled);
    column->setAlignment(disabled, Qt::AlignCenter);

    QGraphicsLinearLayout *switches = plainLayout(Qt::Horizontal, 12);
    for (const auto &[checked, enabled] : {std::pair(false, true), {true, true}, {false, false}}) {
        auto *button = new MButton;
        button->setViewType(MButton::switchType);
        button->setChecked(checked);
        button->setEnabled(enabled);
        switches->addItem(button);
    }
    switches->addStretch();
    return page({panel(column, "CommonPanel"), panel(switches, "CommonSmallPanel")});
}

MSceneWindow *pictures()
{
    auto *grid = new QGraphicsGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(12);
    int cell = 0;
    for (const char *id : {"icon-m-content-note-inverse", "icon-m-content-nfc-inverse",
                           "icon-m-content-url-inverse",  "icon-m-content-avatar-placeholder-inverse",
                           "icon-m-content-sms-inverse",  "icon-m-content-ruvo-store-inverse",
                           "icon-m-service-nfc",          "icon-m-bluetooth-phone",
                           "icon-m-bluetooth-computer",   "icon-m-bluetooth-network",
                           "icon-m-bluetooth-headset",    "icon-m-bluetooth-speaker",
                           "icon-m-bluetooth-microphone", "icon-m-bluetooth-video",
                           "icon-m-bluetooth-keyboard",   "icon-m-bluetooth-mouse",
                           "icon-m-bluetooth-gamepad",    "icon-m-bluetooth-camera",
                           "icon-m-bluetooth-printer",    "icon-m-bluetooth-wearable",
                           "icon-m-bluetooth-toy",        "icon-m-bluetooth-health",
                           "icon-m-bluetooth-generic",    "icon-m-placeholder"}) {
        grid->addItem(image(id, "CommonMainIcon"), cell / 6, cell % 6, Qt::AlignCenter);
        ++cell;
    }
    QGraphicsLinearLayout *banners = plainLayout(Qt::Vertical, 12);
    for (const char *id : {"quenzotouch-nfc-banner-landscape", "quenzotouch-nfc-banner-portrait"}) {
        auto *banner = image(id, id);
        // Smaller than it is, so that both fit on every page.
        banner->setMinimumWidth(0);
        banner->setMaximumWidth(440);
        banners->addItem(banner);
    }
    return page({panel(grid, "CommonPanel"), panel(banners, "CommonPanel")});
}

MSceneWindow *progress()
{
    QGraphicsLinearLayout *names = plainLayout(Qt::Vertical);
    auto *sender =
        label(QStringLiteral("Receiving from a phone whose owner gave it a long name"), "CommonTitle");
    sender->setTextElide(true);
    names->addItem(sender);
    QGraphicsLinearLayout *file = plainLayout(Qt::Horizontal);
    auto *name = label(QStringLiteral("holiday.jpeg"), "CommonSubTitle");
    name->setTextElide(true);
    file->addItem(name);
    file->addStretch(1);
    file->addItem(label(QStringLiteral("3/5 MB"), "CommonItemInfo"));
    names->addItem(file);

    QGraphicsLinearLayout *bar = plainLayout(Qt::Horizontal);
    bar->addItem(image("icon-m-content-avatar-placeholder-inverse", "CommonThumbnail"));
    auto *indicator = new MProgressIndicator(nullptr, MProgressIndicator::barType);
    indicator->setStyleName(QStringLiteral("CommonProgressBarInverted"));
    indicator->setMaximum(5);
    indicator->setValue(3);
    bar->addItem(indicator);
    bar->setStretchFactor(indicator, 1);
    bar->setAlignment(indicator, Qt::AlignVCenter);

    QGraphicsLinearLayout *rest = plainLayout(Qt::Horizontal);
    rest->addItem(label(QStringLiteral("01:25 left"), "CommonSubTitle"));
    rest->addStretch();
    rest->addItem(new MProgressIndicator(nullptr, MProgressIndicator::spinnerType));
    return page({panel(names, "CommonPanel"), panel(bar, "CommonPanel"), panel(rest, "CommonSmallPanel")});
}

MSceneWindow *question()
{
    auto *box = new MMessageBox(QStringLiteral("Connect to headset?"),
                                QStringLiteral("The device was touched with this phone."),
                                M::OkButton | M::CancelButton);
    box->setIconId(QStringLiteral("icon-m-bluetooth-headset"));
    return box;
}

MSceneWindow *waiting()
{
    auto *box = new MMessageBox(QStringLiteral("Waiting"),
                                QStringLiteral("Hold the phones together until the other one has answered."),
                                M::CancelButton);
    box->setProgressIndicatorVisible(true);
    return box;
}

MSceneWindow *query(const QString &title, const QString &description, const QString &detail, bool more)
{
    auto *box = new MMessageBox(QString(), M::YesButton | M::NoButton);
    auto *central = new MWidget;
    auto *layout = new MLayout;
    auto *policy = new MLinearLayoutPolicy(layout, Qt::Vertical);
    policy->addItem(image("icon-m-content-url-inverse", "CommonQueryIcon"), Qt::AlignCenter);
    for (const auto &[text, style] : {std::pair(title, "CommonQueryTitle"),
                                      {description, "CommonQueryText"},
                                      {detail, "CommonSubTitleInverted"}}) {
        auto *line = label(text, style);
        line->setWordWrap(true);
        line->setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        line->setAlignment(Qt::AlignCenter);
        policy->addItem(line, Qt::AlignCenter);
    }
    auto *spacer = new MWidgetController;
    spacer->setStyleName(QStringLiteral("CommonXLargeSpacer"));
    policy->addItem(spacer);
    central->setLayout(layout);
    box->setCentralWidget(central);
    if (more)
        box->addButton(QStringLiteral("Change application"));
    return box;
}

MSceneWindow *content()
{
    return query(QStringLiteral("Web link"), QStringLiteral("Opening hours"),
                 QStringLiteral("https://museum.example/opening-hours"), true);
}

MSceneWindow *longContent()
{
    return query(longText().left(80), longText(), longText().repeated(4), true);
}

MSceneWindow *selection()
{
    auto *dialog = new MDialog(QStringLiteral("Select application"), M::OkButton);
    dialog->setTitleBarIconId(QStringLiteral("icon-m-service-nfc"));
    auto *model = new QStandardItemModel(0, 1, dialog);
    for (int i = 1; i <= 30; ++i) {
        auto *row = new QStandardItem;
        const auto icon = i % 2 ? QStringLiteral("icon-m-content-note-inverse")
                                : QStringLiteral("icon-m-content-ruvo-store-inverse");
        row->setData(QStringList{icon, QStringLiteral("Application %1").arg(i)}, Qt::DisplayRole);
        model->appendRow(row);
    }
    auto *list = new MList;
    list->setItemModel(model);
    list->setCellCreator(new ApplicationCreator);
    list->setSelectionMode(MList::SingleSelection);
    list->selectItem(model->index(1, 0));

    QGraphicsLinearLayout *column = plainLayout(Qt::Vertical);
    auto *text =
        label(QStringLiteral("These applications can open what the tag holds."), "CommonBodyTextInverted");
    text->setWordWrap(true);
    column->addItem(text);
    column->addItem(list);
    auto *central = new MWidget;
    central->setLayout(column);
    dialog->setCentralWidget(central);
    return dialog;
}

} // namespace

QList<Page> pages()
{
    return {
        {QStringLiteral("texts"), texts},         {QStringLiteral("buttons"), buttons},
        {QStringLiteral("pictures"), pictures},   {QStringLiteral("progress"), progress},
        {QStringLiteral("question"), question},   {QStringLiteral("waiting"), waiting},
        {QStringLiteral("content"), content},     {QStringLiteral("long-content"), longContent},
        {QStringLiteral("selection"), selection},
    };
}
