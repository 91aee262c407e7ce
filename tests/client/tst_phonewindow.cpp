// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QGraphicsScene>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>

#include "screen/phonecase.h"
#include "screen/phonewindow.h"

class TestPhoneWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void caseIsAroundTheScreen();
    void tapsGoToTheScreen();
    void phoneOnALowDisplayIsNarrower();
};

void TestPhoneWindow::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestPhoneWindow::caseIsAroundTheScreen()
{
    PhoneWindow phone;
    phone.resize(400, 700);
    phone.show();
    const QRect screen = phone.rect().marginsRemoved(PhoneCase::margins());
    QCOMPARE(phone.viewport()->geometry(), screen);
    QCOMPARE(phone.scene()->sceneRect().size(), QSizeF(screen.size()));

    const QImage picture = phone.grab().toImage();
    const auto lightness = [&picture](int x, int y) { return picture.pixelColor(x, y).lightness(); };
    const QPoint middle = screen.center();
    constexpr int half = 64;
    for (const QPoint dark : {QPoint(middle.x(), screen.top() - 3), QPoint(middle.x(), screen.bottom() + 3),
                              QPoint(screen.left() - 3, middle.y()), QPoint(screen.right() + 3, middle.y()),
                              screen.bottomLeft() + QPoint(4, -4), screen.bottomRight() + QPoint(-4, -4)})
        QVERIFY2(lightness(dark.x(), dark.y()) < half,
                 qPrintable(QStringLiteral("%1, %2").arg(dark.x()).arg(dark.y())));
    // Between its round corners at the bottom, the screen is left as it is.
    phone.findChild<PhoneCase *>()->hide();
    const QRect visible = screen.adjusted(0, 0, 0, -30);
    QCOMPARE(picture.copy(visible), phone.grab(visible).toImage());
    // The desktop's window is around the case, and in its round corners.
    QCOMPARE(picture.pixelColor(0, 0), phone.palette().color(QPalette::Window));
    QCOMPARE(picture.pixelColor(14, 14), phone.palette().color(QPalette::Window));
    // The time, and the battery.
    const QImage bar = picture.copy(screen.left(), 12, screen.width(), PhoneCase::margins().top() - 12);
    for (const QImage &side : {bar.copy(0, 0, bar.width() / 4, bar.height()),
                               bar.copy(bar.width() * 3 / 4, 0, bar.width() / 4, bar.height())}) {
        int brightest = 0;
        for (int x = 0; x < side.width(); ++x)
            for (int y = 4; y < side.height(); ++y)
                brightest = qMax(brightest, side.pixelColor(x, y).lightness());
        QVERIFY(brightest > 200);
    }
}

void TestPhoneWindow::tapsGoToTheScreen()
{
    PhoneWindow phone;
    phone.show();
    QCOMPARE(phone.childAt(phone.rect().center()), phone.viewport());
}

void TestPhoneWindow::phoneOnALowDisplayIsNarrower()
{
    const QSize whole = MWindow().sizeHint().grownBy(PhoneCase::margins());
    PhoneWindow phone;
    const QSize room = phone.screen()->availableSize();
    QVERIFY(room.height() < whole.height() && room.width() > whole.width());
    QCOMPARE(phone.height(), room.height());
    QCOMPARE(phone.width(), whole.width() * room.height() / whole.height());
}

QTEST_MAIN(TestPhoneWindow)
#include "tst_phonewindow.moc"
