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

/** One that changes the size of its list while it fills the first cell. */
class ResizingCreator : public Creator
{
public:
    explicit ResizingCreator(MList *list) : list(list) {}

    void updateCell(const QModelIndex &index, MWidget *cell) const override
    {
        if (index.row() == 0 && !std::exchange(hasResized, true))
            list->resize(480, 400);
        Creator::updateCell(index, cell);
    }

private:
    MList *const list;
    mutable bool hasResized = false;
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

/** A model that changes while somebody reads it. */
class RestlessModel : public QStringListModel
{
public:
    enum Kind { OwnRow, OtherRow, Insertion, Reset };

    RestlessModel(Kind kind, const QStringList &rows) : QStringListModel(rows), kind(kind) {}

    bool restless = true;

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (restless && !changing && index.row() == 2) {
            changing = true;
            const_cast<RestlessModel *>(this)->change(index);
            changing = kind != OwnRow;
        }
        return QStringListModel::data(index, role);
    }

private:
    void change(const QModelIndex &read)
    {
        if (kind == OwnRow)
            Q_EMIT dataChanged(read, read);
        else if (kind == OtherRow)
            setData(index(0, 0), QStringLiteral("other"));
        else if (kind == Insertion)
            insertRow(0);
        else
            setStringList({QStringLiteral("x"), QStringLiteral("y")});
    }

    const Kind kind;
    mutable bool changing = false;
};

void processAll()
{
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
}

/** A model that gives its rows away in portions of ten. */
class PortionModel : public QAbstractListModel
{
public:
    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : rows;
    }
    QVariant data(const QModelIndex &index, int) const override { return QString::number(index.row()); }
    bool canFetchMore(const QModelIndex &) const override { return rows < 50; }
    void fetchMore(const QModelIndex &) override
    {
        beginInsertRows(QModelIndex(), rows, rows + 9);
        rows += 10;
        endInsertRows();
    }

    int rows = 0;
};

/** A cell without a meta object of its own. */
class PlainCell : public MListItem
{
public:
    int mark = 4711;
};

class PlainCreator : public MAbstractCellCreator<PlainCell>
{
public:
    explicit PlainCreator(bool *allPlain) : allPlain(allPlain) {}

    void updateCell(const QModelIndex &, MWidget *cell) const override
    {
        *allPlain = *allPlain && dynamic_cast<PlainCell *>(cell);
    }

private:
    bool *const allPlain;
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

    QModelIndexList selected() const { return list->selectionModel()->selectedRows(); }

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
    void tapThatEndsAFlickSelectsNothing();
    void keyDuringAFlickIsNotUndone();
    void rowsInsertedUnderTheFingerDoNotChangeTheSelectedRow();
    void resetOrRemovalUnderTheFingerEndsThePress_data();
    void resetOrRemovalUnderTheFingerEndsThePress();
    void tapOnDisabledRowKeepsTheSelection();
    void keysSkipDisabledRows();
    void otherMouseButtonsSelectNothing();
    void resizeLeavesScrolledListWhereItIs();
    void lastOfTenMillionRowsIsReached();
    void tapOnSelectedRowIsTold();
    void heldBackRowsAreFetched();
    void slotMayReplaceTheModel();
    void modelMayChangeWhileItIsRead_data();
    void modelMayChangeWhileItIsRead();
    void slotMayCloseOrDeleteTheDialog_data();
    void slotMayCloseOrDeleteTheDialog();
    void sameCreatorAgainIsKept();
    void cellsOfAnotherClassAreNotTaken();
    void cellMayResizeTheListWhileItIsFilled();
    void chosenRowIsTicked_data();
    void chosenRowIsTicked();
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
    finger.press({200, 700}).move({200, 100});
    QTRY_VERIFY(!shown.texts().contains(QStringLiteral("0")));
    finger.lift();
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
        QVERIFY(!list->sceneBoundingRect().intersects(button->sceneBoundingRect()));
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

void TestMList::tapThatEndsAFlickSelectsNothing()
{
    LongModel model(1'000);
    ShownList shown(&model);
    QVERIFY(activate(&shown.window));
    TouchDriver(&shown.window).flick({200, 700}, {200, 100}).tap(QPointF(200, 300));
    QVERIFY(shown.selected().isEmpty());
}

void TestMList::keyDuringAFlickIsNotUndone()
{
    LongModel model(1'000);
    ShownList shown(&model);
    QVERIFY(activate(&shown.window));
    shown.list->setFocus();
    TouchDriver(&shown.window).flick({200, 700}, {200, 100}).key(Qt::Key_End);
    QCOMPARE(shown.texts().last(), QStringLiteral("999"));
    const QObject *area = shown.list->childItems().first()->toGraphicsObject();
    QCOMPARE(QScroller::scroller(area)->state(), QScroller::Inactive);
}

void TestMList::rowsInsertedUnderTheFingerDoNotChangeTheSelectedRow()
{
    QStringListModel model(
        {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
    ShownList shown(&model);
    TouchDriver finger(&shown.window);
    finger.press(shown.row(2));
    model.insertRows(0, 2);
    finger.lift();
    QCOMPARE(shown.selected().value(0).data().toString(), QStringLiteral("2"));
}

void TestMList::resetOrRemovalUnderTheFingerEndsThePress_data()
{
    QTest::addColumn<bool>("removal");
    QTest::newRow("reset") << false;
    QTest::newRow("removal") << true;
}

void TestMList::resetOrRemovalUnderTheFingerEndsThePress()
{
    QFETCH(bool, removal);
    QStringListModel model({QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")});
    ShownList shown(&model);
    QSignalSpy clicked(shown.list, &MList::itemClicked);
    TouchDriver finger(&shown.window);
    finger.press(shown.row(0));
    if (removal)
        model.removeRow(0);
    else
        model.setStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    finger.lift();
    QVERIFY(shown.selected().isEmpty());
    QVERIFY(clicked.isEmpty());
}

void TestMList::tapOnDisabledRowKeepsTheSelection()
{
    QStandardItemModel model;
    for (int i = 0; i < 4; ++i)
        model.appendRow(new QStandardItem(QString::number(i)));
    model.item(1)->setEnabled(false);
    model.item(2)->setSelectable(false);
    ShownList shown(&model);
    shown.list->selectItem(model.index(3, 0));
    for (const int row : {1, 2}) {
        TouchDriver(&shown.window).tap(shown.row(row));
        QCOMPARE(shown.selected(), QModelIndexList{model.index(3, 0)});
        shown.list->selectItem(model.index(row, 0));
        QCOMPARE(shown.selected(), QModelIndexList{model.index(3, 0)});
    }
}

void TestMList::keysSkipDisabledRows()
{
    QStandardItemModel model;
    for (int i = 0; i < 6; ++i)
        model.appendRow(new QStandardItem(QString::number(i)));
    for (const int row : {0, 2, 3, 5})
        model.item(row)->setEnabled(false);
    ShownList shown(&model);
    QVERIFY(activate(&shown.window));
    shown.list->setFocus();
    const QList<std::pair<Qt::Key, int>> moves{{Qt::Key_Down, 1}, {Qt::Key_Down, 4},     {Qt::Key_Down, 4},
                                               {Qt::Key_Up, 1},   {Qt::Key_Up, 1},       {Qt::Key_End, 4},
                                               {Qt::Key_Home, 1}, {Qt::Key_PageDown, 4}, {Qt::Key_PageUp, 1}};
    for (const auto &[key, row] : moves) {
        TouchDriver(&shown.window).key(key);
        QCOMPARE(shown.selected(), QModelIndexList{model.index(row, 0)});
    }
}

void TestMList::otherMouseButtonsSelectNothing()
{
    LongModel model(20);
    ShownList shown(&model);
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton})
        TouchDriver(&shown.window).tap(shown.row(3), button);
    QVERIFY(shown.selected().isEmpty());
    // Beside the left one, either.
    TouchDriver(&shown.window).press(shown.row(3)).press(shown.row(3), Qt::RightButton).lift();
    QVERIFY(shown.selected().isEmpty());
}

void TestMList::resizeLeavesScrolledListWhereItIs()
{
    LongModel model(1'000);
    ShownList shown(&model);
    shown.list->selectItem(model.index(2, 0));
    TouchDriver wheel(&shown.window);
    for (int i = 0; i < 20; ++i)
        wheel.wheel({200, 200}, -120);
    const QString first = shown.texts().first();
    QVERIFY(first.toInt() > 10);
    shown.list->setGeometry(0, 0, 480, 600);
    QCOMPARE(shown.texts().first(), first);
}

void TestMList::lastOfTenMillionRowsIsReached()
{
    constexpr int rows = 10'000'000;
    LongModel model(rows);
    ShownList shown(&model);
    QVERIFY(activate(&shown.window));
    shown.list->setFocus();
    TouchDriver finger(&shown.window);
    finger.key(Qt::Key_End);
    QCOMPARE(shown.selected().value(0).row(), rows - 1);
    QCOMPARE(shown.texts().last(), QString::number(rows - 1));
    QVERIFY(shown.window.rect().contains(shown.row(rows - 1).toPoint()));
    finger.tap(shown.row(rows - 3));
    QCOMPARE(shown.selected().value(0).row(), rows - 3);
    finger.press({200, 200}).move({200, 700});
    QTRY_VERIFY(shown.texts().contains(QString::number(rows - 15)));
}

void TestMList::tapOnSelectedRowIsTold()
{
    LongModel model(20);
    ShownList shown(&model);
    QSignalSpy clicked(shown.list, &MList::itemClicked);
    TouchDriver(&shown.window).tap(shown.row(3));
    QCOMPARE(clicked.count(), 1);
    TouchDriver(&shown.window).tap(shown.row(3));
    QCOMPARE(clicked.count(), 2);
    QCOMPARE(clicked.last().first().toModelIndex(), model.index(3, 0));
    shown.list->selectItem(model.index(5, 0));
    QCOMPARE(clicked.count(), 2);
    shown.list->setSelectionMode(MList::NoSelection);
    TouchDriver(&shown.window).tap(shown.row(3));
    QCOMPARE(clicked.count(), 2);
}

void TestMList::heldBackRowsAreFetched()
{
    PortionModel model;
    ShownList shown(&model);
    QTRY_COMPARE(model.rows, 20);
    shown.list->selectItem(model.index(19, 0));
    QTRY_VERIFY(model.rows > 20);
    TouchDriver wheel(&shown.window);
    for (int i = 0; i < 100; ++i)
        wheel.wheel({200, 200}, -120);
    QCOMPARE(model.rows, 50);
    QCOMPARE(shown.texts().last(), QStringLiteral("49"));
}

void TestMList::slotMayReplaceTheModel()
{
    LongModel first(20);
    LongModel second(5);
    ShownList shown(&first);
    connect(shown.list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [&] { shown.list->setItemModel(&second); });
    TouchDriver(&shown.window).tap(shown.row(3));
    QCOMPARE(shown.list->itemModel(), &second);
    QCOMPARE(shown.texts().size(), 5);
    QVERIFY(shown.selected().isEmpty());
    TouchDriver(&shown.window).tap(shown.row(4));
    QCOMPARE(shown.selected(), QModelIndexList{second.index(4, 0)});
}

void TestMList::modelMayChangeWhileItIsRead_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("own row") << int(RestlessModel::OwnRow)
                             << QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    QTest::newRow("other row") << int(RestlessModel::OtherRow)
                               << QStringList{QStringLiteral("other"), QStringLiteral("b"),
                                              QStringLiteral("c")};
    QTest::newRow("insertion") << int(RestlessModel::Insertion)
                               << QStringList{QString(), QStringLiteral("a"), QStringLiteral("b"),
                                              QStringLiteral("c")};
    QTest::newRow("reset") << int(RestlessModel::Reset)
                           << QStringList{QStringLiteral("x"), QStringLiteral("y")};
}

void TestMList::modelMayChangeWhileItIsRead()
{
    QFETCH(int, kind);
    QFETCH(QStringList, rows);
    for (const bool atFirst : {true, false}) {
        RestlessModel model(RestlessModel::Kind(kind),
                            {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
        model.restless = atFirst;
        int updates = 0;
        ShownList shown(&model, &updates);
        if (!atFirst) {
            processAll();
            model.restless = true;
            Q_EMIT model.dataChanged(model.index(2), model.index(2));
        }
        processAll();
        QCOMPARE(shown.texts(), rows);
        // A model that changes whenever it is read is not read for ever.
        const int before = updates;
        processAll();
        QCOMPARE(updates, before);
    }
}

void TestMList::slotMayCloseOrDeleteTheDialog_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<bool>("key");
    for (const char *way : {"accept", "accept and delete later", "delete"})
        for (const bool key : {false, true})
            QTest::addRow("%s by %s", way, key ? "key" : "finger") << QString::fromLatin1(way) << key;
}

void TestMList::slotMayCloseOrDeleteTheDialog()
{
    QFETCH(QString, way);
    QFETCH(bool, key);
    LongModel model(20);
    MWindow window;
    QVERIFY(activate(&window));
    QPointer<MDialog> dialog = new MDialog(M::OkButton);
    auto *list = new MList;
    list->setItemModel(&model);
    list->setCellCreator(new Creator);
    list->setSelectionMode(MList::SingleSelection);
    dialog->setCentralWidget(list);
    const bool later = way == QLatin1String("accept and delete later");
    dialog->appear(&window, later ? MDialog::DestroyWhenDone : MDialog::KeepWhenDone);
    QCoreApplication::processEvents();
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [&] {
        if (way == QLatin1String("delete"))
            delete dialog;
        else
            dialog->accept();
    });
    list->setFocus();
    if (key)
        TouchDriver(&window).key(Qt::Key_Home);
    else
        TouchDriver(&window).tap(visibleBelow<MListItem>(list).at(1));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(!dialog, later || way == QLatin1String("delete"));
    QVERIFY(!dialog || !dialog->scene());
    delete dialog;
}

void TestMList::sameCreatorAgainIsKept()
{
    LongModel model(3);
    MList list;
    auto *creator = new Creator;
    list.setItemModel(&model);
    list.setCellCreator(creator);
    list.setCellCreator(creator);
    QCOMPARE(list.cellCreator(), creator);
    QVERIFY(creator->cellSize().height() > 0);
    list.resize(480, 854);
    QCOMPARE(visibleBelow<MListItem>(&list).size(), 3);
}

void TestMList::cellsOfAnotherClassAreNotTaken()
{
    LongModel model(20);
    ShownList shown(&model);
    bool allPlain = true;
    shown.list->setCellCreator(new PlainCreator(&allPlain));
    QVERIFY(allPlain);
    QVERIFY(visibleBelow<PlainCell>(shown.list).size() >= 10);
}

void TestMList::cellMayResizeTheListWhileItIsFilled()
{
    LongModel model(3);
    ShownList shown(&model);
    shown.list->setCellCreator(new ResizingCreator(shown.list));
    processAll();
    QCOMPARE(shown.list->size().height(), 400.0);
    QCOMPARE(shown.texts(), (QStringList{QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")}));
    QCOMPARE(visibleBelow<MListItem>(shown.list).size(), 3);
}

void TestMList::chosenRowIsTicked_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("left to right") << Qt::LeftToRight;
    QTest::newRow("right to left") << Qt::RightToLeft;
}

void TestMList::chosenRowIsTicked()
{
    QFETCH(Qt::LayoutDirection, direction);
    LongModel model(3);
    ShownList shown(&model);
    shown.list->setLayoutDirection(direction);
    const qreal height = shown.list->cellCreator()->cellSize().height();
    const QRect row(0, int(height), 480, int(height));
    const QImage before = picture(shown.window.scene(), row);
    shown.list->selectItem(model.index(1, 0));
    const QImage after = picture(shown.window.scene(), row);
    // The rest of the row has one color behind the text.
    const bool isLeft = direction == Qt::RightToLeft;
    const QRect end(isLeft ? 0 : row.width() - row.height(), 0, row.height(), row.height());
    const QColor background = after.pixelColor(240, 6);
    QVERIFY(background != before.pixelColor(240, 6));
    QRect tick;
    for (int y = end.top() + 6; y <= end.bottom() - 6; ++y)
        for (int x = end.left() + 6; x <= end.right() - 6; ++x)
            if (after.pixelColor(x, y) != background)
                tick |= QRect(x, y, 1, 1);
    QVERIFY(tick.width() > 16 && tick.width() < 26);
    QVERIFY(tick.height() > 12 && tick.height() < 20);
    QVERIFY(qAbs(tick.center().x() - end.center().x()) <= 1);
    QVERIFY(qAbs(tick.center().y() - end.center().y()) <= 2);
}

QTEST_MAIN(TestMList)
#include "tst_mlist.moc"
