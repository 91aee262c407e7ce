// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QGraphicsLayout>
#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

#include <DialogHelperWidget>
#include <MButton>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MWindow>
#include <SimpleSheet>

using ConnUi::DialogHelperWidget;
using ConnUi::SimpleSheet;

namespace {

// As sheets are derived: what the content is made of is at hand as soon as somebody needs it.
class Sheet : public SimpleSheet
{
public:
    void setText(const QString &text)
    {
        ensureContent();
        label->setText(text);
    }

    MLabel *label = nullptr;
    int created = 0;

protected:
    void createContent() override
    {
        ++created;
        label = new MLabel;
        setCentralWidget(new DialogHelperWidget(label));
    }
};

// Ends with last.
// A window with a sheet that is higher, and with a button at its end.
struct HighSheet
{
    HighSheet()
    {
        auto *content = new MWidget;
        auto *policy = new MLinearLayoutPolicy(new MLayout(content), Qt::Vertical);
        auto *filling = new MWidget;
        filling->setMinimumHeight(1000);
        policy->addItem(filling);
        policy->addItem(last);
        sheet.setRejectButtonText(QStringLiteral("Done"));
        sheet.setCentralWidget(content);
        window.resize(320, 200);
        sheet.appear(&window);
        window.show();
    }

    MWindow window;
    SimpleSheet sheet;
    MButton *const last = new MButton(QStringLiteral("last"));
};

MButton *rejectButton(const SimpleSheet &sheet)
{
    for (QGraphicsItem *item : sheet.childItems()) {
        for (QGraphicsItem *child : item->childItems())
            if (auto *button = dynamic_cast<MButton *>(child))
                return button;
    }
    return nullptr;
}

} // namespace

class TestSimpleSheet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void settersWorkRightAfterConstruction();
    void contentIsMadeWhenTheSheetAppears();
    void contentIsMadeOnce();
    void newContentReplacesTheOld();
    void plainSheetHasNoContent();
    void headerShowsTitleAndButton();
    void buttonClosesTheSheet();
    void contentLiesBelowTheHeader_data();
    void contentLiesBelowTheHeader();
    void contentThatDoesNotFitScrolls();
    void pageKeysScrollTheContentWhateverHasTheFocus();
    void sheetTakesItsContentAlong();
};

void TestSimpleSheet::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestSimpleSheet::settersWorkRightAfterConstruction()
{
    Sheet sheet;
    sheet.setText(QStringLiteral("text"));
    QCOMPARE(sheet.label->text(), QStringLiteral("text"));
    QVERIFY(sheet.centralWidget());
}

void TestSimpleSheet::contentIsMadeWhenTheSheetAppears()
{
    MWindow window;
    Sheet sheet;
    QCOMPARE(sheet.created, 0);
    QCOMPARE(sheet.centralWidget(), nullptr);
    sheet.appear(&window);
    QCOMPARE(sheet.created, 1);
    QVERIFY(sheet.centralWidget()->isVisible());
}

void TestSimpleSheet::contentIsMadeOnce()
{
    MWindow window;
    Sheet sheet;
    sheet.setText(QStringLiteral("one"));
    sheet.appear(&window);
    sheet.disappear();
    sheet.appear(&window);
    sheet.setText(QStringLiteral("two"));
    QCOMPARE(sheet.created, 1);
}

void TestSimpleSheet::newContentReplacesTheOld()
{
    SimpleSheet sheet;
    const QPointer<QGraphicsWidget> first(new MLabel);
    sheet.setCentralWidget(first);
    QCOMPARE(sheet.centralWidget(), first);
    auto *second = new MLabel;
    sheet.setCentralWidget(second);
    QVERIFY(!first);
    QCOMPARE(sheet.centralWidget(), second);
    sheet.setCentralWidget(nullptr);
    QCOMPARE(sheet.centralWidget(), nullptr);
}

void TestSimpleSheet::plainSheetHasNoContent()
{
    MWindow window;
    SimpleSheet sheet;
    sheet.appear(&window);
    QCOMPARE(sheet.centralWidget(), nullptr);
}

void TestSimpleSheet::headerShowsTitleAndButton()
{
    SimpleSheet sheet;
    QCOMPARE(sheet.title(), QString());
    QCOMPARE(sheet.rejectButtonText(), QString());
    MButton *button = rejectButton(sheet);
    QVERIFY(button);
    QVERIFY(!button->isVisible());

    sheet.setTitle(QStringLiteral("Title"));
    sheet.setRejectButtonText(QStringLiteral("Done"));
    QCOMPARE(sheet.title(), QStringLiteral("Title"));
    QCOMPARE(sheet.rejectButtonText(), QStringLiteral("Done"));
    QCOMPARE(button->text(), QStringLiteral("Done"));
    QVERIFY(button->isVisible());
}

void TestSimpleSheet::buttonClosesTheSheet()
{
    MWindow window;
    SimpleSheet sheet;
    sheet.setRejectButtonText(QStringLiteral("Done"));
    sheet.appear(&window);
    QSignalSpy disappeared(&sheet, &MSceneWindow::disappeared);
    rejectButton(sheet)->click();
    QCOMPARE(disappeared.size(), 1);
    QVERIFY(!sheet.sceneManager());
}

void TestSimpleSheet::contentLiesBelowTheHeader_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("portrait") << QSize(480, 854) << Qt::LeftToRight;
    QTest::newRow("landscape") << QSize(854, 480) << Qt::LeftToRight;
    QTest::newRow("right to left") << QSize(480, 854) << Qt::RightToLeft;
}

void TestSimpleSheet::contentLiesBelowTheHeader()
{
    QFETCH(QSize, size);
    QFETCH(Qt::LayoutDirection, direction);
    Sheet sheet;
    sheet.setLayoutDirection(direction);
    sheet.setTitle(
        QStringLiteral("A title that is much longer than the narrow side of any telephone is wide"));
    sheet.setRejectButtonText(QStringLiteral("Done"));
    sheet.setText(QStringLiteral("text"));
    sheet.resize(size);
    sheet.layout()->activate();

    const auto geometry = [&](const QGraphicsWidget *widget) {
        return widget->mapRectToItem(&sheet, widget->rect());
    };
    const QRectF button = geometry(rejectButton(sheet));
    const QRectF content = geometry(sheet.centralWidget());
    const QRectF page(QPointF(), size);
    QVERIFY(page.contains(button));
    QVERIFY(page.contains(content));
    QVERIFY(button.height() >= 48);
    QVERIFY(content.top() >= button.bottom());
    QCOMPARE(content.top(), geometry(rejectButton(sheet)->parentWidget()).bottom());
    QCOMPARE(content.width(), page.width());
    QCOMPARE(button.center().x() > page.center().x(), direction == Qt::LeftToRight);
    // The content stands at the top, not in the middle of what is left.
    QVERIFY(geometry(sheet.label).bottom() < page.center().y());
}

void TestSimpleSheet::contentThatDoesNotFitScrolls()
{
    HighSheet high;
    const SimpleSheet &sheet = high.sheet;
    MButton *const last = high.last;
    QVERIFY(QTest::qWaitForWindowActive(&high.window));
    QCOMPARE(sheet.size(), QSizeF(320, 200));
    const auto place = [](const QGraphicsWidget *widget) { return widget->mapRectToScene(widget->rect()); };
    QTRY_VERIFY(place(last).top() >= 1000);
    const QRectF header = place(rejectButton(sheet));
    last->setFocus(Qt::TabFocusReason);
    QVERIFY(place(&sheet).contains(place(last)));
    QVERIFY(place(last).top() >= header.bottom());
    QCOMPARE(place(rejectButton(sheet)), header);
}

void TestSimpleSheet::pageKeysScrollTheContentWhateverHasTheFocus()
{
    HighSheet high;
    const SimpleSheet &sheet = high.sheet;
    MButton *const last = high.last;
    QVERIFY(QTest::qWaitForWindowActive(&high.window));
    const QList<QGraphicsWidget *> focused{&high.sheet, rejectButton(sheet), last};
    for (QGraphicsWidget *widget : focused) {
        widget->setFocus(Qt::OtherFocusReason);
        QTest::keyClick(high.window.viewport(), Qt::Key_PageUp);
        const qreal before = last->scenePos().y();
        QTest::keyClick(high.window.viewport(), Qt::Key_PageDown);
        QVERIFY(last->scenePos().y() < before);
    }
}

void TestSimpleSheet::sheetTakesItsContentAlong()
{
    auto *sheet = new Sheet;
    sheet->setText(QStringLiteral("text"));
    const QPointer<MLabel> label(sheet->label);
    delete sheet;
    QVERIFY(!label);
}

QTEST_MAIN(TestSimpleSheet)
#include "tst_simplesheet.moc"
