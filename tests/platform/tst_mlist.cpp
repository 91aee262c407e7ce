// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <utility>

#include <QElapsedTimer>
#include <QGraphicsLinearLayout>
#include <QItemSelectionModel>
#include <QScroller>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStringListModel>

#include <MAbstractCellCreator>
#include <MLabel>
#include <MList>
#include <MListItem>

#include "touchtest.h"

using namespace TouchTest;

namespace {

class Creator : public MAbstractCellCreator<MListItem>
{
public:
    explicit Creator(int *count = nullptr) : updates(count) {}

    void updateCell(const QModelIndex &index, MWidget *cell) const override
    {
        static_cast<MListItem *>(cell)->setStyleName(QStringLiteral("CommonPanelInverted"));
        auto *layout = new QGraphicsLinearLayout(Qt::Horizontal);
        auto *label = new MLabel(index.data().toString());
        layout->addItem(label);
        cell->setLayout(layout);
        if (updates)
            ++*updates;
    }

private:
    int *const updates;
};

/** A model of any length that holds nothing. */
class LongModel : public QAbstractListModel
{
public:
    explicit LongModel(int rows) : rows(rows) {}

    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : rows;
    }
    QVariant data(const QModelIndex &index, int) const override { return QString::number(index.row()); }

private:
    const int rows;
};

/** A list in a window, as high as the window. */
struct ShownList
{
    explicit ShownList(QAbstractItemModel *model, int *updates = nullptr)
    {
        list->setItemModel(model);
        list->setCellCreator(new Creator(updates));
        list->setSelectionMode(MList::SingleSelection);
        window.scene()->addItem(list);
        list->setGeometry(0, 0, 480, 854);
        window.show();
    }

    QStringList texts() const
    {
        QStringList texts;
        for (const MLabel *label : visibleBelow<MLabel>(list))
            texts.append(label->text());
        return texts;
    }

    QPointF row(int number) const
    {
        for (const MListItem *item : visibleBelow<MListItem>(list))
            if (visibleBelow<MLabel>(const_cast<MListItem *>(item)).first()->text() ==
                QString::number(number))
                return window.mapFromScene(item->sceneBoundingRect().center());
        return QPointF();
    }

    MWindow window;
    MList *list = new MList;
};

} // namespace

class TestMList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void setPropertiesAreReturned();
    void onlyVisibleCellsExist();
    void scrollingRecyclesCells();
    void recycledCellsComeBackEmpty();
    void fingerScrolls();
    void fingerThatScrollsSelectsNothing();
    void tapSelects();
    void noSelectionModeSelectsNothing();
    void selectItemRevealsRow();
    void foreignAndInvalidIndexesAreIgnored();
    void keysMoveSelection();
    void modelChangesAreFollowed();
    void rowsInsertedBelowTheScreenUpdateNoCell();
    void deletedModelLeavesEmptyList();
    void cellSizeIsThatOfFreshItem();
    void listInDialogLeavesButtonsInReach();
    void wheelScrolls();
};

void TestMList::setPropertiesAreReturned()
{
    MList list;
    QVERIFY(!list.itemModel());
    QVERIFY(!list.selectionModel());
    QVERIFY(!list.cellCreator());
    QCOMPARE(list.selectionMode(), MList::NoSelection);
    QCOMPARE(int(MList::SingleSelection), 1);
    LongModel model(3);
    auto *creator = new Creator;
    list.setItemModel(&model);
    list.setCellCreator(creator);
    list.setSelectionMode(MList::SingleSelection);
    QCOMPARE(list.itemModel(), &model);
    QCOMPARE(list.cellCreator(), creator);
    QCOMPARE(list.selectionMode(), MList::SingleSelection);
    QCOMPARE(list.selectionModel()->model(), &model);
}

void TestMList::onlyVisibleCellsExist()
{
    for (const int rows : {20, 10'000, 10'000'000}) {
        LongModel model(rows);
        int updates = 0;
        ShownList shown(&model, &updates);
        const auto cells = visibleBelow<MListItem>(shown.list).size();
        QVERIFY(cells >= 10);
        QVERIFY2(cells <= 15, qPrintable(QString::number(cells)));
        QVERIFY2(updates <= 40, qPrintable(QString::number(updates)));
    }
}

void TestMList::scrollingRecyclesCells()
{
    LongModel model(10'000);
    ShownList shown(&model);
    QSet<QGraphicsItem *> seen;
    for (int row = 0; row < 10'000; row += 97) {
        shown.list->selectItem(model.index(row, 0));
        for (MListItem *item : visibleBelow<MListItem>(shown.list))
            seen.insert(item);
        QVERIFY(shown.texts().contains(QString::number(row)));
    }
    QVERIFY2(seen.size() <= 30, qPrintable(QString::number(seen.size())));
}

void TestMList::recycledCellsComeBackEmpty()
{
    LongModel model(1'000);
    ShownList shown(&model);
    shown.list->selectItem(model.index(900, 0));
    for (MListItem *item : visibleBelow<MListItem>(shown.list))
        QCOMPARE(item->childItems().size(), 1);
}

void TestMList::fingerScrolls()
{
    LongModel model(1'000);
    ShownList shown(&model);
    QVERIFY(activate(&shown.window));
    QCOMPARE(shown.texts().first(), QStringLiteral("0"));
    TouchDriver finger(&shown.window);
    finger.press({200, 700}).move({200, 100});
    QTRY_VERIFY(!shown.texts().contains(QStringLiteral("0")));
    finger.lift();
    QVERIFY(visibleBelow<MListItem>(shown.list).size() <= 15);
}

void TestMList::fingerThatScrollsSelectsNothing()
{
    LongModel model(1'000);
    ShownList shown(&model);
    QVERIFY(activate(&shown.window));
    TouchDriver finger(&shown.window);
    finger.drag({200, 700}, {200, 100});
    QVERIFY(!shown.list->selectionModel()->hasSelection());
    // The next touch is one again.
    QScroller::scroller(shown.list->childItems().first()->toGraphicsObject())->stop();
    const int row = visibleBelow<MLabel>(shown.list).at(3)->text().toInt();
    finger.tap(shown.row(row));
    QCOMPARE(shown.list->selectionModel()->selectedRows().first().row(), row);
}

void TestMList::tapSelects()
{
    LongModel model(20);
    ShownList shown(&model);
    TouchDriver(&shown.window).tap(shown.row(3));
    QCOMPARE(shown.list->selectionModel()->selectedRows(), QModelIndexList{model.index(3, 0)});
    TouchDriver(&shown.window).tap(shown.row(5));
    QCOMPARE(shown.list->selectionModel()->selectedRows(), QModelIndexList{model.index(5, 0)});
}

void TestMList::noSelectionModeSelectsNothing()
{
    LongModel model(20);
    ShownList shown(&model);
    shown.list->setSelectionMode(MList::NoSelection);
    TouchDriver(&shown.window).tap(shown.row(3));
    QVERIFY(!shown.list->selectionModel()->hasSelection());
}

void TestMList::selectItemRevealsRow()
{
    LongModel model(10'000);
    MList list;
    list.setItemModel(&model);
    list.setCellCreator(new Creator);
    // Before there is a size to reveal it in.
    list.selectItem(model.index(9'999, 0));
    list.resize(480, 854);
    QCOMPARE(visibleBelow<MLabel>(&list).last()->text(), QStringLiteral("9999"));
    list.selectItem(model.index(1, 0));
    QCOMPARE(list.selectionModel()->selectedRows().first().row(), 1);
    list.resize(480, 400);
    QStringList texts;
    for (const MLabel *label : visibleBelow<MLabel>(&list))
        texts.append(label->text());
    QVERIFY(texts.contains(QStringLiteral("0")));
    QVERIFY(texts.contains(QStringLiteral("1")));
}

void TestMList::foreignAndInvalidIndexesAreIgnored()
{
    LongModel model(20);
    LongModel other(20);
    ShownList shown(&model);
    shown.list->selectItem(QModelIndex());
    shown.list->selectItem(other.index(2, 0));
    QVERIFY(!shown.list->selectionModel()->hasSelection());
    MList empty;
    empty.selectItem(model.index(1, 0));
    QVERIFY(!empty.selectionModel());
}

void TestMList::keysMoveSelection()
{
    LongModel model(50);
    ShownList shown(&model);
    QVERIFY(activate(&shown.window));
    const auto selected = [&] { return shown.list->selectionModel()->selectedRows().value(0).row(); };
    TouchDriver(&shown.window).key(Qt::Key_Tab);
    QVERIFY(shown.list->hasFocus());
    const QList<std::pair<Qt::Key, int>> moves{{Qt::Key_Down, 0},  {Qt::Key_Down, 1},      {Qt::Key_Up, 0},
                                               {Qt::Key_Up, 0},    {Qt::Key_PageDown, 11}, {Qt::Key_End, 49},
                                               {Qt::Key_Down, 49}, {Qt::Key_PageUp, 38},   {Qt::Key_Home, 0}};
    for (const auto &[key, row] : moves) {
        TouchDriver(&shown.window).key(key);
        QCOMPARE(selected(), row);
        QVERIFY(shown.texts().contains(QString::number(row)));
    }
}

void TestMList::modelChangesAreFollowed()
{
    QStringListModel model({QStringLiteral("a"), QStringLiteral("b")});
    ShownList shown(&model);
    QCOMPARE(shown.texts(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    model.setData(model.index(0), QStringLiteral("A"));
    QCOMPARE(shown.texts().first(), QStringLiteral("A"));
    model.insertRow(2);
    model.setData(model.index(2), QStringLiteral("c"));
    QTRY_COMPARE(shown.texts().size(), 3);
    model.removeRows(0, 2);
    QTRY_COMPARE(shown.texts(), QStringList{QStringLiteral("c")});
    model.setStringList({});
    QTRY_VERIFY(shown.texts().isEmpty());
}

void TestMList::rowsInsertedBelowTheScreenUpdateNoCell()
{
    QStringList rows;
    for (int i = 0; i < 100; ++i)
        rows.append(QString::number(i));
    QStringListModel model(rows);
    int updates = 0;
    ShownList shown(&model, &updates);
    QTRY_VERIFY(shown.texts().contains(QStringLiteral("0")));
    const int before = updates;
    model.insertRow(100);
    model.setData(model.index(100), QStringLiteral("added"));
    const int ofTheChange = updates - before;
    model.insertRow(101);
    QCoreApplication::processEvents();
    QCOMPARE(updates, before + ofTheChange);

    shown.list->selectItem(model.index(100));
    QTRY_VERIFY(shown.texts().contains(QStringLiteral("added")));
    QTRY_COMPARE(shown.list->preferredHeight(), 102 * shown.list->cellCreator()->cellSize().height());
}

void TestMList::deletedModelLeavesEmptyList()
{
    auto *model = new LongModel(20);
    ShownList shown(model);
    delete model;
    QVERIFY(!shown.list->itemModel());
    QVERIFY(shown.texts().isEmpty());
    tap(&shown.window, shown.list);
}

void TestMList::cellSizeIsThatOfFreshItem()
{
    const Creator creator;
    QCOMPARE(creator.cellSize(), MListItem().effectiveSizeHint(Qt::PreferredSize));
    QVERIFY(creator.cellSize().height() >= 48);
}

void TestMList::listInDialogLeavesButtonsInReach()
{
    LongModel model(10'000);
    for (const QSize &size : {QSize(480, 854), QSize(854, 480)}) {
        MWindow window;
        window.resize(size);
        window.show();
        MDialog dialog(QStringLiteral("Select"), M::OkButton);
        auto *list = new MList;
        list->setItemModel(&model);
        list->setCellCreator(new Creator);
        list->setSelectionMode(MList::SingleSelection);
        list->selectItem(model.index(1, 0));
        dialog.setCentralWidget(list);
        dialog.appear(&window);
        QCoreApplication::processEvents();
        const MButton *button = viewOf(&dialog, dialog.button(M::OkButton));
        QVERIFY(window.rect().contains(button->sceneBoundingRect().toRect()));
        QVERIFY(list->sceneBoundingRect().bottom() <= button->sceneBoundingRect().top());
        QVERIFY(list->size().height() >= 144);
        QVERIFY(visibleBelow<MListItem>(list).size() <= 15);
        QCOMPARE(visibleBelow<MLabel>(list).first()->text(), QStringLiteral("0"));
    }
}

void TestMList::wheelScrolls()
{
    LongModel model(100);
    ShownList shown(&model);
    TouchDriver(&shown.window).wheel({200, 200}, -240);
    QVERIFY(!shown.texts().contains(QStringLiteral("0")));
}

QTEST_MAIN(TestMList)
#include "tst_mlist.moc"
