// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QApplication>
#include <QGraphicsScene>
#include <QTest>

#include <ConnectivitySettings>
#include <MDialog>
#include <MWindow>

#include "catalogue.h"
#include "screen/screenface.h"

using ConnUi::ConnectivitySettings;

namespace {

constexpr int userSettings = 1;

QString questionDelay()
{
    return QStringLiteral("nfc_question_delay");
}

// The dialog on the screen.
MDialog *shownDialog()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *widget : windows) {
        const auto *window = qobject_cast<const MWindow *>(widget);
        const QList<QGraphicsItem *> items = window ? window->scene()->items() : QList<QGraphicsItem *>();
        for (QGraphicsItem *item : items)
            if (auto *dialog = qobject_cast<MDialog *>(item->toGraphicsObject()))
                return dialog;
    }
    return nullptr;
}

} // namespace

class TestScreenFace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }
    void cleanup() { ConnectivitySettings(userSettings).set(questionDelay(), {}); }

    void everyQuestionTakesInputAfterADelay_data();
    void everyQuestionTakesInputAfterADelay();
    void userMayHaveMoreTime_data();
    void userMayHaveMoreTime();
    void onlyAWindowInUseIsInFront();
};

void TestScreenFace::everyQuestionTakesInputAfterADelay_data()
{
    QTest::addColumn<Question::Kind>("kind");
    for (const Question::Kind kind :
         {Question::Pairing, Question::Connection, Question::Disconnection, Question::Link, Question::Number,
          Question::Message, Question::Text, Question::ContactCard, Question::StoreLink, Question::Sharing,
          Question::Selection, Question::EmptyTag, Question::UnreadableTag, Question::Notice,
          Question::Invitation, Question::Waiting})
        QTest::addRow("%d", int(kind)) << kind;
}

void TestScreenFace::everyQuestionTakesInputAfterADelay()
{
    QFETCH(Question::Kind, kind);
    const Catalogue catalogue;
    Question question;
    question.kind = kind;
    question.yes = QStringLiteral("Yes");
    question.no = QStringLiteral("No");
    question.data = QStringLiteral("Text");
    question.uri = QStringLiteral("tel:112");
    question.card = "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:A\r\nEND:VCARD\r\n";
    question.resources = {QStringLiteral("file:///a.jpg")};
    question.applications = {QStringLiteral("viewer.desktop")};
    ScreenFace face;
    face.show(question);
    QVERIFY(shownDialog());
    QCOMPARE(shownDialog()->inputDelay(), 500);
}

void TestScreenFace::userMayHaveMoreTime_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("delay");
    QTest::newRow("nothing") << QVariant() << 500;
    QTest::newRow("more") << QVariant(3000) << 3000;
    QTest::newRow("less than is safe") << QVariant(0) << 500;
    QTest::newRow("more than anybody waits") << QVariant(qlonglong(1'000'000'000'000)) << 10000;
    QTest::newRow("no number") << QVariant(QStringLiteral("3000")) << 500;
}

void TestScreenFace::userMayHaveMoreTime()
{
    QFETCH(QVariant, stored);
    QFETCH(int, delay);
    const Catalogue catalogue;
    ConnectivitySettings(userSettings).set(questionDelay(), stored);
    ScreenFace face;
    Question question;
    question.kind = Question::EmptyTag;
    face.show(question);
    QCOMPARE(shownDialog()->inputDelay(), delay);
}

void TestScreenFace::onlyAWindowInUseIsInFront()
{
    ScreenFace face;
    QTRY_VERIFY(!face.isInFront());
    Question question;
    question.title = QStringLiteral("A title");
    face.show(question);
    QTRY_VERIFY(face.isInFront());
}

QTEST_MAIN(TestScreenFace)
#include "tst_screenface.moc"
