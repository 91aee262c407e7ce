// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QSignalSpy>

#include <MButton>

#include "touchtest.h"

using namespace TouchTest;

class TestMButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void setPropertiesAreReturned();
    void clickEmits();
    void clickTogglesCheckableButton();
    void switchIsCheckable();
    void onlyCheckableButtonIsChecked();
    void fingerPresses();
    void fingerThatLeavesDoesNotPress();
    void keysPress_data();
    void keysPress();
    void heldKeyPressesOnce();
    void disabledButtonDoesNothing();
    void slotMayDeleteButton_data();
    void slotMayDeleteButton();
    void longTextMakesButtonHigher();
    void longestVariantThatFitsIsShown();
    void switchMirrors();
    void sizeFollowsTextAndStyle();
    void formerSwitchHasItsStyleAndSizeAgain();
    void buttonThatGoesAfterAChangeOfStyleLeavesTheScene();
    void draggedSwitchGoesWhereItIsDragged_data();
    void draggedSwitchGoesWhereItIsDragged();
};

void TestMButton::sizeFollowsTextAndStyle()
{
    MButton button(QStringLiteral("A text wider than the least width"));
    const QSizeF plain = button.preferredSize();
    button.setStyleName(QStringLiteral("CommonTitle"));
    QVERIFY(button.preferredSize().width() != plain.width());
    button.setStyleName(QString());
    QCOMPARE(button.preferredSize(), plain);
    button.setText(QStringLiteral("A text that is still wider than the least width"));
    QVERIFY(button.preferredSize().width() > plain.width());
}

void TestMButton::setPropertiesAreReturned()
{
    MButton button(QStringLiteral("Call"));
    QCOMPARE(button.text(), QStringLiteral("Call"));
    button.setText(QStringLiteral("Send"));
    QCOMPARE(button.text(), QStringLiteral("Send"));
    QCOMPARE(button.viewType(), MButton::pushType);
    QVERIFY(!button.isCheckable());
    QVERIFY(!button.isChecked());
}

void TestMButton::clickEmits()
{
    MButton button;
    QSignalSpy clicked(&button, &MButton::clicked);
    QSignalSpy toggled(&button, &MButton::toggled);
    button.click();
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.first().first().toBool(), false);
    QVERIFY(toggled.isEmpty());
}

void TestMButton::clickTogglesCheckableButton()
{
    MButton button;
    button.setCheckable(true);
    QSignalSpy clicked(&button, &MButton::clicked);
    QSignalSpy toggled(&button, &MButton::toggled);
    button.click();
    QVERIFY(button.isChecked());
    QCOMPARE(toggled.count(), 1);
    QCOMPARE(toggled.first().first().toBool(), true);
    QCOMPARE(clicked.first().first().toBool(), true);
    button.setChecked(true);
    QCOMPARE(toggled.count(), 1);
    button.setChecked(false);
    QCOMPARE(toggled.count(), 2);
    QCOMPARE(clicked.count(), 1);
    button.setChecked(true);
    button.setCheckable(false);
    QVERIFY(!button.isChecked());
}

void TestMButton::switchIsCheckable()
{
    MButton button;
    button.setViewType(MButton::switchType);
    QCOMPARE(button.viewType(), MButton::switchType);
    QVERIFY(button.isCheckable());
    QVERIFY(button.preferredSize().height() >= 48);
    QVERIFY(button.preferredSize().width() >= 48);
}

void TestMButton::onlyCheckableButtonIsChecked()
{
    MButton button;
    QSignalSpy toggled(&button, &MButton::toggled);
    button.setChecked(true);
    QVERIFY(!button.isChecked());
    QVERIFY(toggled.isEmpty());
}

void TestMButton::fingerPresses()
{
    MWindow window;
    window.show();
    auto *button = new MButton(QStringLiteral("Call"));
    window.scene()->addItem(button);
    button->setGeometry(50, 50, 200, 60);
    QSignalSpy clicked(button, &MButton::clicked);
    tap(&window, button);
    QCOMPARE(clicked.count(), 1);
    TouchDriver(&window).tap(QPointF(100, 80), Qt::RightButton);
    QCOMPARE(clicked.count(), 1);
}

void TestMButton::fingerThatLeavesDoesNotPress()
{
    MWindow window;
    window.show();
    auto *button = new MButton(QStringLiteral("Call"));
    window.scene()->addItem(button);
    button->setGeometry(50, 50, 200, 60);
    QSignalSpy clicked(button, &MButton::clicked);
    TouchDriver(&window).press({100, 80}).move({100, 300}).lift();
    QVERIFY(clicked.isEmpty());
}

void TestMButton::keysPress_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("presses");
    QTest::newRow("Return") << Qt::Key_Return << 1;
    QTest::newRow("Enter") << Qt::Key_Enter << 1;
    QTest::newRow("Space") << Qt::Key_Space << 1;
    QTest::newRow("Select") << Qt::Key_Select << 1;
    QTest::newRow("letter") << Qt::Key_A << 0;
}

void TestMButton::keysPress()
{
    QFETCH(Qt::Key, key);
    QFETCH(int, presses);
    MWindow window;
    QVERIFY(activate(&window));
    auto *button = new MButton(QStringLiteral("Call"));
    window.scene()->addItem(button);
    TouchDriver(&window).key(Qt::Key_Tab);
    QVERIFY(button->hasFocus());
    QSignalSpy clicked(button, &MButton::clicked);
    TouchDriver(&window).key(key);
    QCOMPARE(clicked.count(), presses);
}

void TestMButton::heldKeyPressesOnce()
{
    MWindow window;
    QVERIFY(activate(&window));
    auto *button = new MButton;
    button->setViewType(MButton::switchType);
    window.scene()->addItem(button);
    TouchDriver keys(&window);
    keys.key(Qt::Key_Tab);
    QSignalSpy toggled(button, &MButton::toggled);
    keys.key(Qt::Key_Space);
    for (int i = 0; i < 30; ++i)
        keys.key(Qt::Key_Space, true);
    QCOMPARE(toggled.count(), 1);
    QVERIFY(button->isChecked());
}

void TestMButton::disabledButtonDoesNothing()
{
    MButton button;
    button.setCheckable(true);
    button.setEnabled(false);
    QSignalSpy clicked(&button, &MButton::clicked);
    button.click();
    QVERIFY(clicked.isEmpty());
    QVERIFY(!button.isChecked());
}

void TestMButton::slotMayDeleteButton_data()
{
    QTest::addColumn<bool>("atToggle");
    QTest::addColumn<bool>("finger");
    QTest::newRow("toggled by click()") << true << false;
    QTest::newRow("clicked by click()") << false << false;
    QTest::newRow("toggled by finger") << true << true;
    QTest::newRow("clicked by finger") << false << true;
}

void TestMButton::slotMayDeleteButton()
{
    QFETCH(bool, atToggle);
    QFETCH(bool, finger);
    MWindow window;
    window.show();
    QPointer<MButton> button = new MButton(QStringLiteral("Call"));
    button->setCheckable(true);
    window.scene()->addItem(button);
    button->setGeometry(50, 50, 200, 60);
    connect(button, atToggle ? &MButton::toggled : &MButton::clicked, this, [&] { delete button; });
    if (finger)
        tap(&window, button);
    else
        button->click();
    QVERIFY(!button);
}

void TestMButton::longTextMakesButtonHigher()
{
    MButton button(QStringLiteral("Change the application that opens this kind of content"));
    const QSizeF line = button.preferredSize();
    QVERIFY(button.effectiveSizeHint(Qt::PreferredSize, QSizeF(line.width() / 3, -1)).height() >
            line.height());
    QVERIFY(button.minimumSize().width() < line.width() / 3);
}

void TestMButton::longestVariantThatFitsIsShown()
{
    const QString shorter = QStringLiteral("Other application");
    const QString longer = QStringLiteral("Choose another application");
    const auto sizeOf = [](const QString &text, qreal width) {
        return MButton(text).effectiveSizeHint(Qt::PreferredSize, QSizeF(width, -1));
    };
    const qreal wide = sizeOf(longer, -1).width();
    const qreal narrow = sizeOf(shorter, -1).width();
    for (const QString &both :
         {shorter + M::lengthVariantSeparator + longer, longer + M::lengthVariantSeparator + shorter}) {
        QCOMPARE(sizeOf(both, -1), sizeOf(longer, -1));
        QCOMPARE(MButton(both).text(), both);
        MWindow window;
        const auto pictureOf = [&](const QString &text, qreal width) {
            auto *button = new MButton(text);
            window.scene()->addItem(button);
            button->setGeometry(QRectF(QPointF(), QSizeF(width, sizeOf(text, width).height())));
            const QImage image = picture(window.scene(), QRectF(0, 0, width, 60));
            delete button;
            return image;
        };
        QCOMPARE(pictureOf(both, wide), pictureOf(longer, wide));
        QCOMPARE(pictureOf(both, narrow), pictureOf(shorter, narrow));
        QVERIFY(pictureOf(both, wide - 1) != pictureOf(longer, wide - 1));
    }
}

void TestMButton::switchMirrors()
{
    MWindow window;
    auto *button = new MButton;
    button->setViewType(MButton::switchType);
    window.scene()->addItem(button);
    button->setGeometry(QRectF(QPointF(), button->preferredSize()));
    const QPoint left(24, 24);
    const QPoint right(48, 24);
    const auto knobIsAt = [&](const QPoint &place, const QPoint &other) {
        const QImage image = picture(window.scene(), button->rect());
        return image.pixelColor(place).lightness() > image.pixelColor(other).lightness();
    };
    QVERIFY(knobIsAt(left, right));
    button->setChecked(true);
    QVERIFY(knobIsAt(right, left));
    button->setLayoutDirection(Qt::RightToLeft);
    QVERIFY(knobIsAt(left, right));
    button->setChecked(false);
    QVERIFY(knobIsAt(right, left));
}

void TestMButton::formerSwitchHasItsStyleAndSizeAgain()
{
    for (const auto &style : {QString(), QStringLiteral("CommonSingleButton")}) {
        MButton button(QStringLiteral("Call somebody"));
        button.setStyleName(style);
        const QSizeF preferred = button.preferredSize();
        const QSizeF maximum = button.maximumSize();
        button.setViewType(MButton::switchType);
        button.setViewType(MButton::switchType);
        QVERIFY(button.preferredSize() != preferred);
        button.setViewType(MButton::pushType);
        QCOMPARE(button.styleName(), style);
        QCOMPARE(button.preferredSize(), preferred);
        QCOMPARE(button.maximumSize(), maximum);
        QVERIFY(button.sizePolicy().hasHeightForWidth());
    }
}

void TestMButton::buttonThatGoesAfterAChangeOfStyleLeavesTheScene()
{
    QGraphicsScene scene;
    constexpr int columns = 40;
    constexpr int size = 48;
    QList<MButton *> buttons;
    for (int i = 0; i < columns * columns; ++i) {
        buttons.append(new MButton);
        scene.addItem(buttons.last());
        buttons.last()->setGeometry(i % columns * size, i / columns * size, size, size);
    }
    QCoreApplication::processEvents();
    QCOMPARE(scene.items(scene.sceneRect()).size(), buttons.size());
    for (MButton *button : buttons)
        button->setViewType(MButton::switchType);
    qDeleteAll(buttons);
    QVERIFY(scene.items(QRectF(0, 0, columns * size, columns * size)).isEmpty());
}

void TestMButton::draggedSwitchGoesWhereItIsDragged_data()
{
    QTest::addColumn<bool>("checked");
    QTest::addColumn<QPointF>("way");
    QTest::addColumn<bool>("rightToLeft");
    QTest::addColumn<bool>("expected");
    const QPointF right(30, 0);
    const QPointF left(-30, 0);
    QTest::newRow("off towards on") << false << right << false << true;
    QTest::newRow("on towards on") << true << right << false << true;
    QTest::newRow("on towards off") << true << left << false << false;
    QTest::newRow("off towards off") << false << left << false << false;
    QTest::newRow("beyond the end") << true << 10 * right << false << true;
    QTest::newRow("beyond the end, off") << true << 10 * left << false << false;
    QTest::newRow("right to left, off towards on") << false << left << true << true;
    QTest::newRow("right to left, on towards on") << true << left << true << true;
    QTest::newRow("hardly moved") << true << QPointF(3, 0) << false << false;
    QTest::newRow("away") << true << QPointF(0, 200) << false << true;
}

void TestMButton::draggedSwitchGoesWhereItIsDragged()
{
    QFETCH(bool, checked);
    QFETCH(QPointF, way);
    QFETCH(bool, rightToLeft);
    QFETCH(bool, expected);
    MWindow window;
    window.show();
    auto *button = new MButton;
    button->setViewType(MButton::switchType);
    button->setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    window.scene()->addItem(button);
    button->setGeometry(QRectF(QPointF(200, 200), button->preferredSize()));
    button->setChecked(checked);
    QSignalSpy clicked(button, &MButton::clicked);
    TouchDriver finger(&window);
    finger.press(finger.at(button)).move(finger.at(button) + way).lift();
    QCOMPARE(button->isChecked(), expected);
    QCOMPARE(clicked.count(), int(checked != expected));
}

QTEST_MAIN(TestMButton)
#include "tst_mbutton.moc"
