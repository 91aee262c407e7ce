// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QGraphicsLayout>
#include <QPointer>
#include <QtTest>

#include <MLabel>
#include <MProgressIndicator>
#include <SimpleCheckBoxLabel>

using ConnUi::SimpleCheckBoxLabel;

class TestSimpleCheckBoxLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void rowShowsTextAndButton();
    void rowOwnsTheButton();
    void indicatorIsHiddenAtFirst();
    void indicatorTakesItsPlaceOnlyWhenShown();
    void everythingFitsInTheRow_data();
    void everythingFitsInTheRow();
};

void TestSimpleCheckBoxLabel::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestSimpleCheckBoxLabel::rowShowsTextAndButton()
{
    auto *button = new MButton;
    const SimpleCheckBoxLabel row(button, QStringLiteral("Text"), MButton::switchType);
    QCOMPARE(row.text(), QStringLiteral("Text"));
    QCOMPARE(button->viewType(), MButton::switchType);
    QVERIFY(button->isCheckable());
    QCOMPARE(button->parentItem(), &row);
    QVERIFY(button->isVisible());
}

void TestSimpleCheckBoxLabel::rowOwnsTheButton()
{
    const QPointer<MButton> button(new MButton);
    delete new SimpleCheckBoxLabel(button, QStringLiteral("Text"), MButton::switchType);
    QVERIFY(!button);
}

void TestSimpleCheckBoxLabel::indicatorIsHiddenAtFirst()
{
    SimpleCheckBoxLabel row(new MButton, QStringLiteral("Text"), MButton::switchType);
    QVERIFY(!row.showProgressIndicator());
    row.setShowProgressIndicator(true);
    QVERIFY(row.showProgressIndicator());
    row.hide();
    QVERIFY(row.showProgressIndicator());
    row.setShowProgressIndicator(false);
    QVERIFY(!row.showProgressIndicator());
}

void TestSimpleCheckBoxLabel::indicatorTakesItsPlaceOnlyWhenShown()
{
    SimpleCheckBoxLabel row(new MButton, QStringLiteral("Text"), MButton::switchType);
    row.resize(480, 72);
    row.layout()->activate();
    QGraphicsLayoutItem *label = row.layout()->itemAt(0);
    const qreal alone = label->geometry().width();
    row.setShowProgressIndicator(true);
    row.layout()->activate();
    QVERIFY(label->geometry().width() < alone);
    row.setShowProgressIndicator(false);
    row.layout()->activate();
    QCOMPARE(label->geometry().width(), alone);
}

void TestSimpleCheckBoxLabel::everythingFitsInTheRow_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("left to right") << Qt::LeftToRight;
    QTest::newRow("right to left") << Qt::RightToLeft;
}

void TestSimpleCheckBoxLabel::everythingFitsInTheRow()
{
    QFETCH(Qt::LayoutDirection, direction);
    auto *button = new MButton;
    SimpleCheckBoxLabel row(button,
                            QStringLiteral("A label that is much longer than the row is wide, "
                                           "so that it takes a second line and perhaps a third"),
                            MButton::switchType);
    row.setLayoutDirection(direction);
    row.setShowProgressIndicator(true);
    row.resize(480, row.effectiveSizeHint(Qt::PreferredSize, QSizeF(480, -1)).height());
    row.layout()->activate();
    for (int i = 0; i < row.layout()->count(); ++i)
        QVERIFY(row.rect().contains(row.layout()->itemAt(i)->geometry()));
    QCOMPARE(button->geometry().center().x() > row.rect().center().x(), direction == Qt::LeftToRight);
    QVERIFY(button->size().height() >= 48);
}

QTEST_MAIN(TestSimpleCheckBoxLabel)
#include "tst_simplecheckboxlabel.moc"
