// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QApplication>
#include <QEvent>
#include <QTest>

#include "catalogue.h"
#include "screen/prewarm.h"

namespace {

/** Counts the windows that come on the screen. */
class Shown : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && watched->isWindowType())
            ++windows;
        return false;
    }

    int windows = 0;
};

} // namespace

class TestPrewarm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void prewarmedQuestionIsNeverVisible();
    void prewarmingLeavesNoWidget();
};

void TestPrewarm::prewarmedQuestionIsNeverVisible()
{
    const Catalogue catalogue;
    Shown shown;
    qApp->installEventFilter(&shown);
    prewarmQuestion();
    QCOMPARE(shown.windows, 0);
}

void TestPrewarm::prewarmingLeavesNoWidget()
{
    const Catalogue catalogue;
    prewarmQuestion();
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
}

QTEST_MAIN(TestPrewarm)
#include "tst_prewarm.moc"
