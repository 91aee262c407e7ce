// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <malloc.h>

#include <QApplication>
#include <QGraphicsLinearLayout>
#include <QGraphicsView>
#include <QSignalSpy>
#include <QStringListModel>

#include <MAbstractCellCreator>
#include <MDialog>
#include <MImageWidget>
#include <MLabel>
#include <MList>
#include <MListItem>
#include <MMessageBox>
#include <MProgressIndicator>

#include "touchtest.h"

using namespace TouchTest;

namespace {

constexpr int canceled = M::CancelButton;

/** Stays open while a button without a role is pressed. */
class StubbornDialog : public MDialog
{
public:
    using MDialog::MDialog;

    void done(int result) override
    {
        if (!clickedButton() || clickedButton()->role() != M::InvalidRole)
            MDialog::done(result);
    }
};

class EmptyCreator : public MAbstractCellCreator<MListItem>
{
public:
    void updateCell(const QModelIndex &, MWidget *) const override {}
};

class CountLayouts : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::LayoutRequest;
        return false;
    }

    int count = 0;
};

QString longText()
{
    return QStringLiteral(
        "Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbauunterbeamtengesellschaft wants "
        "to send you a picture of its new engine room. ");
}

/** A dialog with so many wide buttons that they scroll. */
struct CrowdedDialog
{
    CrowdedDialog()
    {
        window.show();
        for (int i = 0; i < 30; ++i)
            dialog.addButton(
                QStringLiteral("A button that fills the whole width of the dialog, number %1").arg(i));
        show();
    }

    void show()
    {
        dialog.appear(&window);
        QCoreApplication::processEvents();
    }
    qreal top() { return viewOf(&dialog, dialog.buttons().first())->scenePos().y(); }

    MWindow window;
    MDialog dialog{QStringLiteral("Title")};
};

} // namespace

class TestMDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void setPropertiesAreReturned();
    void standardButtonsAreListedFirst();
    void addedButtonsHaveTheirRoles();
    void dismissalIsLastInAColumnAndFirstInARow_data();
    void dismissalIsLastInAColumnAndFirstInARow();
    void pressSetsClickedButtonAndResult();
    void addedButtonGivesResultZero();
    void relabelledButtonShowsItsText();
    void overriddenDoneKeepsDialogOpen();
    void escapeAndBackDismiss_data();
    void escapeAndBackDismiss();
    void heldKeyRefusesOneQuestion_data();
    void heldKeyRefusesOneQuestion();
    void repeatThatIsNotMarkedRefusesNothing();
    void keysWithoutTimesCount();
    void buttonIsPressedOnceHoweverLongItIsHeld();
    void closingWindowDismissesNewestFirst();
    void finishedIsEmittedOnce();
    void appearingAgainResetsButtonAndResult();
    void acceptAndRejectResetClickedButton();
    void slotMayDeleteDialog_data();
    void slotMayDeleteDialog();
    void deletionPolicyIsFollowed();
    void slotMayLetDialogAppearAgain();
    void newDialogInSlotUsesSameWindow();
    void newestDialogIsInFront();
    void longestTextFits_data();
    void longestTextFits();
    void dialogGrowsWithItsContents();
    void shownDialogRequestsNoMoreLayouts();
    void rightToLeftMirrorsButtonsAndIcon();
    void enterPressesOnlyAButtonWhoseFocusIsSeen();
    void focusThatIsGivenBackIsSeenAsBefore();
    void focusStaysInFrontDialog();
    void arrowKeysMoveFocusInTheirDirection();
    void keysScrollLongContents();
    void touchTargetsAreLargeEnough();
    void centralWidgetIsReplaced();
    void thousandDialogsLeakNothing();
    void wheelMovesNothingBelow();
    void tapThatEndsAFlickClosesNothing();
    void columnOfButtonsBeginsAtItsTop();
    void dialogBehindThatClosesLeavesTheFocus();
    void tabScrollsControlsIntoView_data();
    void tabScrollsControlsIntoView();
    void appearingEndsPressesBelow();
    void dialogInAPlainSceneTakesKeys();
    void smallWindowScrollsEverything_data();
    void smallWindowScrollsEverything();
    void wideLowWindowHasButtonsBesideTheContents_data();
    void wideLowWindowHasButtonsBesideTheContents();
    void switchAccessReachesEveryButton();
    void lateClickChangesNothing();
    void buttonsMayGo_data();
    void buttonsMayGo();
    void removedButtonLeavesTheFocusToNobody();
    void clickOnTheButtonOfADyingDialogDoesNothing();
};

void TestMDialog::setPropertiesAreReturned()
{
    MDialog dialog(QStringLiteral("Title"), M::OkButton);
    QCOMPARE(dialog.title(), QStringLiteral("Title"));
    dialog.setTitle(QStringLiteral("Other"));
    QCOMPARE(dialog.title(), QStringLiteral("Other"));
    QVERIFY(dialog.titleBarIconId().isEmpty());
    dialog.setTitleBarIconId(QStringLiteral("icon-m-service-nfc"));
    QCOMPARE(dialog.titleBarIconId(), QStringLiteral("icon-m-service-nfc"));
    QVERIFY(!dialog.isProgressIndicatorVisible());
    dialog.setProgressIndicatorVisible(true);
    QVERIFY(dialog.isProgressIndicatorVisible());

    MWindow window;
    dialog.appear(&window);
    QCOMPARE(visibleBelow<MProgressIndicator>(&dialog).size(), 1);
    QCOMPARE(visibleBelow<MImageWidget>(&dialog).size(), 1);
    dialog.setProgressIndicatorVisible(false);
    dialog.setTitleBarIconId(QString());
    dialog.setTitle(QString());
    QCOMPARE(visibleBelow<MProgressIndicator>(&dialog).size(), 0);
    QCOMPARE(visibleBelow<MImageWidget>(&dialog).size(), 0);
    QCOMPARE(visibleBelow<MLabel>(&dialog).size(), 0);
}

void TestMDialog::standardButtonsAreListedFirst()
{
    MDialog dialog(M::CancelButton | M::NoButton | M::YesButton | M::OkButton);
    MButtonModel *added = dialog.addButton(QStringLiteral("More"));
    const QList<MButtonModel *> expected{dialog.button(M::OkButton), dialog.button(M::YesButton),
                                         dialog.button(M::NoButton), dialog.button(M::CancelButton), added};
    QCOMPARE(dialog.buttons(), expected);
    QVERIFY(!expected.contains(nullptr));
    QCOMPARE(dialog.button(M::OkButton)->role(), M::AcceptRole);
    QCOMPARE(dialog.button(M::YesButton)->role(), M::YesRole);
    QCOMPARE(dialog.button(M::NoButton)->role(), M::NoRole);
    QCOMPARE(dialog.button(M::CancelButton)->role(), M::RejectRole);
    QCOMPARE(dialog.button(M::YesButton)->text(), QStringLiteral("Yes"));
    QVERIFY(!MDialog(M::OkButton).button(M::NoButton));
    QVERIFY(!dialog.button(M::NoStandardButton));
}

void TestMDialog::addedButtonsHaveTheirRoles()
{
    MDialog dialog;
    MButtonModel *plain = dialog.addButton(QStringLiteral("Change"));
    MButtonModel *apply = dialog.addButton(QStringLiteral("View"), M::ApplyRole);
    QCOMPARE(dialog.buttons(), (QList<MButtonModel *>{plain, apply}));
    QCOMPARE(int(plain->role()), -1);
    QCOMPARE(int(apply->role()), 8);
    QCOMPARE(plain->standardButton(), M::NoStandardButton);
}

void TestMDialog::pressSetsClickedButtonAndResult()
{
    MWindow window;
    window.show();
    MDialog dialog(QStringLiteral("Share?"), M::YesButton | M::NoButton);
    dialog.appear(&window);
    QVERIFY(!dialog.clickedButton());

    MButtonModel *atFinish = nullptr;
    connect(&dialog, &MDialog::finished, this, [&] { atFinish = dialog.clickedButton(); });
    QSignalSpy finished(&dialog, &MDialog::finished);
    tap(&window, viewOf(&dialog, dialog.button(M::NoButton)));
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toInt(), 0x10000);
    QCOMPARE(atFinish, dialog.button(M::NoButton));
    QCOMPARE(dialog.clickedButton(), dialog.button(M::NoButton));
    QCOMPARE(dialog.result(), 0x10000);
    QVERIFY(!dialog.isVisible());
    QVERIFY(!dialog.scene());
}

void TestMDialog::addedButtonGivesResultZero()
{
    MDialog dialog(M::OkButton);
    MButtonModel *added = dialog.addButton(QStringLiteral("View"), M::ApplyRole);
    QSignalSpy finished(&dialog, &MDialog::finished);
    added->click();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toInt(), 0);
    QCOMPARE(dialog.clickedButton(), added);
}

void TestMDialog::relabelledButtonShowsItsText()
{
    MWindow window;
    MDialog dialog(M::OkButton | M::CancelButton);
    dialog.appear(&window);
    dialog.button(M::OkButton)->setText(QStringLiteral("Continue"));
    QVERIFY(viewOf(&dialog, dialog.button(M::OkButton)));
    QCOMPARE(dialog.button(M::OkButton)->text(), QStringLiteral("Continue"));
}

void TestMDialog::overriddenDoneKeepsDialogOpen()
{
    MWindow window;
    window.show();
    StubbornDialog dialog(M::YesButton);
    MButtonModel *change = dialog.addButton(QStringLiteral("Change"));
    dialog.appear(&window);
    QSignalSpy finished(&dialog, &MDialog::finished);
    tap(&window, viewOf(&dialog, change));
    QVERIFY(finished.isEmpty());
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.clickedButton(), change);

    dialog.dismiss();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toInt(), canceled);
    QVERIFY(!dialog.clickedButton());
}

void TestMDialog::escapeAndBackDismiss_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Escape") << Qt::Key_Escape;
    QTest::newRow("back") << Qt::Key_Back;
}

void TestMDialog::escapeAndBackDismiss()
{
    QFETCH(Qt::Key, key);
    MWindow window;
    QVERIFY(activate(&window));
    MDialog dialog(M::OkButton);
    dialog.appear(&window);
    QSignalSpy finished(&dialog, &MDialog::finished);
    TouchDriver(&window).key(key);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toInt(), canceled);
    QVERIFY(!dialog.clickedButton());
    QVERIFY(window.isVisible());
}

void TestMDialog::heldKeyRefusesOneQuestion_data()
{
    escapeAndBackDismiss_data();
}

// Users who cannot let go at once refuse what they have seen.
void TestMDialog::heldKeyRefusesOneQuestion()
{
    QFETCH(Qt::Key, key);
    MWindow window;
    QVERIFY(activate(&window));
    MDialog first(M::OkButton);
    MDialog second(M::OkButton);
    connect(&first, &MDialog::finished, this, [&] { second.appear(&window); });
    first.appear(&window);
    TouchDriver keys(&window);
    keys.key(key);
    for (int i = 0; i < 30; ++i)
        keys.key(key, true);
    QCOMPARE(first.result(), canceled);
    QCOMPARE(second.result(), 0);
    QVERIFY(second.isVisible());
    QVERIFY(window.isVisible());
    keys.key(key);
    QCOMPARE(second.result(), canceled);
}

void TestMDialog::repeatThatIsNotMarkedRefusesNothing()
{
    MWindow window;
    QVERIFY(activate(&window));
    MDialog first(M::OkButton);
    MDialog second(M::OkButton);
    connect(&first, &MDialog::finished, this, [&] { second.appear(&window); });
    first.appear(&window);
    const auto send = [&](QEvent::Type type, quint64 time) {
        QKeyEvent event(type, Qt::Key_Escape, Qt::NoModifier);
        event.setTimestamp(time);
        QCoreApplication::sendEvent(window.windowHandle(), &event);
    };
    send(QEvent::KeyPress, 1000);
    for (quint64 time = 1500; time < 2500; time += 40) {
        send(QEvent::KeyRelease, time);
        send(QEvent::KeyPress, time);
    }
    QCOMPARE(first.result(), canceled);
    QCOMPARE(second.result(), 0);
    send(QEvent::KeyRelease, 2500);
    send(QEvent::KeyPress, 2600);
    QCOMPARE(second.result(), canceled);
}

// As they come while assistive technology listens.
void TestMDialog::keysWithoutTimesCount()
{
    MWindow window;
    QVERIFY(activate(&window));
    for (int i = 0; i < 3; ++i) {
        MDialog dialog(M::OkButton);
        dialog.appear(&window);
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, Qt::Key_Escape, Qt::NoModifier);
            QCOMPARE(event.timestamp(), quint64(0));
            QCoreApplication::sendEvent(window.windowHandle(), &event);
        }
        QCOMPARE(dialog.result(), canceled);
    }
}

void TestMDialog::buttonIsPressedOnceHoweverLongItIsHeld()
{
    MWindow window;
    QVERIFY(activate(&window));
    const auto buttons = M::YesButton | M::NoButton;
    MMessageBox first(QStringLiteral("Pair?"), longText(), buttons);
    MMessageBox second(QStringLiteral("Call?"), longText(), buttons);
    connect(&first, &MDialog::finished, this, [&] { second.appear(&window); });
    first.appear(&window);
    QCoreApplication::processEvents();
    TouchDriver finger(&window);
    finger.press(finger.at(viewOf(&first, first.button(M::YesButton))));
    for (int minute = 0; minute < 60; ++minute) {
        finger.wait(60000);
        QCoreApplication::processEvents();
        QCOMPARE(first.result(), 0);
    }
    finger.lift();
    QCOMPARE(first.result(), int(M::YesButton));
    QCOMPARE(second.result(), 0);
    QVERIFY(second.isVisible());
}

void TestMDialog::closingWindowDismissesNewestFirst()
{
    auto *first = new MDialog(M::YesButton);
    MDialog second(M::OkButton);
    first->appear(MDialog::DestroyWhenDone);
    auto *window = qobject_cast<MWindow *>(first->scene()->views().first());
    QVERIFY(window->isVisible());
    second.appear();
    QCOMPARE(second.scene(), first->scene());

    QList<int> order;
    connect(
        first, &MDialog::finished, this, [&](int result) { order << 1 << result; });
    connect(&second, &MDialog::finished, this, [&](int result) { order << 2 << result; });
    QSignalSpy deleted(first, &QObject::destroyed);
    QSignalSpy windowDeleted(window, &QObject::destroyed);
    window->close();
    QCOMPARE(order, (QList<int>{2, canceled, 1, canceled}));
    QVERIFY(!second.scene());
    QTRY_COMPARE(deleted.count(), 1);
    QTRY_COMPARE(windowDeleted.count(), 1);
}

void TestMDialog::finishedIsEmittedOnce()
{
    MDialog dialog(M::OkButton);
    QSignalSpy finished(&dialog, &MDialog::finished);
    connect(&dialog, &MDialog::finished, &dialog, [&] { dialog.done(2); });
    dialog.done(1);
    dialog.done(3);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(dialog.result(), 1);
}

void TestMDialog::appearingAgainResetsButtonAndResult()
{
    MWindow window;
    MDialog dialog(M::OkButton);
    QSignalSpy finished(&dialog, &MDialog::finished);
    dialog.appear(&window);
    dialog.button(M::OkButton)->click();
    dialog.appear(&window);
    QVERIFY(dialog.isVisible());
    QVERIFY(!dialog.clickedButton());
    dialog.done(7);
    QCOMPARE(finished.count(), 2);
    QCOMPARE(dialog.result(), 7);
}

void TestMDialog::acceptAndRejectResetClickedButton()
{
    StubbornDialog dialog(M::OkButton);
    QSignalSpy finished(&dialog, &MDialog::finished);
    dialog.addButton(QStringLiteral("Change"))->click();
    dialog.accept();
    QVERIFY(!dialog.clickedButton());
    QCOMPARE(finished.last().first().toInt(), 0x400);

    MDialog other(M::OkButton);
    other.reject();
    QCOMPARE(other.result(), canceled);
}

void TestMDialog::slotMayDeleteDialog_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<QString>("way");
    for (const char *signal : {"finished", "clicked", "disappeared"})
        for (const char *way : {"press", "click", "key"})
            QTest::addRow("%s by %s", signal, way) << QString::fromLatin1(signal) << QString::fromLatin1(way);
    QTest::newRow("finished by Escape") << QStringLiteral("finished") << QStringLiteral("Escape");
    QTest::newRow("finished by done") << QStringLiteral("finished") << QStringLiteral("done");
    QTest::newRow("window by Escape") << QStringLiteral("window") << QStringLiteral("Escape");
    QTest::newRow("window by key") << QStringLiteral("window") << QStringLiteral("key");
    QTest::newRow("finished by closing") << QStringLiteral("finished") << QStringLiteral("close");
}

void TestMDialog::slotMayDeleteDialog()
{
    QFETCH(QString, signal);
    QFETCH(QString, way);
    auto *dialog = new MDialog(QStringLiteral("Doomed"), M::OkButton);
    dialog->appear();
    auto *window = qobject_cast<MWindow *>(dialog->scene()->views().first());
    QVERIFY(QTest::qWaitForWindowActive(window));
    QSignalSpy deleted(dialog, &QObject::destroyed);
    QSignalSpy windowDeleted(window, &QObject::destroyed);
    const auto remove = [dialog] { delete dialog; };
    if (signal == QLatin1String("finished"))
        connect(dialog, &MDialog::finished, this, remove);
    else if (signal == QLatin1String("window"))
        connect(dialog, &MDialog::finished, this, [dialog, window] {
            delete window;
            delete dialog;
        });
    else if (signal == QLatin1String("disappeared"))
        connect(dialog, &MDialog::disappeared, this, remove);
    else
        connect(dialog->button(M::OkButton), &MButtonModel::clicked, this, remove);

    if (way == QLatin1String("press")) {
        tap(window, viewOf(dialog, dialog->button(M::OkButton)));
    } else if (way == QLatin1String("click")) {
        dialog->button(M::OkButton)->click();
    } else if (way == QLatin1String("key")) {
        viewOf(dialog, dialog->button(M::OkButton))->setFocus(Qt::TabFocusReason);
        TouchDriver(window).key(Qt::Key_Return);
    } else if (way == QLatin1String("Escape")) {
        TouchDriver(window).key(Qt::Key_Escape);
    } else if (way == QLatin1String("done")) {
        dialog->done(0);
    } else {
        window->close();
    }
    QCOMPARE(deleted.count(), 1);
    QTRY_COMPARE(windowDeleted.count(), 1);
}

void TestMDialog::deletionPolicyIsFollowed()
{
    MWindow window;
    QPointer<MDialog> kept = new MDialog(M::OkButton);
    QPointer<MDialog> destroyed = new MDialog(M::OkButton);
    kept->appear(&window);
    destroyed->appear(&window, MDialog::DestroyWhenDone);
    kept->done(1);
    destroyed->done(1);
    // Code that closed it may still look at it.
    QVERIFY(destroyed);
    QTRY_VERIFY(!destroyed);
    QVERIFY(kept);
    delete kept;
}

void TestMDialog::slotMayLetDialogAppearAgain()
{
    MWindow window;
    MDialog dialog(M::OkButton);
    dialog.appear(&window);
    connect(
        &dialog, &MDialog::finished, this, [&] { dialog.appear(&window); }, Qt::SingleShotConnection);
    dialog.done(1);
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.scene(), window.scene());
}

void TestMDialog::newDialogInSlotUsesSameWindow()
{
    MDialog question(M::YesButton);
    MDialog notice(M::OkButton);
    question.appear();
    QPointer<MWindow> window = qobject_cast<MWindow *>(question.scene()->views().first());
    connect(&question, &MDialog::finished, this, [&] { notice.appear(); });
    question.done(1);
    QVERIFY(notice.scene());
    QCOMPARE(notice.scene(), window->scene());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(window);
    notice.done(1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!window);
}

void TestMDialog::newestDialogIsInFront()
{
    MWindow window;
    window.show();
    MDialog lower(QStringLiteral("Lower"), M::OkButton);
    MDialog upper(QStringLiteral("Upper"), M::OkButton);
    lower.appear(&window);
    upper.appear(&window);
    const QPointF corner(5, 5);
    QCOMPARE(window.scene()->items(corner).first(), &upper);
    tap(&window, viewOf(&lower, lower.button(M::OkButton)));
    QVERIFY(lower.isVisible());
    QVERIFY(!upper.isVisible());
    upper.appear(&window);
    lower.appear(&window);
    QCOMPARE(window.scene()->items(corner).first(), &lower);
}

void TestMDialog::longestTextFits_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("angle");
    QTest::newRow("portrait") << QSize(480, 854) << 0;
    QTest::newRow("landscape") << QSize(854, 480) << 0;
    QTest::newRow("turned to landscape") << QSize(480, 854) << 90;
    QTest::newRow("turned to portrait") << QSize(854, 480) << 270;
}

void TestMDialog::longestTextFits()
{
    QFETCH(QSize, size);
    QFETCH(int, angle);
    MWindow window;
    window.resize(size);
    window.sceneManager()->setOrientationAngle(M::OrientationAngle(angle));
    window.show();
    MMessageBox dialog(longText(), longText().repeated(40), M::YesButton | M::NoButton);
    dialog.setTitleBarIconId(QStringLiteral("icon-m-service-nfc"));
    dialog.button(M::YesButton)->setText(longText());
    dialog.addButton(longText().trimmed());
    dialog.appear(&window);

    const QRectF screen(QPointF(), size);
    QVERIFY(screen.contains(dialog.childItems().first()->sceneBoundingRect()));
    const QList<MButton *> buttons = visibleBelow<MButton>(&dialog);
    QCOMPARE(buttons.size(), 3);
    for (const MButton *button : buttons) {
        QVERIFY2(
            button->size().height() >=
                button->effectiveSizeHint(Qt::PreferredSize, QSizeF(button->size().width(), -1)).height(),
            "a button's text is cut");
    }
    QVERIFY(screen.contains(viewOf(&dialog, dialog.buttons().first())->mapToScene(QPointF(1, 1))));
    const QList<MLabel *> labels = visibleBelow<MLabel>(&dialog);
    QCOMPARE(labels.size(), 2);
    for (const MLabel *label : labels) {
        const QSizeF needed = label->effectiveSizeHint(Qt::MinimumSize, QSizeF(label->size().width(), -1));
        QVERIFY2(label->size().height() >= needed.height(), "a label's text is cut");
        const QRectF place = label->sceneBoundingRect();
        const bool sideways = angle % 180 != 0;
        QVERIFY(sideways ? place.top() >= 0 && place.bottom() <= size.height()
                         : place.left() >= 0 && place.right() <= size.width());
    }
}

void TestMDialog::dialogGrowsWithItsContents()
{
    MWindow window;
    window.show();
    MMessageBox dialog(QString(), QStringLiteral("Short"), M::OkButton);
    dialog.appear(&window);
    const qreal before = viewOf(&dialog, dialog.button(M::OkButton))->scenePos().y();
    MLabel *label = visibleBelow<MLabel>(&dialog).first();
    const qreal lineHeight = label->size().height();
    dialog.setText(longText());
    QTRY_VERIFY(label->size().height() > 2 * lineHeight);
    QCOMPARE(viewOf(&dialog, dialog.button(M::OkButton))->scenePos().y(), before);
    QVERIFY(label->sceneBoundingRect().bottom() <= before);
}

void TestMDialog::shownDialogRequestsNoMoreLayouts()
{
    MWindow window;
    window.show();
    MMessageBox dialog(QStringLiteral("Title"), longText(), M::YesButton | M::NoButton);
    dialog.appear(&window);
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    CountLayouts layouts;
    qApp->installEventFilter(&layouts);
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
    qApp->removeEventFilter(&layouts);
    QCOMPARE(layouts.count, 0);
}

void TestMDialog::rightToLeftMirrorsButtonsAndIcon()
{
    MWindow window;
    window.show();
    MDialog dialog(QStringLiteral("Title"), M::YesButton | M::NoButton);
    dialog.setTitleBarIconId(QStringLiteral("icon-m-service-nfc"));
    dialog.appear(&window);
    const auto yes = [&] { return viewOf(&dialog, dialog.button(M::YesButton))->scenePos().x(); };
    const auto no = [&] { return viewOf(&dialog, dialog.button(M::NoButton))->scenePos().x(); };
    const auto icon = [&] { return visibleBelow<MImageWidget>(&dialog).first()->scenePos().x(); };
    QVERIFY(yes() > no());
    QVERIFY(icon() < window.width() / 2);
    window.setLayoutDirection(Qt::RightToLeft);
    QTRY_VERIFY(yes() < no());
    QTRY_VERIFY(icon() > window.width() / 2);
}

void TestMDialog::enterPressesOnlyAButtonWhoseFocusIsSeen()
{
    MWindow window;
    QVERIFY(activate(&window));
    MDialog dialog(M::YesButton | M::NoButton);
    dialog.appear(&window);
    QSignalSpy finished(&dialog, &MDialog::finished);
    TouchDriver keys(&window);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Select, Qt::Key_Space})
        keys.key(key);
    QVERIFY(finished.isEmpty());

    // A button that has the focus from a finger shows it first.
    MButton *no = viewOf(&dialog, dialog.button(M::NoButton));
    const QImage resting = picture(window.scene(), no->sceneBoundingRect());
    no->setFocus(Qt::MouseFocusReason);
    QCOMPARE(picture(window.scene(), no->sceneBoundingRect()), resting);
    keys.key(Qt::Key_Return);
    QVERIFY(finished.isEmpty());
    QVERIFY(picture(window.scene(), no->sceneBoundingRect()) != resting);
    keys.key(Qt::Key_Return);
    QCOMPARE(dialog.result(), int(M::NoButton));
}

void TestMDialog::focusThatIsGivenBackIsSeenAsBefore()
{
    MWindow window;
    QVERIFY(activate(&window));
    MDialog lower(M::YesButton | M::NoButton);
    MDialog upper(M::OkButton);
    lower.appear(&window);
    MButton *no = viewOf(&lower, lower.button(M::NoButton));
    const auto look = [&] { return picture(window.scene(), no->sceneBoundingRect()); };
    for (const Qt::FocusReason reason : {Qt::TabFocusReason, Qt::MouseFocusReason}) {
        no->setFocus(reason);
        const QImage before = look();
        upper.appear(&window);
        QVERIFY(!no->hasFocus());
        upper.done(0);
        QVERIFY(no->hasFocus());
        QCOMPARE(look(), before);
        viewOf(&lower, lower.button(M::YesButton))->setFocus();
    }
}

void TestMDialog::dismissalIsLastInAColumnAndFirstInARow_data()
{
    QTest::addColumn<M::StandardButtons>("standard");
    QTest::addColumn<M::StandardButton>("dismissal");
    QTest::newRow("no") << M::StandardButtons(M::YesButton | M::NoButton) << M::NoButton;
    QTest::newRow("cancel") << M::StandardButtons(M::OkButton | M::CancelButton) << M::CancelButton;
}

void TestMDialog::dismissalIsLastInAColumnAndFirstInARow()
{
    QFETCH(M::StandardButtons, standard);
    QFETCH(M::StandardButton, dismissal);
    MWindow window;
    QVERIFY(activate(&window));
    MDialog dialog(standard);
    MButtonModel *other = dialog.addButton(QStringLiteral("View"));
    dialog.appear(&window);
    const auto place = [&dialog](const MButtonModel *model) { return viewOf(&dialog, model)->scenePos(); };
    const MButtonModel *dismissing = dialog.button(dismissal);
    QTRY_VERIFY(place(dismissing).x() < place(other).x());
    QVERIFY(place(other).x() < place(dialog.buttons().first()).x());

    other->setText(QStringLiteral("A text that leaves no room for others in its row"));
    QTRY_VERIFY(place(other).y() < place(dismissing).y());
    QVERIFY(place(dialog.buttons().first()).y() < place(other).y());
    // Keys go the same way.
    for (const MButtonModel *model : {dialog.buttons().first(), other, dialog.button(dismissal)}) {
        TouchDriver(&window).key(Qt::Key_Tab);
        QCOMPARE(window.scene()->focusItem(), viewOf(&dialog, model));
    }
    QCOMPARE(dialog.buttons().last(), other);
}

void TestMDialog::focusStaysInFrontDialog()
{
    MWindow window;
    QVERIFY(activate(&window));
    MDialog lower(M::OkButton);
    MDialog upper(M::YesButton | M::NoButton);
    lower.appear(&window);
    upper.appear(&window);
    QSet<QGraphicsItem *> seen;
    for (int i = 0; i < 6; ++i) {
        TouchDriver(&window).key(Qt::Key_Tab);
        QVERIFY(upper.isAncestorOf(window.scene()->focusItem()));
        seen.insert(window.scene()->focusItem());
    }
    QCOMPARE(seen.size(), 2);
    TouchDriver(&window).key(Qt::Key_Backtab);
    QVERIFY(seen.contains(window.scene()->focusItem()));
    upper.done(0);
    TouchDriver(&window).key(Qt::Key_Tab);
    QCOMPARE(window.scene()->focusItem(), viewOf(&lower, lower.button(M::OkButton)));
    TouchDriver(&window).key(Qt::Key_Space);
    QCOMPARE(lower.result(), 0x400);
}

void TestMDialog::arrowKeysMoveFocusInTheirDirection()
{
    MWindow window;
    QVERIFY(activate(&window));
    MDialog dialog(M::YesButton | M::NoButton | M::CancelButton);
    dialog.appear(&window);
    MButton *yes = viewOf(&dialog, dialog.button(M::YesButton));
    MButton *no = viewOf(&dialog, dialog.button(M::NoButton));
    MButton *cancel = viewOf(&dialog, dialog.button(M::CancelButton));
    TouchDriver(&window).key(Qt::Key_Left);
    QVERIFY(yes->hasFocus());
    // Yes stands at the end of the row.
    TouchDriver(&window).key(Qt::Key_Left);
    QVERIFY(no->hasFocus());
    TouchDriver(&window).key(Qt::Key_Left);
    QVERIFY(cancel->hasFocus());
    TouchDriver(&window).key(Qt::Key_Left);
    TouchDriver(&window).key(Qt::Key_Up);
    QVERIFY(cancel->hasFocus());
    TouchDriver(&window).key(Qt::Key_Right);
    QVERIFY(no->hasFocus());

    window.setLayoutDirection(Qt::RightToLeft);
    QTRY_VERIFY(yes->scenePos().x() < no->scenePos().x());
    TouchDriver(&window).key(Qt::Key_Left);
    QVERIFY(yes->hasFocus());

    // Below one another in a column.
    dialog.button(M::YesButton)->setText(QStringLiteral("A text that leaves no room for others in its row"));
    QTRY_VERIFY(yes->scenePos().y() < no->scenePos().y());
    TouchDriver(&window).key(Qt::Key_Down);
    QVERIFY(no->hasFocus());
    TouchDriver(&window).key(Qt::Key_Up);
    QVERIFY(yes->hasFocus());

    window.sceneManager()->setOrientationAngle(M::Angle180);
    TouchDriver(&window).key(Qt::Key_Down);
    QVERIFY(no->hasFocus());
}

void TestMDialog::keysScrollLongContents()
{
    MWindow window;
    QVERIFY(activate(&window));
    MMessageBox dialog(QString(), longText().repeated(40), M::OkButton);
    dialog.appear(&window);
    MLabel *label = visibleBelow<MLabel>(&dialog).first();
    const qreal top = label->scenePos().y();
    TouchDriver(&window).key(Qt::Key_PageDown);
    QVERIFY(label->scenePos().y() < top);
    for (int i = 0; i < 200; ++i)
        TouchDriver(&window).key(Qt::Key_Down);
    const MButton *button = viewOf(&dialog, dialog.button(M::OkButton));
    QVERIFY(label->sceneBoundingRect().bottom() <= button->scenePos().y());
    TouchDriver(&window).key(Qt::Key_PageUp);
    for (int i = 0; i < 200; ++i)
        TouchDriver(&window).key(Qt::Key_Up);
    QCOMPARE(label->scenePos().y(), top);
}

void TestMDialog::touchTargetsAreLargeEnough()
{
    MWindow window;
    MDialog dialog(M::YesButton | M::NoButton | M::CancelButton);
    dialog.addButton(QStringLiteral("x"));
    dialog.appear(&window);
    const QList<MButton *> buttons = visibleBelow<MButton>(&dialog);
    QCOMPARE(buttons.size(), 4);
    for (const MButton *button : buttons) {
        QVERIFY(button->size().height() >= 48);
        QVERIFY(button->size().width() >= 48);
    }
}

void TestMDialog::centralWidgetIsReplaced()
{
    MDialog dialog;
    QVERIFY(!dialog.centralWidget());
    QPointer<MWidget> first = new MWidget;
    auto *second = new MWidget;
    dialog.setCentralWidget(first);
    QCOMPARE(dialog.centralWidget(), first.data());
    dialog.setCentralWidget(first);
    QVERIFY(first);
    dialog.setCentralWidget(second);
    QVERIFY(!first);
    QCOMPARE(dialog.centralWidget(), second);
    dialog.setCentralWidget(nullptr);
    QVERIFY(!dialog.centralWidget());
}

void TestMDialog::thousandDialogsLeakNothing()
{
    MWindow window;
    QVERIFY(activate(&window));
    const auto openAndClose = [&](int times) {
        for (int i = 0; i < times; ++i) {
            auto *dialog = new MMessageBox(QStringLiteral("Title"), longText(), M::YesButton | M::NoButton);
            dialog->setIconId(QStringLiteral("icon-m-content-nfc-inverse"));
            dialog->appear(MDialog::DestroyWhenDone);
            QCoreApplication::processEvents();
            dialog->done(i);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    };
    openAndClose(100);
    const qsizetype items = window.scene()->items().size();
    const qsizetype widgets = QApplication::allWidgets().size();
    const auto children = window.findChildren<QObject *>().size();
    const size_t used = mallinfo2().uordblks;
    openAndClose(1000);
    QCOMPARE(window.scene()->items().size(), items);
    QCOMPARE(QApplication::allWidgets().size(), widgets);
    QCOMPARE(window.findChildren<QObject *>().size(), children);
    // Less than a hundred bytes for each: what Qt's own caches may still take, but no object.
    QVERIFY2(mallinfo2().uordblks < used + 100'000, qPrintable(QString::number(mallinfo2().uordblks - used)));
}

void TestMDialog::tapThatEndsAFlickClosesNothing()
{
    CrowdedDialog crowded;
    TouchDriver finger(&crowded.window);
    finger.flick({240, 800}, {240, 500}).tap(QPointF(240, 700));
    QVERIFY(crowded.dialog.scene());
    // The next one finds the buttons at rest.
    finger.tap(QPointF(240, 700));
    QVERIFY(!crowded.dialog.scene());
}

void TestMDialog::columnOfButtonsBeginsAtItsTop()
{
    CrowdedDialog crowded;
    const qreal before = crowded.top();
    TouchDriver(&crowded.window).wheel({240, 700}, -1200);
    QVERIFY(crowded.top() < before - 100);
    crowded.dialog.done(0);
    crowded.show();
    QCOMPARE(crowded.top(), before);
}

void TestMDialog::wheelMovesNothingBelow()
{
    MWindow window;
    window.show();
    QStringListModel model(QStringList(100, QStringLiteral("row")));
    auto *list = new MList;
    list->setItemModel(&model);
    list->setCellCreator(new EmptyCreator);
    window.scene()->addItem(list);
    list->setGeometry(0, 0, 480, 854);
    const qreal top = visibleBelow<MListItem>(list).first()->scenePos().y();
    const auto moved = [&] { return visibleBelow<MListItem>(list).first()->scenePos().y() != top; };

    MDialog dialog(QStringLiteral("Title"), M::OkButton);
    dialog.appear(&window);
    TouchDriver wheel(&window);
    wheel.wheel({240, 100}, -120);
    wheel.wheel(wheel.at(viewOf(&dialog, dialog.button(M::OkButton))), -120);
    QVERIFY(!moved());
    dialog.done(0);
    wheel.wheel({240, 100}, -120);
    QVERIFY(moved());
}

void TestMDialog::dialogBehindThatClosesLeavesTheFocus()
{
    MWindow window;
    QVERIFY(activate(&window));
    MDialog lower(M::YesButton | M::NoButton);
    MDialog upper(M::YesButton | M::NoButton);
    lower.appear(&window);
    upper.appear(&window);
    const MButton *no = viewOf(&upper, upper.button(M::NoButton));
    TouchDriver keys(&window);
    for (int i = 0; i < 3 && !no->hasFocus(); ++i)
        keys.key(Qt::Key_Tab);
    QVERIFY(no->hasFocus());
    lower.done(0);
    QVERIFY(no->hasFocus());
    keys.key(Qt::Key_Return);
    QCOMPARE(upper.result(), int(M::NoButton));
}

void TestMDialog::tabScrollsControlsIntoView_data()
{
    QTest::addColumn<bool>("inBody");
    QTest::newRow("contents") << true;
    QTest::newRow("column of buttons") << false;
}

void TestMDialog::tabScrollsControlsIntoView()
{
    QFETCH(bool, inBody);
    constexpr int controls = 30;
    MWindow window;
    QVERIFY(activate(&window));
    MDialog dialog(QStringLiteral("Title"));
    auto *contents = new MWidget;
    auto *layout = new QGraphicsLinearLayout(Qt::Vertical, contents);
    for (int i = 0; i < controls; ++i) {
        if (inBody)
            layout->addItem(new MButton(QString::number(i)));
        else
            dialog.addButton(
                QStringLiteral("A button that fills the whole width of the dialog, number %1").arg(i));
    }
    dialog.setCentralWidget(contents);
    dialog.appear(&window);
    QCoreApplication::processEvents();
    QSet<QGraphicsItem *> seen;
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        for (int i = 0; i < controls; ++i) {
            TouchDriver(&window).key(key);
            const QGraphicsItem *focused = window.scene()->focusItem();
            seen.insert(window.scene()->focusItem());
            const QRectF place = focused->sceneBoundingRect();
            const QGraphicsItem *around = focused->parentItem();
            while (!(around->flags() & QGraphicsItem::ItemClipsChildrenToShape))
                around = around->parentItem();
            const QRectF area = around->sceneBoundingRect();
            QVERIFY2(area.adjusted(-1, -1, 1, 1).contains(place), "a control with the focus is out of sight");
        }
    }
    QCOMPARE(seen.size(), controls);
}

void TestMDialog::appearingEndsPressesBelow()
{
    MWindow window;
    window.show();
    auto *below = new MButton(QStringLiteral("Below"));
    window.scene()->addItem(below);
    below->setGeometry(50, 50, 200, 60);
    const QImage resting = picture(window.scene(), below->sceneBoundingRect());
    QSignalSpy clicked(below, &MButton::clicked);
    TouchDriver finger(&window);
    finger.press(finger.at(below));
    QVERIFY(picture(window.scene(), below->sceneBoundingRect()) != resting);
    MDialog dialog(M::OkButton);
    dialog.appear(&window);
    finger.lift();
    QVERIFY(clicked.isEmpty());
    dialog.done(0);
    QCOMPARE(picture(window.scene(), below->sceneBoundingRect()), resting);

    // A press on the dialog itself stays, also when it comes to the front by that.
    dialog.appear(&window);
    finger.press(finger.at(viewOf(&dialog, dialog.button(M::OkButton))));
    dialog.appear(&window);
    finger.lift();
    QCOMPARE(dialog.result(), int(M::OkButton));
}

void TestMDialog::dialogInAPlainSceneTakesKeys()
{
    QGraphicsScene scene;
    QGraphicsView view(&scene);
    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    auto *dialog = new MDialog(QStringLiteral("Title"), M::OkButton);
    scene.addItem(dialog);
    dialog->resize(480, 854);
    dialog->setFocus();
    QSignalSpy finished(dialog, &MDialog::finished);
    TouchDriver keys(&view);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Left, Qt::Key_Right, Qt::Key_Tab, Qt::Key_A,
                              Qt::Key_PageDown, Qt::Key_PageUp})
        keys.key(key);
    QVERIFY(finished.isEmpty());
    dialog->setFocus();
    keys.key(Qt::Key_Escape);
    QCOMPARE(finished.count(), 1);
}

void TestMDialog::smallWindowScrollsEverything_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("100 x 100") << QSize(100, 100);
    QTest::newRow("480 x 120") << QSize(480, 120);
    QTest::newRow("120 x 200") << QSize(120, 200);
}

void TestMDialog::smallWindowScrollsEverything()
{
    QFETCH(QSize, size);
    MWindow window;
    window.resize(size);
    QVERIFY(activate(&window));
    MMessageBox dialog(QStringLiteral("Connect?"), longText(), M::YesButton | M::NoButton);
    dialog.appear(&window);
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    CountLayouts layouts;
    qApp->installEventFilter(&layouts);
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    qApp->removeEventFilter(&layouts);
    QCOMPARE(layouts.count, 0);
    QCOMPARE(window.size(), size);

    const MLabel *title = visibleBelow<MLabel>(&dialog).first();
    QVERIFY(title->sceneBoundingRect().top() >= 0);
    const MButton *no = viewOf(&dialog, dialog.button(M::NoButton));
    const auto inSight = [&] {
        const QRectF seen = no->sceneBoundingRect() & window.rect();
        return seen.height() >= no->size().height() - 1 && seen.width() > 40 ? seen.center() : QPointF();
    };
    TouchDriver finger(&window);
    // A screen full of text at a time.
    for (int i = 0; i < 200 && inSight().isNull(); ++i)
        finger.wheel(QRectF(QPointF(), size).center(), -60);
    QVERIFY2(!inSight().isNull(), "the button is out of reach");
    finger.tap(inSight());
    QCOMPARE(dialog.result(), int(M::NoButton));

    dialog.appear(&window);
    QVERIFY(title->sceneBoundingRect().top() >= 0);
    finger.key(Qt::Key_Tab).key(Qt::Key_Tab);
    QVERIFY(no->hasFocus());
    QVERIFY(!inSight().isNull());

    window.resize(480, 854);
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    const qreal place = no->scenePos().y();
    QVERIFY(place > 700 && no->sceneBoundingRect().bottom() < 854);
    finger.wheel({240, 600}, -120);
    QCOMPARE(no->scenePos().y(), place);
}

void TestMDialog::wideLowWindowHasButtonsBesideTheContents_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("left to right") << Qt::LeftToRight;
    QTest::newRow("right to left") << Qt::RightToLeft;
}

void TestMDialog::wideLowWindowHasButtonsBesideTheContents()
{
    QFETCH(Qt::LayoutDirection, direction);
    MWindow window;
    window.resize(720, 360);
    window.setLayoutDirection(direction);
    window.show();
    MMessageBox dialog(QStringLiteral("Title"), QStringLiteral("Text"), M::YesButton | M::NoButton);
    dialog.appear(&window);
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    const MLabel *text = visibleBelow<MLabel>(&dialog).last();
    const MButton *yes = viewOf(&dialog, dialog.button(M::YesButton));
    const MButton *no = viewOf(&dialog, dialog.button(M::NoButton));
    QVERIFY(text->sceneBoundingRect().bottom() <= yes->sceneBoundingRect().top());
    QCOMPARE(yes->scenePos().y(), no->scenePos().y());

    dialog.setText(longText().repeated(20));
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    CountLayouts layouts;
    qApp->installEventFilter(&layouts);
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    qApp->removeEventFilter(&layouts);
    QCOMPARE(layouts.count, 0);
    QVERIFY(no->scenePos().y() > yes->scenePos().y());
    const QRectF card = dialog.childItems().first()->sceneBoundingRect();
    for (const MButton *button : {yes, no}) {
        const QRectF place = button->sceneBoundingRect();
        QVERIFY(card.contains(place));
        QVERIFY(direction == Qt::LeftToRight ? place.left() > text->sceneBoundingRect().right()
                                             : place.right() < text->sceneBoundingRect().left());
    }
    QVERIFY(card.left() <= text->scenePos().x() && text->sceneBoundingRect().right() <= card.right());

    dialog.setText(QStringLiteral("Text"));
    QTRY_COMPARE(yes->scenePos().y(), no->scenePos().y());
}

// One key goes on, another one presses.
void TestMDialog::switchAccessReachesEveryButton()
{
    MWindow window;
    QVERIFY(activate(&window));
    constexpr int buttons = 5;
    for (int wanted = 0; wanted < buttons; ++wanted) {
        MMessageBox dialog(QStringLiteral("Title"), longText(), M::YesButton | M::NoButton);
        for (const char *text : {"One", "Two", "Three"})
            dialog.addButton(QString::fromLatin1(text));
        dialog.appear(&window);
        TouchDriver keys(&window);
        // The one that dismisses the dialog is the last.
        QList<MButtonModel *> inOrder = dialog.buttons();
        inOrder.move(1, buttons - 1);
        QPointF before(0, 0);
        for (int i = 0; i <= wanted; ++i) {
            keys.key(Qt::Key_Tab);
            const QGraphicsItem *focused = window.scene()->focusItem();
            QCOMPARE(focused, viewOf(&dialog, inOrder.at(i)));
            // In the order in which they stand.
            QVERIFY(focused->scenePos().y() > before.y());
            before = focused->scenePos();
        }
        keys.key(Qt::Key_Space);
        QCOMPARE(dialog.clickedButton(), inOrder.at(wanted));
        dialog.done(0);
    }
}

void TestMDialog::lateClickChangesNothing()
{
    MWindow window;
    MDialog dialog(M::YesButton | M::NoButton);
    dialog.appear(&window);
    dialog.button(M::NoButton)->click();
    dialog.button(M::YesButton)->click();
    QCOMPARE(dialog.clickedButton(), dialog.button(M::NoButton));
    QCOMPARE(dialog.result(), int(M::NoButton));
    dialog.appear(&window);
    dialog.dismiss();
    dialog.button(M::YesButton)->click();
    QVERIFY(!dialog.clickedButton());
    QCOMPARE(dialog.result(), canceled);
}

void TestMDialog::buttonsMayGo_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"removeButton", "delete", "removeButton in its slot", "delete later in its slot"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestMDialog::buttonsMayGo()
{
    QFETCH(QString, way);
    MWindow window;
    window.show();
    StubbornDialog dialog(M::YesButton | M::NoButton);
    QPointer<MButtonModel> more = dialog.addButton(QStringLiteral("More"));
    MButtonModel foreign(QStringLiteral("Foreign"), M::InvalidRole, M::NoStandardButton);
    dialog.appear(&window);
    dialog.removeButton(&foreign);
    dialog.removeButton(nullptr);
    QCOMPARE(dialog.buttons().size(), 3);
    const QPointer<MButton> view = viewOf(&dialog, more);
    const QPointF place = TouchDriver(&window).at(view);
    // The caller of the slot may still look at both.
    bool staysInSlot = true;
    if (way == QLatin1String("removeButton")) {
        dialog.removeButton(more);
        QCOMPARE(dialog.buttons().size(), 2);
    } else if (way == QLatin1String("delete")) {
        delete more;
    } else {
        connect(more, &MButtonModel::clicked, this, [&] {
            if (way == QLatin1String("removeButton in its slot"))
                dialog.removeButton(more);
            else
                more->deleteLater();
            staysInSlot = more && view;
        });
        TouchDriver(&window).tap(place);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(staysInSlot);
    QVERIFY(!more);
    QCOMPARE(dialog.buttons(),
             (QList<MButtonModel *>{dialog.button(M::YesButton), dialog.button(M::NoButton)}));
    QCOMPARE(visibleBelow<MButton>(&dialog).size(), 2);
    QVERIFY(!dialog.clickedButton());
    QCoreApplication::processEvents();
    tap(&window, viewOf(&dialog, dialog.button(M::NoButton)));
    QCOMPARE(dialog.result(), int(M::NoButton));
}

void TestMDialog::removedButtonLeavesTheFocusToNobody()
{
    MWindow window;
    QVERIFY(activate(&window));
    MDialog dialog(M::NoButton | M::YesButton);
    dialog.appear(&window);
    viewOf(&dialog, dialog.button(M::NoButton))->setFocus(Qt::TabFocusReason);
    dialog.removeButton(dialog.button(M::NoButton));
    QVERIFY(dialog.hasFocus());
}

void TestMDialog::clickOnTheButtonOfADyingDialogDoesNothing()
{
    auto *dialog = new MDialog(M::OkButton);
    MButtonModel *ok = dialog->button(M::OkButton);
    QSignalSpy finished(dialog, &MDialog::finished);
    connect(dialog, &QObject::destroyed, this, [ok] { ok->click(); });
    delete dialog;
    QVERIFY(finished.isEmpty());
}

QTEST_MAIN(TestMDialog)
#include "tst_mdialog.moc"
