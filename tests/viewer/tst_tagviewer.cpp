// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QApplication>
#include <QRegularExpression>
#include <QTest>

#include <MButton>
#include <MDialog>
#include <MLabel>
#include <MWindow>

#include "catalogue.h"
#include "shownwidgets.h"
#include "tagviewer.h"

class TestTagViewer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void windowWaitsForSomethingToShow();
    void messageIsShownAfterItWasTaken();
    void closingThePageClosesTheWindow();

private:
    static MWindow *window();
    static MDialog *page();
};

namespace {

const QByteArray message = QByteArray::fromHex("d101055402656e4869");

} // namespace

void TestTagViewer::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

MWindow *TestTagViewer::window()
{
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget *widget : all)
        if (auto *found = qobject_cast<MWindow *>(widget))
            return found;
    return nullptr;
}

MDialog *TestTagViewer::page()
{
    const QList<QGraphicsItem *> items = window()->scene()->items();
    for (QGraphicsItem *item : items)
        if (auto *found = dynamic_cast<MDialog *>(item))
            return found;
    return nullptr;
}

void TestTagViewer::windowWaitsForSomethingToShow()
{
    const Catalogue catalogue;
    TagViewer viewer;
    QVERIFY(!window()->isVisible());
    // Plainly offscreen nothing can be raised.
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
    viewer.comeToFront();
    QVERIFY(window()->isVisible());
}

void TestTagViewer::messageIsShownAfterItWasTaken()
{
    const Catalogue catalogue;
    TagViewer viewer;
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
    viewer.show(message);
    QVERIFY(!window()->isVisible());
    QTRY_VERIFY(window()->isVisible());
    QVERIFY(shownTexts<MLabel>(page()).contains(QStringLiteral("Hi")));
}

void TestTagViewer::closingThePageClosesTheWindow()
{
    const Catalogue catalogue;
    TagViewer viewer;
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
    viewer.comeToFront();
    shownWidgets<MButton>(page()).constFirst()->click();
    QTRY_VERIFY(!window()->isVisible());
}

QTEST_MAIN(TestTagViewer)
#include "tst_tagviewer.moc"
