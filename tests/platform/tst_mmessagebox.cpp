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

QTEST_MAIN(TestMMessageBox)
#include "tst_mmessagebox.moc"
