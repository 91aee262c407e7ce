// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QRegularExpression>
#include <QTest>

#include "daemon/touch/touchmemory.h"

class TestTouchMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        memory = TouchMemory();
    }

    void sameTagWithinTwoSecondsIsTheSameTouch();
    void eachLeavingBeginsTheTwoSecondsAnew();
    void lyingTagIsTheSameTouchForEver();
    void openQuestionKeepsTheTouch();
    void forgottenTouchBeginsAnew();
    void uidAndContentBothCount();
    void contentAloneCountsWithoutAUid();
    void tagOnTwoReadersLiesUntilItHasLeftBoth();
    void glimpsesOfATagKeepItsTouch();
    void glimpsesOfOtherTagsDoNotKeepTheTouch();
    void openQuestionsAreCounted();

private:
    bool isNew(const char *uid, const char *content, qint64 now)
    {
        return memory.meet(uid, content, now).isNew;
    }

    TouchMemory memory;
};

void TestTouchMemory::sameTagWithinTwoSecondsIsTheSameTouch()
{
    const auto first = memory.meet("u", "a", 0);
    QVERIFY(first.isNew);
    memory.leave(first.touch, 1000);
    const auto again = memory.meet("u", "a", 3000);
    QVERIFY(!again.isNew);
    QCOMPARE(again.touch, first.touch);
    memory.leave(again.touch, 3000);
    const auto later = memory.meet("u", "a", 5001);
    QVERIFY(later.isNew);
    QVERIFY(later.touch != first.touch);
}

void TestTouchMemory::eachLeavingBeginsTheTwoSecondsAnew()
{
    const int touch = memory.meet("u", "a", 0).touch;
    for (int i = 0; i < 50; ++i) {
        memory.leave(touch, i * 1500);
        QVERIFY(!isNew("u", "a", i * 1500 + 1500));
    }
}

void TestTouchMemory::lyingTagIsTheSameTouchForEver()
{
    memory.meet("u", "a", 0);
    QVERIFY(!isNew("u", "a", 1000000));
}

void TestTouchMemory::openQuestionKeepsTheTouch()
{
    const int touch = memory.meet("u", "a", 0).touch;
    memory.open(touch);
    memory.leave(touch, 100);
    QVERIFY(!isNew("u", "a", 1000000));
    memory.leave(touch, 1000000);
    memory.close(touch);
    QVERIFY(!isNew("u", "a", 1002000));
    memory.leave(touch, 1002000);
    QVERIFY(isNew("u", "a", 1004001));
}

void TestTouchMemory::forgottenTouchBeginsAnew()
{
    const int touch = memory.meet("u", "a", 0).touch;
    memory.open(touch);
    memory.forget(touch);
    QVERIFY(isNew("u", "a", 1));
    // Later news about it has no effect.
    memory.leave(touch, 2);
    memory.close(touch);
    QVERIFY(!isNew("u", "a", 1000000));
}

void TestTouchMemory::uidAndContentBothCount()
{
    QVERIFY(isNew("u", "a", 0));
    QVERIFY(isNew("u", "b", 1));
    QVERIFY(isNew("v", "a", 2));
    QVERIFY(!isNew("v", "a", 3));
}

void TestTouchMemory::contentAloneCountsWithoutAUid()
{
    QVERIFY(isNew("", "a", 0));
    QVERIFY(!isNew("", "a", 1));
    QVERIFY(!isNew("u", "a", 2));
    QVERIFY(isNew("", "b", 3));
}

void TestTouchMemory::tagOnTwoReadersLiesUntilItHasLeftBoth()
{
    const int touch = memory.meet("", "a", 0).touch;
    memory.meet("", "a", 1);
    memory.leave(touch, 2);
    QVERIFY(!isNew("", "a", 1000000));
    memory.leave(touch, 1000000);
    memory.leave(touch, 1000000);
    QVERIFY(isNew("", "a", 2000000));
}

void TestTouchMemory::glimpsesOfATagKeepItsTouch()
{
    memory.leave(memory.meet("u", "a", 0).touch, 0);
    memory.glimpse("u", 1900);
    QVERIFY(!isNew("u", "a", 3800));
}

void TestTouchMemory::glimpsesOfOtherTagsDoNotKeepTheTouch()
{
    memory.leave(memory.meet("u", "a", 0).touch, 0);
    memory.glimpse("v", 1900);
    memory.glimpse("", 1900);
    QVERIFY(isNew("u", "a", 3800));
    memory.leave(memory.meet("w", "a", 3800).touch, 3800);
    // Its time was over.
    memory.glimpse("w", 6000);
    QVERIFY(isNew("w", "a", 6001));
}

void TestTouchMemory::openQuestionsAreCounted()
{
    const int first = memory.meet("u", "a", 0).touch;
    const int second = memory.meet("v", "a", 0).touch;
    memory.open(first);
    memory.open(second);
    QCOMPARE(memory.openQuestions(), 2);
    memory.close(first);
    memory.forget(second);
    QCOMPARE(memory.openQuestions(), 0);
}

QTEST_GUILESS_MAIN(TestTouchMemory)

#include "tst_touchmemory.moc"
