// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <memory>

#include <QAccessible>
#include <QApplication>
#include <QGraphicsLinearLayout>
#include <QItemSelectionModel>
#include <QSignalSpy>
#include <QStringListModel>

#include <MAbstractCellCreator>
#include <MImageWidget>
#include <MLabel>
#include <MList>
#include <MListItem>
#include <MMessageBox>
#include <MProgressIndicator>
#include <MSceneWindow>

#include "screenreader.h"
#include "touchtest.h"

namespace {

const auto focused = QStringLiteral("object:state-changed:focused");
const auto announcement = QStringLiteral("object:announcement");

class LabelCreator : public MAbstractCellCreator<MListItem>
{
public:
    void updateCell(const QModelIndex &index, MWidget *cell) const override
    {
        auto layout = new QGraphicsLinearLayout(Qt::Horizontal);
        layout->addItem(new MLabel(index.data().toString()));
        cell->setLayout(layout);
    }
};

// A page with what a program puts on one.
class Page : public MSceneWindow
{
public:
    Page()
    {
        auto layout = new QGraphicsLinearLayout(Qt::Vertical, this);
        for (QGraphicsWidget *widget : QList<QGraphicsWidget *>{&label, &button, &onOff, &progress, &picture})
            layout->addItem(widget);
        layout->addStretch();
        onOff.setViewType(MButton::switchType);
        onOff.setAccessibleName(QStringLiteral("Airplane"));
        setAccessibleName(QStringLiteral("Settings"));
        picture.setImage(QStringLiteral("icon-m-service-nfc"));
        progress.setMaximum(40);
    }

    MLabel label{QStringLiteral("Welcome")};
    MButton button{QStringLiteral("Start")};
    MButton onOff;
    MProgressIndicator progress;
    MImageWidget picture;
};

} // namespace

class TestMAccessible : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void pageIsReadFromTopToBottom();
    void emptyTextAndPictureWithoutNameAreLeftOut();
    void namedPictureIsRead();
    void buttonIsPressed();
    void disabledButtonIsNotPressed();
    void switchTellsWhetherItIsOn();
    void progressTellsItsValue();
    void spinnerIsBusy();
    void questionHasNameAndDescription();
    void questionWithoutTitleIsCalledByItsFirstText();
    void whatStandsBelowAQuestionIsOutOfReach();
    void questionTakesTheFocusAndGivesItBack();
    void questionInABackgroundWindowIsAnnounced_data();
    void questionInABackgroundWindowIsAnnounced();
    void answeredQuestionIsGone();
    void rowsKnowTheirPlaces();
    void pressSelectsARow();
    void rowIsSelectedBeforeAnybodySeesIt();
    void rowsThatLeaveAreGone();
    void rectanglesAreWhereTheUserSeesThem_data();
    void rectanglesAreWhereTheUserSeesThem();
    void scrolledAwayIsNotShowing();
    void announcementsArePolite();
    void longestVariantIsSpoken();
    void foreignTextIsSpokenAsItIsDrawn();
    void deletedWhilePressed();
    void windowWithoutAManagerHasNoContents();

private:
    std::unique_ptr<ScreenReader> reader;
    std::unique_ptr<MWindow> window;
    std::unique_ptr<Page> page;
};

void TestMAccessible::initTestCase()
{
    failOnWarningsExceptOfThingsThatAreGone();
    reader = std::make_unique<ScreenReader>();
}

void TestMAccessible::init()
{
    failOnWarningsExceptOfThingsThatAreGone();
    window = std::make_unique<MWindow>();
    window->setWindowTitle(QStringLiteral("Program"));
    page = std::make_unique<Page>();
    page->appear(window.get());
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    reader->listen();
}

void TestMAccessible::cleanup()
{
    page.reset();
    window.reset();
}

void TestMAccessible::cleanupTestCase()
{
    reader.reset();
}

void TestMAccessible::pageIsReadFromTopToBottom()
{
    const SpokenNode tree = reader->tree();
    QCOMPARE(tree.children.size(), 1);
    const SpokenNode &program = tree.children.first();
    QCOMPARE(program.name, QStringLiteral("Program"));
    QVERIFY(program.is("active"));
    QCOMPARE(program.children.size(), 1);
    const SpokenNode &settings = program.children.first();
    QCOMPARE(settings.name, QStringLiteral("Settings"));
    QStringList read;
    for (const SpokenNode &node : settings.children)
        read.append(node.role + QLatin1Char(' ') + node.name);
    QCOMPARE(read, QStringList({QStringLiteral("label Welcome"), QStringLiteral("push button Start"),
                                QStringLiteral("check box Airplane"), QStringLiteral("progress bar ")}));
}

void TestMAccessible::emptyTextAndPictureWithoutNameAreLeftOut()
{
    page->label.setText(QString());
    const SpokenNode tree = reader->tree();
    QVERIFY(!tree.find("label"));
    QVERIFY(!tree.find("image"));
}

void TestMAccessible::namedPictureIsRead()
{
    page->picture.setAccessibleName(QStringLiteral("A sunset"));
    const SpokenNode tree = reader->tree();
    const SpokenNode *picture = tree.find("image");
    QVERIFY(picture);
    QCOMPARE(picture->name, QStringLiteral("A sunset"));
}

void TestMAccessible::buttonIsPressed()
{
    QSignalSpy clicked(&page->button, &MButton::clicked);
    QVERIFY(reader->press(QStringLiteral("Start")));
    QTRY_COMPARE(clicked.count(), 1);
    page->button.setText(QStringLiteral("Stop"));
    QVERIFY(reader->hears(QStringLiteral("object:property-change:accessible-name"), QStringLiteral("Stop")));
    QVERIFY(!reader->press(QStringLiteral("Start")));
}

void TestMAccessible::disabledButtonIsNotPressed()
{
    QSignalSpy clicked(&page->button, &MButton::clicked);
    page->button.setEnabled(false);
    const SpokenNode tree = reader->tree();
    QVERIFY(!tree.find("push button")->is("enabled"));
    QVERIFY(!tree.find("push button")->is("sensitive"));
    (void)reader->press(QStringLiteral("Start"));
    (void)reader->tree();
    QCOMPARE(clicked.count(), 0);
}

void TestMAccessible::switchTellsWhetherItIsOn()
{
    QVERIFY(!reader->tree().find("check box")->is("checked"));
    QVERIFY(reader->press(QStringLiteral("Airplane")));
    QTRY_VERIFY(page->onOff.isChecked());
    QVERIFY(reader->hears(QStringLiteral("object:state-changed:checked"), QStringLiteral("Airplane")));
    QVERIFY(reader->tree().find("check box")->is("checked"));
}

void TestMAccessible::progressTellsItsValue()
{
    page->progress.setValue(10);
    QCOMPARE(reader->tree().find("progress bar")->value, QList<double>({0, 40, 10}));
    page->progress.setAccessibleName(QStringLiteral("Copying"));
    page->progress.setValue(20);
    QVERIFY(
        reader->hears(QStringLiteral("object:property-change:accessible-value"), QStringLiteral("Copying")));
}

void TestMAccessible::spinnerIsBusy()
{
    page->progress.setViewType(MProgressIndicator::spinnerType);
    const SpokenNode tree = reader->tree();
    QVERIFY(tree.find("progress bar")->is("busy"));
    QVERIFY(tree.find("progress bar")->value.isEmpty());
}

void TestMAccessible::questionHasNameAndDescription()
{
    MMessageBox box(QStringLiteral("Pair?"), QStringLiteral("The headset wants to connect."),
                    M::OkButton | M::CancelButton);
    box.appear(window.get());
    const SpokenNode tree = reader->tree();
    const SpokenNode *dialog = tree.find("dialog");
    QVERIFY(dialog);
    QCOMPARE(dialog->name, QStringLiteral("Pair?"));
    QCOMPARE(dialog->description, QStringLiteral("The headset wants to connect."));
    QVERIFY(dialog->is("modal"));
    QVERIFY(dialog->is("showing"));
    QCOMPARE(dialog->names("push button"), QStringList({QStringLiteral("OK"), QStringLiteral("Cancel")}));
    QSignalSpy finished(&box, &MDialog::finished);
    QVERIFY(reader->press(QStringLiteral("Cancel")));
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(box.result(), int(M::CancelButton));
}

void TestMAccessible::questionWithoutTitleIsCalledByItsFirstText()
{
    MDialog dialog(QString(), M::OkButton);
    auto content = new MWidget;
    auto layout = new QGraphicsLinearLayout(Qt::Vertical, content);
    layout->addItem(new MLabel(QStringLiteral("Web link on tag")));
    layout->addItem(new MLabel(QStringLiteral("A menu")));
    layout->addItem(new MLabel(QStringLiteral("https://www.example.com/")));
    dialog.setCentralWidget(content);
    dialog.appear(window.get());
    const SpokenNode tree = reader->tree();
    QCOMPARE(tree.find("dialog")->name, QStringLiteral("Web link on tag"));
    QCOMPARE(tree.find("dialog")->description, QStringLiteral("A menu\nhttps://www.example.com/"));
}

void TestMAccessible::whatStandsBelowAQuestionIsOutOfReach()
{
    MMessageBox box(QStringLiteral("Pair?"), QString(), M::OkButton);
    box.appear(window.get());
    QVERIFY(!reader->tree().find("panel"));
    QVERIFY(!reader->press(QStringLiteral("Start")));
    QCOMPARE(reader->at(window->mapToGlobal(window->mapFromScene(page->button.sceneBoundingRect().center()))),
             QStringLiteral("Pair?"));
}

void TestMAccessible::questionTakesTheFocusAndGivesItBack()
{
    QVERIFY(reader->focus(QStringLiteral("Airplane")));
    QVERIFY(reader->hears(focused, QStringLiteral("Airplane")));
    QVERIFY(reader->tree().find("check box")->is("focused"));

    MMessageBox box(QStringLiteral("Pair?"), QStringLiteral("The headset wants to connect."), M::OkButton);
    box.appear(window.get());
    QVERIFY(reader->hears(QStringLiteral("object:state-changed:showing"), QStringLiteral("Pair?")));
    QVERIFY(reader->hears(focused, QStringLiteral("Pair?")));
    QVERIFY(reader->tree().find("dialog")->is("focused"));
    (void)reader->events();
    box.reject();
    QVERIFY(reader->hears(focused, QStringLiteral("Airplane")));
}

void TestMAccessible::questionInABackgroundWindowIsAnnounced_data()
{
    QTest::addColumn<M::StandardButtons>("buttons");
    QTest::addColumn<bool>("isNotice");
    QTest::addColumn<int>("politeness");
    QTest::newRow("question") << M::StandardButtons(M::YesButton | M::NoButton) << false << 2;
    QTest::newRow("notice") << M::StandardButtons(M::OkButton) << false << 1;
    QTest::newRow("notice with a choice") << M::StandardButtons(M::YesButton | M::NoButton) << true << 1;
}

void TestMAccessible::questionInABackgroundWindowIsAnnounced()
{
    QFETCH(M::StandardButtons, buttons);
    QFETCH(bool, isNotice);
    QFETCH(int, politeness);
    MWindow other;
    other.show();
    MMessageBox box(QStringLiteral("Pair?"), QStringLiteral("The headset wants to connect."), buttons);
    box.setNotice(isNotice);
    QCOMPARE(box.isNotice(), isNotice);
    QVERIFY(!other.isActiveWindow());
    box.appear(&other);
    QVERIFY(reader->hears(announcement, QStringLiteral("Pair?\nThe headset wants to connect.")));
    for (const SpokenEvent &event : reader->events())
        if (event.type == announcement)
            QCOMPARE(event.detail, politeness);
}

void TestMAccessible::answeredQuestionIsGone()
{
    MMessageBox box(QStringLiteral("Pair?"), QString(), M::OkButton);
    box.appear(window.get());
    QVERIFY(reader->tree().find("dialog"));
    QVERIFY(reader->press(QStringLiteral("OK")));
    QTRY_VERIFY(!box.sceneManager());
    const SpokenNode tree = reader->tree();
    QVERIFY(!tree.find("dialog"));
    QVERIFY(tree.find("panel", QStringLiteral("Settings")));
}

void TestMAccessible::rowsKnowTheirPlaces()
{
    QStringList names;
    for (int i = 0; i < 300; ++i)
        names.append(QStringLiteral("Row %1").arg(i));
    QStringListModel model(names);
    auto list = new MList;
    list->setItemModel(&model);
    list->setCellCreator(new LabelCreator);
    list->setSelectionMode(MList::SingleSelection);
    MDialog dialog(QStringLiteral("Choose"), M::OkButton);
    dialog.setCentralWidget(list);
    dialog.appear(window.get());
    list->selectItem(model.index(2, 0));

    const SpokenNode tree = reader->tree();
    const SpokenNode *spoken = tree.find("list");
    QVERIFY(spoken);
    QCOMPARE(spoken->children.size(), 300);
    QCOMPARE(spoken->names("list item"), names);
    QCOMPARE(spoken->children.at(299).index, 299);
    QVERIFY(spoken->children.at(0).is("selectable"));
    QVERIFY(!spoken->children.at(0).is("selected"));
    QVERIFY(spoken->children.at(2).is("selected"));
    QVERIFY(spoken->children.at(2).is("showing"));
    QVERIFY(!spoken->children.at(299).is("showing"));
    QCOMPARE(reader->at(spoken->children.at(1).rect.center()), QStringLiteral("Row 1"));
}

void TestMAccessible::pressSelectsARow()
{
    QStringListModel model({QStringLiteral("Viewer"), QStringLiteral("Notes"), QStringLiteral("Browser")});
    auto list = new MList;
    list->setItemModel(&model);
    list->setCellCreator(new LabelCreator);
    list->setSelectionMode(MList::SingleSelection);
    MDialog dialog(QStringLiteral("Choose"), M::OkButton);
    dialog.setCentralWidget(list);
    dialog.appear(window.get());
    QVERIFY(reader->press(QStringLiteral("Browser")));
    QTRY_COMPARE(list->selectionModel()->currentIndex().row(), 2);
    QVERIFY(reader->hears(QStringLiteral("object:state-changed:selected"), QStringLiteral("Browser")));
    list->setFocus(Qt::TabFocusReason);
    QVERIFY(reader->hears(focused, QStringLiteral("Browser")));
    TouchDriver(window.get()).key(Qt::Key_Up);
    QVERIFY(reader->hears(focused, QStringLiteral("Notes")));
}

void TestMAccessible::rowIsSelectedBeforeAnybodySeesIt()
{
    QStringListModel model({QStringLiteral("Viewer"), QStringLiteral("Notes")});
    MList list;
    list.setItemModel(&model);
    list.setCellCreator(new LabelCreator);
    list.setSelectionMode(MList::SingleSelection);
    list.selectItem(model.index(1, 0));
    QCOMPARE(list.selectionModel()->currentIndex().row(), 1);
}

void TestMAccessible::rowsThatLeaveAreGone()
{
    QStringListModel model({QStringLiteral("Viewer"), QStringLiteral("Notes"), QStringLiteral("Browser")});
    auto list = new MList;
    list->setItemModel(&model);
    list->setCellCreator(new LabelCreator);
    MDialog dialog(QStringLiteral("Choose"), M::OkButton);
    dialog.setCentralWidget(list);
    dialog.appear(window.get());
    QCOMPARE(reader->tree().find("list")->children.size(), 3);
    model.removeRows(0, 2);
    QCOMPARE(reader->tree().find("list")->names("list item"), QStringList{QStringLiteral("Browser")});
    list->setItemModel(nullptr);
    QCOMPARE(reader->tree().find("list")->children.size(), 0);
}

void TestMAccessible::rectanglesAreWhereTheUserSeesThem_data()
{
    QTest::addColumn<int>("angle");
    for (const int angle : {0, 90, 180, 270})
        QTest::addRow("%d degrees", angle) << angle;
}

void TestMAccessible::rectanglesAreWhereTheUserSeesThem()
{
    QFETCH(int, angle);
    window->move(60, 40);
    QTRY_COMPARE(window->mapToGlobal(QPoint()), QPoint(60, 40));
    window->sceneManager()->setOrientationAngle(M::OrientationAngle(angle));
    const SpokenNode tree = reader->tree();
    const SpokenNode *button = tree.find("push button");
    const QRect seen = page->button.mapRectToScene(page->button.rect()).toRect().translated(60, 40);
    QCOMPARE(button->rect, seen);
    QCOMPARE(reader->at(seen.center()), QStringLiteral("Start"));
    QCOMPARE(tree.find("panel")->rect, QRect(QPoint(60, 40), window->size()));
}

void TestMAccessible::scrolledAwayIsNotShowing()
{
    auto content = new MWidget;
    auto layout = new QGraphicsLinearLayout(Qt::Vertical, content);
    auto top = new MButton(QStringLiteral("Top"));
    auto bottom = new MButton(QStringLiteral("Bottom"));
    layout->addItem(top);
    auto space = new MWidget;
    space->setMinimumHeight(3000);
    layout->addItem(space);
    layout->addItem(bottom);
    MDialog dialog(QStringLiteral("Long"), M::OkButton);
    dialog.setCentralWidget(content);
    dialog.appear(window.get());
    const SpokenNode tree = reader->tree();
    QVERIFY(tree.find("push button", QStringLiteral("Top"))->is("showing"));
    QVERIFY(!tree.find("push button", QStringLiteral("Bottom"))->is("showing"));
}

void TestMAccessible::announcementsArePolite()
{
    window->announce(QStringLiteral("2 more questions"));
    QVERIFY(reader->hears(announcement, QStringLiteral("2 more questions")));
    for (const SpokenEvent &event : reader->events())
        if (event.type == announcement)
            QCOMPARE(event.detail, 1);
}

void TestMAccessible::longestVariantIsSpoken()
{
    page->button.setText(QStringLiteral("Choose another application\u009cOther"));
    page->label.setText(QStringLiteral("Near Field Communication\u009cNFC"));
    page->onOff.setAccessibleName(QStringLiteral("Airplane mode\u009cAirplane"));
    const SpokenNode tree = reader->tree();
    QCOMPARE(tree.find("push button")->name, QStringLiteral("Choose another application"));
    QCOMPARE(tree.find("label")->name, QStringLiteral("Near Field Communication"));
    QCOMPARE(tree.find("check box")->name, QStringLiteral("Airplane mode"));
}

void TestMAccessible::foreignTextIsSpokenAsItIsDrawn()
{
    page->label.setForeignText(true);
    page->label.setText(QStringLiteral("safe\u009cevil"));
    QVERIFY(reader->tree().find("label")->name.contains(QLatin1String("evil")));
}

void TestMAccessible::deletedWhilePressed()
{
    auto box = new MMessageBox(QStringLiteral("Pair?"), QString(), M::OkButton);
    connect(box, &MDialog::finished, box, [box] { delete box; });
    box->appear(window.get());
    QPointer<MMessageBox> alive(box);
    QVERIFY(reader->press(QStringLiteral("OK")));
    QTRY_VERIFY(!alive);
    QVERIFY(reader->tree().find("panel"));
}

void TestMAccessible::windowWithoutAManagerHasNoContents()
{
    auto manager = std::make_unique<MSceneManager>();
    MWindow other(manager.get());
    const QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&other);
    QVERIFY(accessible);
    manager.reset();
    QCOMPARE(accessible->childCount(), 0);
}

QTEST_MAIN(TestMAccessible)
#include "tst_maccessible.moc"
