// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QTest>

#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MWidgetController>

class TestMLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void verticalPolicyPutsItemsBelowOneAnother();
    void smallItemIsAligned();
    void horizontalPolicyIsMirroredInRightToLeft();
    void wrappedTextGetsItsHeight();
    void laterPolicyReplacesEarlier();
};

namespace {

MWidgetController *spacer()
{
    auto *widget = new MWidgetController;
    widget->setStyleName(QStringLiteral("CommonMainIcon"));
    return widget;
}

} // namespace

void TestMLayout::verticalPolicyPutsItemsBelowOneAnother()
{
    MWidget widget;
    auto *layout = new MLayout(&widget);
    auto *policy = new MLinearLayoutPolicy(layout, Qt::Vertical);
    policy->setSpacing(10);
    MWidgetController *first = spacer();
    MWidgetController *second = spacer();
    policy->addItem(first);
    policy->addItem(second);
    QCOMPARE(layout->count(), 2);
    QCOMPARE(layout->itemAt(1), second);
    QCOMPARE(widget.effectiveSizeHint(Qt::PreferredSize), QSizeF(48, 106));
    widget.setGeometry(0, 0, 48, 106);
    QCOMPARE(first->geometry(), QRectF(0, 0, 48, 48));
    QCOMPARE(second->geometry(), QRectF(0, 58, 48, 48));
}

void TestMLayout::smallItemIsAligned()
{
    MWidget widget;
    auto *policy = new MLinearLayoutPolicy(new MLayout(&widget), Qt::Vertical);
    MWidgetController *item = spacer();
    policy->setSpacing(0);
    policy->addItem(item, Qt::AlignCenter);
    policy->addItem(new MLabel(QStringLiteral("x")));
    widget.setGeometry(0, 0, 148, 200);
    QCOMPARE(item->geometry().left(), 50);
}

void TestMLayout::horizontalPolicyIsMirroredInRightToLeft()
{
    MWidget widget;
    auto *policy = new MLinearLayoutPolicy(new MLayout(&widget), Qt::Horizontal);
    MWidgetController *item = spacer();
    policy->addItem(item);
    policy->addStretch();
    widget.setGeometry(0, 0, 300, 48);
    QCOMPARE(item->geometry().left(), 0);
    widget.setLayoutDirection(Qt::RightToLeft);
    widget.layout()->activate();
    QCOMPARE(item->geometry().right(), 300);
}

void TestMLayout::wrappedTextGetsItsHeight()
{
    MWidget widget;
    auto *policy = new MLinearLayoutPolicy(new MLayout(&widget), Qt::Vertical);
    auto *label = new MLabel(QStringLiteral("one two three four five six seven eight nine ten"));
    label->setWordWrap(true);
    policy->addItem(label, Qt::AlignCenter);
    const qreal wide = widget.effectiveSizeHint(Qt::PreferredSize, QSizeF(800, -1)).height();
    QVERIFY(widget.effectiveSizeHint(Qt::PreferredSize, QSizeF(100, -1)).height() >= 4 * wide);
    QVERIFY(widget.effectiveSizeHint(Qt::MinimumSize, QSizeF(100, -1)).height() >= 4 * wide);
}

void TestMLayout::laterPolicyReplacesEarlier()
{
    MWidget widget;
    auto *layout = new MLayout(&widget);
    (new MLinearLayoutPolicy(layout, Qt::Vertical))->addItem(spacer());
    auto *policy = new MLinearLayoutPolicy(layout, Qt::Horizontal);
    policy->addItem(spacer());
    QCOMPARE(layout->orientation(), Qt::Horizontal);
    QCOMPARE(layout->count(), 2);
}

QTEST_MAIN(TestMLayout)
#include "tst_mlayout.moc"
