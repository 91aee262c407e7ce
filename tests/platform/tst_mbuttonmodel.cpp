// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QSignalSpy>
#include <QTest>

#include <MButtonModel>

class TestMButtonModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void constructorSetsTextRoleAndButton();
    void textChangeIsEmittedOnce();
    void clickEmits();
    void enumeratorsHaveTheirFixedValues();
};

void TestMButtonModel::constructorSetsTextRoleAndButton()
{
    MButtonModel model(QStringLiteral("Yes"), M::YesRole, M::YesButton);
    QCOMPARE(model.text(), QStringLiteral("Yes"));
    QCOMPARE(model.role(), M::YesRole);
    QCOMPARE(model.standardButton(), M::YesButton);
}

void TestMButtonModel::textChangeIsEmittedOnce()
{
    MButtonModel model(QStringLiteral("Yes"), M::YesRole, M::YesButton);
    QSignalSpy changed(&model, &MButtonModel::textChanged);
    model.setText(QStringLiteral("Yes"));
    QVERIFY(changed.isEmpty());
    model.setText(QStringLiteral("Call"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.first().first().toString(), QStringLiteral("Call"));
}

void TestMButtonModel::clickEmits()
{
    MButtonModel model(QStringLiteral("Yes"), M::YesRole, M::YesButton);
    QSignalSpy clicked(&model, &MButtonModel::clicked);
    model.click();
    QCOMPARE(clicked.count(), 1);
}

void TestMButtonModel::enumeratorsHaveTheirFixedValues()
{
    QCOMPARE(int(M::OkButton), 0x400);
    QCOMPARE(int(M::YesButton), 0x4000);
    QCOMPARE(int(M::NoButton), 0x10000);
    QCOMPARE(int(M::CancelButton), 0x400000);
    QCOMPARE(int(M::InvalidRole), -1);
    QCOMPARE(int(M::ApplyRole), 8);
    QCOMPARE(int(M::Angle270), 270);
}

QTEST_GUILESS_MAIN(TestMButtonModel)
#include "tst_mbuttonmodel.moc"
