// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QGraphicsLinearLayout>
#include <QGraphicsScene>

#include <MWidget>

#include "touchtest.h"

namespace {

/** Counts how often it is asked for a size. */
class CountingWidget : public MWidget
{
public:
    using MWidget::MWidget;
    using MWidget::updateGeometry;

    mutable int times = 0;

protected:
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &) const override
    {
        ++times;
        return which == Qt::MaximumSize ? QSizeF(1000, 1000) : QSizeF(30, 20);
    }
};

} // namespace

class TestMWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void noSizeIsComputedOutsideAScene();
    void widgetInASceneTakesItsPreferredSize();
    void sizeChangeReachesTheLayout();
};

void TestMWidget::noSizeIsComputedOutsideAScene()
{
    CountingWidget widget;
    widget.updateGeometry();
    widget.setContentsMargins(1, 2, 3, 4);
    QCOMPARE(widget.times, 0);
    QCOMPARE(widget.preferredSize(), QSizeF(30, 20));
}

void TestMWidget::widgetInASceneTakesItsPreferredSize()
{
    MWidget parent;
    auto *widget = new CountingWidget(&parent);
    widget->updateGeometry();
    QGraphicsScene scene;
    scene.addItem(&parent);
    QCOMPARE(widget->size(), QSizeF(30, 20));
    scene.removeItem(&parent);
}

void TestMWidget::sizeChangeReachesTheLayout()
{
    MWidget parent;
    auto *layout = new QGraphicsLinearLayout(&parent);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *widget = new CountingWidget;
    layout->addItem(widget);
    QCOMPARE(parent.preferredSize(), QSizeF(30, 20));
    widget->setPreferredWidth(50);
    QCOMPARE(parent.preferredSize(), QSizeF(50, 20));
}

QTEST_MAIN(TestMWidget)
#include "tst_mwidget.moc"
