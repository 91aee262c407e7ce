// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <MImageWidget>
#include <MLabel>
#include <MMessageBox>

#include "touchtest.h"

using namespace TouchTest;

class TestMMessageBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void constructorsTakeTitleTextAndButtons();
    void textAndIconAreShown();
    void ownContentsReplaceTheText();
    void questionBeginsOnTheScreen_data();
    void questionBeginsOnTheScreen();
};

void TestMMessageBox::constructorsTakeTitleTextAndButtons()
{
    MMessageBox box(QStringLiteral("Title"), QStringLiteral("Text"), M::YesButton | M::NoButton);
    QCOMPARE(box.title(), QStringLiteral("Title"));
    QCOMPARE(box.text(), QStringLiteral("Text"));
    QCOMPARE(box.buttons().size(), 2);
    MMessageBox other(QString(), M::CancelButton);
    QVERIFY(other.text().isEmpty());
    QVERIFY(other.button(M::CancelButton));
    QCOMPARE(other.buttons().size(), 1);
}

void TestMMessageBox::textAndIconAreShown()
{
    MWindow window;
    MMessageBox box(QString(), M::OkButton);
    box.appear(&window);
    QVERIFY(visibleBelow<MLabel>(&box).isEmpty());
    QVERIFY(visibleBelow<MImageWidget>(&box).isEmpty());
    box.setText(QStringLiteral("<b>Text</b>"));
    box.setIconId(QStringLiteral("icon-m-bluetooth-phone"));
    QCOMPARE(box.text(), QStringLiteral("<b>Text</b>"));
    QCOMPARE(box.iconId(), QStringLiteral("icon-m-bluetooth-phone"));
    QCOMPARE(visibleBelow<MLabel>(&box).first()->text(), QStringLiteral("<b>Text</b>"));
    QVERIFY(visibleBelow<MLabel>(&box).first()->wordWrap());
    QCOMPARE(visibleBelow<MImageWidget>(&box).first()->imageId(), QStringLiteral("icon-m-bluetooth-phone"));
    box.setIconId(QString());
    QVERIFY(visibleBelow<MImageWidget>(&box).isEmpty());
}

void TestMMessageBox::ownContentsReplaceTheText()
{
    MWindow window;
    MMessageBox box(QString(), QStringLiteral("Text"), M::OkButton);
    auto *contents = new MLabel(QStringLiteral("Own"));
    box.setCentralWidget(contents);
    box.setText(QStringLiteral("Other"));
    box.appear(&window);
    QCOMPARE(box.centralWidget(), contents);
    QCOMPARE(visibleBelow<MLabel>(&box), QList<MLabel *>{contents});
    QCOMPARE(box.text(), QStringLiteral("Other"));
}

void TestMMessageBox::questionBeginsOnTheScreen_data()
{
    QTest::addColumn<QString>("change");
    for (const char *change : {"new text", "new title", "shown again", "new contents"})
        QTest::newRow(change) << QString::fromLatin1(change);
}

void TestMMessageBox::questionBeginsOnTheScreen()
{
    QFETCH(QString, change);
    const QString text = QStringLiteral("A question of many words. ").repeated(200);
    MWindow window;
    window.show();
    MMessageBox box(QStringLiteral("Title"), text, M::OkButton);
    box.appear(&window);
    QCoreApplication::processEvents();
    const auto top = [&] { return visibleBelow<MLabel>(&box).last()->scenePos().y(); };
    const qreal before = top();
    TouchDriver(&window).wheel({240, 500}, -1200);
    QVERIFY(top() < before - 100);
    if (change == QLatin1String("new text")) {
        box.setText(text + text);
    } else if (change == QLatin1String("new title")) {
        box.setTitle(QStringLiteral("Other"));
    } else if (change == QLatin1String("shown again")) {
        box.done(0);
        box.appear(&window);
    } else {
        auto *contents = new MLabel(text);
        contents->setWordWrap(true);
        box.setCentralWidget(contents);
    }
    QCoreApplication::processEvents();
    QCOMPARE(top(), before);
}

QTEST_MAIN(TestMMessageBox)
#include "tst_mmessagebox.moc"
