// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <limits>

#include <QGraphicsLinearLayout>
#include <QItemSelectionModel>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QtTest>

#include <MButton>
#include <MImageWidget>
#include <MLabel>
#include <MList>
#include <MWindow>
#include <NfcApplicationSelectionDialog>

#include "applicationsfolder.h"
#include "catalogue.h"
#include "shownwidgets.h"
#include "ui/applicationitemcreator.h"

using namespace ConnUi;

namespace {

// The dialog on the screen of a phone.
class Shown
{
public:
    explicit Shown(const QStringList &applications, int selected = 0)
        : dialog(new NfcApplicationSelectionDialog(applications, selected))
        , finished(dialog.data(), &MDialog::finished)
    {
        window.show();
        dialog->appear(&window);
        ready = QTest::qWaitForWindowExposed(&window);
    }

    // Below the explanation, whether or not there is anything to be seen of it.
    MList *list() const { return dynamic_cast<MList *>(dialog->centralWidget()->layout()->itemAt(1)); }

    QStringList rows() const
    {
        QStringList names;
        for (const MListItem *row : shownWidgets<MListItem>(dialog.data()))
            names += shownTexts<MLabel>(row);
        return names;
    }

    int selectedRow() const
    {
        const QModelIndexList selected = list()->selectionModel()->selectedRows();
        return selected.isEmpty() ? -1 : selected.first().row();
    }

    void key(Qt::Key key) { QTest::keyClick(window.viewport(), key); }

    void pressOk() const { shownWidgets<MButton>(dialog.data()).value(0)->click(); }

    MWindow window;
    const QScopedPointer<NfcApplicationSelectionDialog> dialog;
    QSignalSpy finished;
    bool ready;
};

QList<QVariantList> once(int result)
{
    return {{result}};
}

} // namespace

class TestNfcApplicationSelectionDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void dialogExplainsItself();
    void rowShowsIconAndName_data();
    void rowShowsIconAndName();
    void iconIsDrawnFromItsFile();
    void applicationWithoutDesktopFileIsLeftOut_data();
    void applicationWithoutDesktopFileIsLeftOut();
    void applicationWithoutNameOrIconIsLeftOut_data();
    void applicationWithoutNameOrIconIsLeftOut();
    void applicationsAreListedInTheirOrder_data();
    void applicationsAreListedInTheirOrder();
    void indexPreselectsARow_data();
    void indexPreselectsARow();
    void indexCountsUsableApplications();
    void preselectedRowIsInSight();
    void longListIsReadWhileItIsShown();
    void rowThatHasNotBeenReadCanBePreselected_data();
    void rowThatHasNotBeenReadCanBePreselected();
    void choiceStaysWhileRowsArrive();
    void applicationFarDownWithoutDesktopFileIsLeftOut();
    void tapChooses_data();
    void tapChooses();
    void selectingByKeysChoosesNothing();
    void selectionIsTakenDownAtClosing_data();
    void selectionIsTakenDownAtClosing();
    void emptyListCanBeClosed();
    void recycledCellShowsItsNewRowAlone();
    void cellWithoutAListIsEmpty();
    void cellsAreAsLargeAsAFreshOne();
    void dialogIsDestroyedWhenDone();

private:
    const Catalogue english;
};

void TestNfcApplicationSelectionDialog::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestNfcApplicationSelectionDialog::dialogExplainsItself()
{
    const ApplicationsFolder applications;
    applications.install(QStringLiteral("viewer"), QStringLiteral("Viewer"),
                         QStringLiteral("icon-m-service-nfc"));
    const Shown shown({QStringLiteral("viewer")});
    QVERIFY(shown.ready);
    QCOMPARE(shownTexts<MLabel>(shown.dialog.data()),
             QStringList({QStringLiteral("Choose application"),
                          QStringLiteral("These applications can open what is on the tag."),
                          QStringLiteral("Viewer")}));
    QCOMPARE(shown.dialog->title(), QStringLiteral("Choose application"));
    QCOMPARE(shown.dialog->titleBarIconId(), QStringLiteral("icon-m-service-nfc"));
    QCOMPARE(shownWidgets<MImageWidget>(shown.dialog.data()).constFirst()->imageId(),
             QStringLiteral("icon-m-service-nfc"));

    const MLabel *explanation = shownWidgets<MLabel>(shown.dialog.data()).at(1);
    QCOMPARE(explanation->styleName(), QStringLiteral("CommonBodyTextInverted"));
    QVERIFY(explanation->wordWrap());
    QCOMPARE(shown.list()->selectionMode(), MList::SingleSelection);

    QCOMPARE(shown.dialog->buttons().size(), 1);
    QCOMPARE(shown.dialog->buttons().first()->standardButton(), M::OkButton);
    QCOMPARE(shownTexts<MButton>(shown.dialog.data()), QStringList(QStringLiteral("OK")));

    const auto *layout = dynamic_cast<QGraphicsLinearLayout *>(shown.dialog->centralWidget()->layout());
    QVERIFY(layout);
    QCOMPARE(layout->orientation(), Qt::Vertical);
    QCOMPARE(layout->spacing(), 0.0);
    QCOMPARE(layout->count(), 2);
    const QRectF whole(QPointF(), shown.dialog->centralWidget()->size());
    QCOMPARE(layout->contentsRect(), whole);
}

void TestNfcApplicationSelectionDialog::rowShowsIconAndName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QStringLiteral("Viewer");
    QTest::newRow("markup") << QStringLiteral("<b>Viewer</b> &amp; more");
    QTest::newRow("Arabic") << QStringLiteral("عارض الصور");
    QTest::newRow("length variants") << QStringLiteral("The viewer of everything\u009cViewer");
}

void TestNfcApplicationSelectionDialog::rowShowsIconAndName()
{
    QFETCH(QString, name);
    const ApplicationsFolder applications;
    applications.install(QStringLiteral("viewer"), name, QStringLiteral("icon-m-content-url-inverse"));
    const Shown shown({QStringLiteral("viewer")});
    QVERIFY(shown.ready);
    const QList<MListItem *> rows = shownWidgets<MListItem>(shown.dialog.data());
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first()->styleName(), QStringLiteral("CommonPanelInverted"));

    const QList<MImageWidget *> icons = shownWidgets<MImageWidget>(rows.first());
    QCOMPARE(icons.size(), 1);
    QCOMPARE(icons.first()->imageId(), QStringLiteral("icon-m-content-url-inverse"));
    QCOMPARE(icons.first()->styleName(), QStringLiteral("CommonMainIcon"));
    const QList<MLabel *> labels = shownWidgets<MLabel>(rows.first());
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first()->text(), name);
    QCOMPARE(labels.first()->styleName(), QStringLiteral("CommonSingleTitleInverted"));

    // The icon stands in front of the name, both in the middle of the row.
    const auto *layout = dynamic_cast<QGraphicsLinearLayout *>(rows.first()->layout());
    QVERIFY(layout);
    QCOMPARE(layout->orientation(), Qt::Horizontal);
    QCOMPARE(layout->spacing(), 0.0);
    QCOMPARE(layout->contentsRect().size(), layout->geometry().size());
    QCOMPARE(layout->alignment(icons.first()), Qt::AlignCenter);
    QCOMPARE(layout->alignment(labels.first()), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(icons.first()->geometry().right(), labels.first()->geometry().left());
    QVERIFY(labels.first()->geometry().right() <= rows.first()->size().width());
}

void TestNfcApplicationSelectionDialog::iconIsDrawnFromItsFile()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("icon.png"));
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(Qt::magenta);
    QVERIFY(picture.save(file));
    const ApplicationsFolder applications;
    applications.install(QStringLiteral("viewer"), QStringLiteral("Viewer"), file);
    Shown shown({QStringLiteral("viewer")});
    QVERIFY(shown.ready);
    const MImageWidget *icon = shownWidgets<MImageWidget>(shown.dialog.data()).at(1);
    QCOMPARE(icon->imageId(), QString());
    QCOMPARE(icon->pixmap().toImage().pixelColor(5, 5), QColor(Qt::magenta));
    const QPoint middle = icon->mapToScene(icon->rect().center()).toPoint();
    QCOMPARE(shown.window.grab().toImage().pixelColor(middle), QColor(Qt::magenta));
}

void TestNfcApplicationSelectionDialog::applicationWithoutDesktopFileIsLeftOut_data()
{
    QTest::addColumn<QString>("id");
    for (const char *id : {"missing", "", "..", "../hostile", "sub/viewer", "/etc/passwd", "vi%1s", "ä"})
        QTest::newRow(id) << QString::fromUtf8(id);
}

void TestNfcApplicationSelectionDialog::applicationWithoutDesktopFileIsLeftOut()
{
    QFETCH(QString, id);
    const ApplicationsFolder applications;
    applications.install(QStringLiteral("viewer"), QStringLiteral("Viewer"),
                         QStringLiteral("icon-m-service-nfc"));
    applications.install(QStringLiteral(".."), QStringLiteral("Hostile"),
                         QStringLiteral("icon-m-service-nfc"));
    const QByteArray warning =
        "NfcApplicationSelectionDialog: No desktop file provided for '" + id.toLocal8Bit() + "'";
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    const Shown shown({id, QStringLiteral("viewer")});
    QVERIFY(shown.ready);
    QCOMPARE(shown.rows(), QStringList(QStringLiteral("Viewer")));
}

void TestNfcApplicationSelectionDialog::applicationWithoutNameOrIconIsLeftOut_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no name") << QByteArray("[Desktop Entry]\nIcon=icon-m-service-nfc\n");
    QTest::newRow("empty name") << QByteArray("[Desktop Entry]\nName=\nIcon=icon-m-service-nfc\n");
    QTest::newRow("no icon") << QByteArray("[Desktop Entry]\nName=Viewer\n");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("no desktop entry") << QByteArray("\x7f\x45\x4c\x46\0\1", 6);
}

void TestNfcApplicationSelectionDialog::applicationWithoutNameOrIconIsLeftOut()
{
    QFETCH(QByteArray, content);
    const ApplicationsFolder applications;
    applications.write(QStringLiteral("bare"), content);
    applications.install(QStringLiteral("viewer"), QStringLiteral("Viewer"),
                         QStringLiteral("icon-m-service-nfc"));
    const Shown shown({QStringLiteral("bare"), QStringLiteral("viewer")});
    QVERIFY(shown.ready);
    QCOMPARE(shown.rows(), QStringList(QStringLiteral("Viewer")));
}

void TestNfcApplicationSelectionDialog::applicationsAreListedInTheirOrder_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {0, 1, 2, 500})
        QTest::addRow("%d", count) << count;
}

void TestNfcApplicationSelectionDialog::applicationsAreListedInTheirOrder()
{
    QFETCH(int, count);
    const ApplicationsFolder applications;
    QStringList ids;
    for (int i = 0; i < count; ++i) {
        // Neither the ids nor the names are in the order of the alphabet.
        ids.append(QStringLiteral("app") + QString::number((i + 7) % count));
        applications.install(ids.last(), QStringLiteral("Name ") + QString::number(count - i),
                             QStringLiteral("icon-m-service-nfc"));
    }
    Shown shown(ids);
    QVERIFY(shown.ready);
    QTRY_COMPARE(shown.list()->itemModel()->rowCount(), count);
    QVERIFY(shown.rows().size() <= 20);

    // Every row can be brought into sight and reads as it should.
    for (int i = 0; i < count; ++i) {
        shown.list()->selectItem(shown.list()->itemModel()->index(i, 0));
        QVERIFY(shown.rows().contains(QStringLiteral("Name ") + QString::number(count - i)));
    }
    shown.pressOk();
    QCOMPARE(shown.finished, once(M::OkButton));
    QCOMPARE(shown.dialog->selectedApplication(), ids.value(count - 1));
}

void TestNfcApplicationSelectionDialog::indexPreselectsARow_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("row");
    QTest::newRow("first") << 0 << 0;
    QTest::newRow("middle") << 1 << 1;
    QTest::newRow("last") << 2 << 2;
    QTest::newRow("as many as there are") << 3 << 0;
    QTest::newRow("far beyond") << std::numeric_limits<int>::max() << 0;
    QTest::newRow("none") << -1 << -1;
    QTest::newRow("far below") << std::numeric_limits<int>::min() << -1;
}

void TestNfcApplicationSelectionDialog::indexPreselectsARow()
{
    QFETCH(int, index);
    QFETCH(int, row);
    const ApplicationsFolder applications;
    const QStringList ids{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    for (const QString &id : ids)
        applications.install(id, id.toUpper(), QStringLiteral("icon-m-service-nfc"));
    const Shown shown(ids, index);
    QVERIFY(shown.ready);
    QCOMPARE(shown.selectedRow(), row);
    QCOMPARE(shown.dialog->selectedApplication(), QString());
    shown.pressOk();
    QCOMPARE(shown.finished, once(M::OkButton));
    QCOMPARE(shown.dialog->selectedApplication(), ids.value(row));
    QCOMPARE(shown.dialog->property("selectedApplication").toString(), ids.value(row));
}

void TestNfcApplicationSelectionDialog::indexCountsUsableApplications()
{
    const ApplicationsFolder applications;
    applications.install(QStringLiteral("bare"), QString(), QString());
    applications.install(QStringLiteral("b"), QStringLiteral("B"), QStringLiteral("icon-m-service-nfc"));
    applications.install(QStringLiteral("c"), QStringLiteral("C"), QStringLiteral("icon-m-service-nfc"));
    const QStringList ids{QStringLiteral("bare"), QStringLiteral("b"), QStringLiteral("c")};
    const Shown second(ids, 1);
    second.pressOk();
    QCOMPARE(second.dialog->selectedApplication(), QStringLiteral("c"));
    const Shown beyond(ids, 2);
    beyond.pressOk();
    QCOMPARE(beyond.dialog->selectedApplication(), QStringLiteral("b"));
}

namespace {

QStringList installMany(const ApplicationsFolder &applications, int count)
{
    QStringList ids;
    for (int i = 0; i < count; ++i) {
        ids.append(QStringLiteral("app") + QString::number(i));
        applications.install(ids.last(), QStringLiteral("Name ") + QString::number(i),
                             QStringLiteral("icon-m-service-nfc"));
    }
    return ids;
}

} // namespace

void TestNfcApplicationSelectionDialog::longListIsReadWhileItIsShown()
{
    const ApplicationsFolder applications;
    const QStringList ids = installMany(applications, 1000);
    NfcApplicationSelectionDialog dialog(ids, 0);
    auto *list = dynamic_cast<MList *>(dialog.centralWidget()->layout()->itemAt(1));
    QCOMPARE(list->itemModel()->rowCount(), 100);
    QTRY_COMPARE(list->itemModel()->rowCount(), 1000);
    for (int i = 0; i < 1000; ++i) {
        const QStringList row = list->itemModel()->index(i, 0).data().toStringList();
        QCOMPARE(row, QStringList({QStringLiteral("icon-m-service-nfc"),
                                   QStringLiteral("Name ") + QString::number(i), ids[i]}));
    }
}

void TestNfcApplicationSelectionDialog::rowThatHasNotBeenReadCanBePreselected_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("row");
    QTest::newRow("last that is read at once") << 99 << 99;
    QTest::newRow("first that is not") << 100 << 100;
    QTest::newRow("last") << 499 << 499;
    QTest::newRow("beyond") << 500 << 0;
}

void TestNfcApplicationSelectionDialog::rowThatHasNotBeenReadCanBePreselected()
{
    QFETCH(int, index);
    QFETCH(int, row);
    const ApplicationsFolder applications;
    const QStringList ids = installMany(applications, 500);
    NfcApplicationSelectionDialog dialog(ids, index);
    dialog.done(M::OkButton);
    QCOMPARE(dialog.selectedApplication(), ids[row]);
}

void TestNfcApplicationSelectionDialog::choiceStaysWhileRowsArrive()
{
    const ApplicationsFolder applications;
    const QStringList ids = installMany(applications, 500);
    const Shown shown(ids, 3);
    shown.list()->selectItem(shown.list()->itemModel()->index(4, 0));
    QTRY_COMPARE(shown.list()->itemModel()->rowCount(), 500);
    QCOMPARE(shown.selectedRow(), 4);
    shown.pressOk();
    QCOMPARE(shown.dialog->selectedApplication(), ids[4]);
}

void TestNfcApplicationSelectionDialog::applicationFarDownWithoutDesktopFileIsLeftOut()
{
    const ApplicationsFolder applications;
    QStringList ids = installMany(applications, 300);
    ids.insert(250, QStringLiteral("gone"));
    QTest::ignoreMessage(QtWarningMsg, "NfcApplicationSelectionDialog: No desktop file provided for 'gone'");
    const Shown shown(ids);
    QTRY_COMPARE(shown.list()->itemModel()->rowCount(), 300);
    QCOMPARE(shown.list()->itemModel()->index(250, 0).data().toStringList().value(2),
             QStringLiteral("app250"));
}

void TestNfcApplicationSelectionDialog::preselectedRowIsInSight()
{
    const ApplicationsFolder applications;
    const QStringList ids = installMany(applications, 100);
    const Shown shown(ids, 99);
    QVERIFY(shown.ready);
    QVERIFY(shown.rows().contains(QStringLiteral("Name 99")));
    QVERIFY(!shown.rows().contains(QStringLiteral("Name 0")));
}

void TestNfcApplicationSelectionDialog::tapChooses_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("preselected row") << 0 << QStringLiteral("a");
    QTest::newRow("another row") << 1 << QStringLiteral("b");
}

void TestNfcApplicationSelectionDialog::tapChooses()
{
    QFETCH(int, row);
    QFETCH(QString, chosen);
    const ApplicationsFolder applications;
    const QStringList ids{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    for (const QString &id : ids)
        applications.install(id, id.toUpper(), QStringLiteral("icon-m-service-nfc"));
    const Shown shown(ids);
    QVERIFY(shown.ready);
    const MListItem *touched = shownWidgets<MListItem>(shown.dialog.data()).at(row);
    QTest::mouseClick(shown.window.viewport(), Qt::LeftButton, {},
                      shown.window.mapFromScene(touched->mapToScene(touched->rect().center())));
    QCOMPARE(shown.finished, once(M::OkButton));
    QCOMPARE(shown.dialog->selectedApplication(), chosen);
}

void TestNfcApplicationSelectionDialog::selectingByKeysChoosesNothing()
{
    const ApplicationsFolder applications;
    const QStringList ids{QStringLiteral("a"), QStringLiteral("b")};
    for (const QString &id : ids)
        applications.install(id, id.toUpper(), QStringLiteral("icon-m-service-nfc"));
    Shown shown(ids);
    QVERIFY(shown.ready);
    shown.list()->setFocus();
    shown.key(Qt::Key_Down);
    QCOMPARE(shown.selectedRow(), 1);
    QCOMPARE(shown.finished.size(), 0);
    shown.pressOk();
    QCOMPARE(shown.dialog->selectedApplication(), QStringLiteral("b"));
}

void TestNfcApplicationSelectionDialog::selectionIsTakenDownAtClosing_data()
{
    QTest::addColumn<int>("result");
    QTest::newRow("Ok") << int(M::OkButton);
    QTest::newRow("Cancel") << int(M::CancelButton);
    QTest::newRow("none") << 0;
}

void TestNfcApplicationSelectionDialog::selectionIsTakenDownAtClosing()
{
    QFETCH(int, result);
    const ApplicationsFolder applications;
    applications.install(QStringLiteral("viewer"), QStringLiteral("Viewer"),
                         QStringLiteral("icon-m-service-nfc"));
    const Shown shown({QStringLiteral("viewer")});
    QVERIFY(shown.ready);
    QVERIFY(QMetaObject::invokeMethod(shown.dialog.data(), "done", Q_ARG(int, result)));
    QCOMPARE(shown.finished, once(result));
    QCOMPARE(shown.dialog->selectedApplication(), QStringLiteral("viewer"));
    QVERIFY(!shown.dialog->isVisible());
}

void TestNfcApplicationSelectionDialog::emptyListCanBeClosed()
{
    const Shown confirmed({});
    QVERIFY(confirmed.ready);
    QCOMPARE(shownTexts<MLabel>(confirmed.dialog.data()).size(), 2);
    confirmed.pressOk();
    QCOMPARE(confirmed.finished, once(M::OkButton));
    QCOMPARE(confirmed.dialog->selectedApplication(), QString());

    Shown dismissed({});
    dismissed.key(Qt::Key_Escape);
    QCOMPARE(dismissed.finished, once(M::CancelButton));
    QCOMPARE(dismissed.dialog->selectedApplication(), QString());
}

void TestNfcApplicationSelectionDialog::recycledCellShowsItsNewRowAlone()
{
    QStandardItemModel model;
    for (const QString &name : {QStringLiteral("A"), QStringLiteral("B")}) {
        auto *row = new QStandardItem;
        row->setData(QStringList{QStringLiteral("icon-m-service-nfc"), name, QStringLiteral("id")},
                     Qt::DisplayRole);
        model.appendRow(row);
    }
    const ApplicationItemCreator creator;
    MWidgetRecycler recycler;
    MWidget *cell = creator.createCell(model.index(0, 0), recycler);
    const auto names = [&cell] {
        QStringList texts;
        for (QGraphicsItem *child : cell->childItems())
            if (const auto *label = dynamic_cast<MLabel *>(child))
                texts.append(label->text());
        return texts;
    };
    QCOMPARE(names(), QStringList(QStringLiteral("A")));
    const qsizetype parts = cell->childItems().size();

    creator.updateCell(model.index(1, 0), cell);
    QCOMPARE(names(), QStringList(QStringLiteral("B")));
    QCOMPARE(cell->childItems().size(), parts);
    QCOMPARE(cell->layout()->count(), 2);

    recycler.recycle(cell);
    cell = creator.createCell(model.index(0, 0), recycler);
    QCOMPARE(names(), QStringList(QStringLiteral("A")));
    QCOMPARE(cell->childItems().size(), parts);
    delete cell;
}

void TestNfcApplicationSelectionDialog::cellWithoutAListIsEmpty()
{
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), 7, Qt::DisplayRole);
    const ApplicationItemCreator creator;
    MListItem cell;
    creator.updateCell(model.index(0, 0), &cell);
    for (QGraphicsItem *child : cell.childItems()) {
        if (const auto *label = dynamic_cast<MLabel *>(child))
            QCOMPARE(label->text(), QString());
        if (const auto *icon = dynamic_cast<MImageWidget *>(child))
            QCOMPARE(icon->imageId(), QString());
    }
    QCOMPARE(cell.layout()->count(), 2);
}

void TestNfcApplicationSelectionDialog::cellsAreAsLargeAsAFreshOne()
{
    QCOMPARE(ApplicationItemCreator().cellSize(), MListItem().effectiveSizeHint(Qt::PreferredSize));
}

void TestNfcApplicationSelectionDialog::dialogIsDestroyedWhenDone()
{
    MWindow window;
    window.show();
    QPointer<NfcApplicationSelectionDialog> dialog = new NfcApplicationSelectionDialog({}, 0);
    dialog->appear(&window, MSceneWindow::DestroyWhenDone);
    QTest::keyClick(window.viewport(), Qt::Key_Escape);
    QTRY_VERIFY(!dialog);
}

QTEST_MAIN(TestNfcApplicationSelectionDialog)
#include "tst_nfcapplicationselectiondialog.moc"
