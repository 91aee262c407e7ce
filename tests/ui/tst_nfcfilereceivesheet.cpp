// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

#include <QElapsedTimer>
#include <QGraphicsLinearLayout>
#include <QSignalSpy>
#include <QtTest>

#include <DialogHelperWidget>
#include <MButton>
#include <MImageWidget>
#include <MLabel>
#include <MProgressIndicator>
#include <MWindow>
#include <NfcFileReceiveSheet>

#include "catalogue.h"
#include "shownwidgets.h"
#include "tabkey.h"
#include "ui/nfcfilereceivesheet_p.h"

using namespace ConnUi;

namespace {

constexpr quint64 most = std::numeric_limits<quint64>::max();

template <typename Widget>
Widget *styled(const QGraphicsWidget *root, const QString &style)
{
    Widget *found = nullptr;
    for (Widget *widget : shownWidgets<Widget>(root))
        if (widget->styleName() == style)
            found = widget;
    return found;
}

// A sheet on the screen of a phone.
class Shown
{
public:
    Shown()
    {
        // Widgets without a text take no room, and are not seen.
        sheet.setRemoteDeviceName(QStringLiteral("Anna"));
        sheet.setFileName(QStringLiteral("song.ogg"));
        sheet.setProgress({}, 0, 0);
        sheet.appear(&window);
        window.show();
        ready = QTest::qWaitForWindowExposed(&window);
    }

    QString size() const { return textOf(QStringLiteral("CommonItemInfo")); }
    QString sender() const { return textOf(QStringLiteral("CommonTitle")); }
    QStringList times() const { return shownTexts<MLabel>(&sheet).filter(QStringLiteral(" remaining")); }
    MProgressIndicator *bar() const
    {
        return styled<MProgressIndicator>(&sheet, QStringLiteral("CommonProgressBarInverted"));
    }

    NfcFileReceiveSheet sheet;
    MWindow window;
    bool ready;

private:
    QString textOf(const QString &style) const
    {
        const auto *label = styled<MLabel>(&sheet, style);
        return label ? label->text() : QString();
    }
};

// The calculations behind a sheet, without the clock.
struct Calculation
{
    NfcFileReceiveSheet sheet;
    NfcFileReceiveSheetPrivate d{&sheet};
    const std::unique_ptr<QGraphicsWidget> content{d.createContent()};
};

QGraphicsLinearLayout *linearLayout(const QGraphicsWidget *widget)
{
    return dynamic_cast<QGraphicsLinearLayout *>(widget->layout());
}

} // namespace

class TestNfcFileReceiveSheet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void sheetIsNamed();
    void contentStandsFromTopToBottom();
    void panelsAreStyled();
    void labelsAreStyled();
    void settersWorkBeforeTheSheetAppears();
    void settersWorkWhileItIsShownAndAfterwards();
    void namesAreTakenLiterally();
    void thumbnailIsFoundByItsId();
    void thumbnailIsFoundByItsPath();
    void cancelButtonCancels();
    void doneButtonOnlyClosesTheSheet();
    void keyboardReachesEveryButtonFromTopToBottom();
    void switchAccessPressesEveryButton();

    void sizesHaveUnits_data();
    void sizesHaveUnits();
    void sizesAreGroupedByTheLocale();
    void barShowsTheSameNumbersAsTheText_data();
    void barShowsTheSameNumbersAsTheText();

    void medianIsOfTheLastTenSpeeds_data();
    void medianIsOfTheLastTenSpeeds();
    void remainingTimeFollowsFromTheSpeed_data();
    void remainingTimeFollowsFromTheSpeed();
    void remainingTimeFollowsFromTheMedian();
    void reportWithoutNewsLeavesTheTime_data();
    void reportWithoutNewsLeavesTheTime();
    void timeIsWrittenByItsLength_data();
    void timeIsWrittenByItsLength();
    void timeIsSpokenInWords_data();
    void timeIsSpokenInWords();
    void invalidTimeIsLogged();

    void progressOfAShownSheetTellsTheTimeLeft();
    void firstReportStartsTheClock();
    void everyReportStartsTheClockAnew();
    void reportAfterZeroStartsTheClock();
    void countsMayGoBackwards();
    void everyCountIsDefined();

private:
    const Catalogue english;
};

void TestNfcFileReceiveSheet::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestNfcFileReceiveSheet::sheetIsNamed()
{
    const NfcFileReceiveSheet sheet;
    QCOMPARE(sheet.styleName(), QStringLiteral("Inverted"));
    QCOMPARE(sheet.title(), QStringLiteral("Receiving file"));
    QCOMPARE(sheet.rejectButtonText(), QStringLiteral("Done"));
    QVERIFY(qobject_cast<DialogHelperWidget *>(sheet.centralWidget()));
}

void TestNfcFileReceiveSheet::contentStandsFromTopToBottom()
{
    Calculation calculation;
    NfcFileReceiveSheetPrivate &d = calculation.d;
    d.senderLabel->setText(QStringLiteral("sender"));
    d.fileNameLabel->setText(QStringLiteral("name"));
    d.sizeLabel->setText(QStringLiteral("size"));
    d.timeLabel->setText(QStringLiteral("time"));
    calculation.content->resize(480, 700);
    calculation.content->layout()->activate();
    const auto place = [&](const QGraphicsWidget *widget) {
        return widget->mapRectToItem(calculation.content.get(), widget->rect());
    };
    QVERIFY(place(d.senderLabel).bottom() <= place(d.fileNameLabel).top());
    QVERIFY(place(d.fileNameLabel).right() <= place(d.sizeLabel).left());
    QVERIFY(place(d.fileNameLabel).bottom() <= place(d.thumbnail).top());
    QVERIFY(place(d.thumbnail).right() <= place(d.progress).left());
    QVERIFY(qAbs(place(d.thumbnail).center().y() - place(d.progress).center().y()) <= 1);
    QVERIFY(place(d.thumbnail).bottom() <= place(d.timeLabel).top());
    QVERIFY(place(d.timeLabel).bottom() <= place(d.cancelButton).top());
    QVERIFY(qAbs(place(d.cancelButton).center().x() - 240) <= 1);
}

void TestNfcFileReceiveSheet::panelsAreStyled()
{
    Calculation calculation;
    NfcFileReceiveSheetPrivate &d = calculation.d;
    const QList<std::pair<QGraphicsWidget *, QString>> panels{
        {d.senderLabel->parentWidget(), QStringLiteral("CommonPanel")},
        {d.progress->parentWidget(), QStringLiteral("CommonPanel")},
        {d.timeLabel->parentWidget(), QStringLiteral("CommonSmallPanel")},
    };
    QList<QGraphicsLinearLayout *> layouts;
    for (const auto &[widget, style] : panels) {
        const auto *panel = qobject_cast<MWidgetController *>(widget);
        QVERIFY(panel);
        QCOMPARE(panel->styleName(), style);
        layouts.append(linearLayout(panel));
    }
    layouts.append(dynamic_cast<QGraphicsLinearLayout *>(layouts.constFirst()->itemAt(1)));
    layouts.append(linearLayout(d.cancelButton->parentWidget()));
    for (const QGraphicsLinearLayout *layout : layouts) {
        QVERIFY(layout);
        QCOMPARE(layout->spacing(), 0.0);
        qreal left = -1;
        qreal top = -1;
        qreal right = -1;
        qreal bottom = -1;
        layout->getContentsMargins(&left, &top, &right, &bottom);
        QCOMPARE((QList<qreal>{left, top, right, bottom}), (QList<qreal>{0, 0, 0, 0}));
    }
    QCOMPARE(layouts[1]->stretchFactor(d.thumbnail), 0);
    QCOMPARE(layouts[1]->stretchFactor(d.progress), 1);
    QCOMPARE(layouts[1]->alignment(d.progress), Qt::AlignVCenter);
    QCOMPARE(layouts[4]->alignment(d.cancelButton), Qt::AlignCenter);
    QCOMPARE(d.cancelButton->styleName(), QStringLiteral("CommonSingleButton"));
    QCOMPARE(d.cancelButton->text(), QStringLiteral("Cancel"));
    QCOMPARE(d.thumbnail->styleName(), QStringLiteral("CommonThumbnail"));
    QCOMPARE(d.progress->styleName(), QStringLiteral("CommonProgressBarInverted"));
    QCOMPARE(d.progress->viewType(), MProgressIndicator::barType);
}

void TestNfcFileReceiveSheet::labelsAreStyled()
{
    Calculation calculation;
    NfcFileReceiveSheetPrivate &d = calculation.d;
    QCOMPARE(d.senderLabel->styleName(), QStringLiteral("CommonTitle"));
    QVERIFY(d.senderLabel->textElide());
    QCOMPARE(d.fileNameLabel->styleName(), QStringLiteral("CommonSubTitle"));
    QVERIFY(d.fileNameLabel->textElide());
    QVERIFY(d.fileNameLabel->alignment() & Qt::AlignLeft);
    QCOMPARE(d.sizeLabel->styleName(), QStringLiteral("CommonItemInfo"));
    QVERIFY(d.sizeLabel->alignment() & Qt::AlignRight);
    QCOMPARE(d.timeLabel->styleName(), QStringLiteral("CommonSubTitle"));
    QVERIFY(d.timeLabel->alignment() & Qt::AlignTop);
}

void TestNfcFileReceiveSheet::settersWorkBeforeTheSheetAppears()
{
    const Shown shown;
    QVERIFY(shown.ready);
    QCOMPARE(shown.sender(), QStringLiteral("From Anna"));
    QCOMPARE(shown.size(), QStringLiteral("0/0 kB"));
    QVERIFY(shownTexts<MLabel>(&shown.sheet).contains(QStringLiteral("song.ogg")));
}

void TestNfcFileReceiveSheet::settersWorkWhileItIsShownAndAfterwards()
{
    Shown shown;
    QVERIFY(shown.ready);
    shown.sheet.setRemoteDeviceName(QStringLiteral("Bert"));
    shown.sheet.setFileName(QStringLiteral("film.ogv"));
    shown.sheet.setProgress(QStringLiteral("a transfer"), 5000, 9000);
    QCOMPARE(shown.sender(), QStringLiteral("From Bert"));
    QCOMPARE(shown.size(), QStringLiteral("5/9 kB"));
    QVERIFY(shownTexts<MLabel>(&shown.sheet).contains(QStringLiteral("film.ogv")));
    shown.sheet.dismiss();
    shown.sheet.setRemoteDeviceName(QStringLiteral("Carl"));
    shown.sheet.setFileName(QStringLiteral("text.txt"));
    shown.sheet.setThumbnailImage(QStringLiteral("icon-m-service-nfc"));
    shown.sheet.setProgress(QStringLiteral("another transfer"), 9000, 9000);
    shown.sheet.appear(&shown.window);
    QCOMPARE(shown.sender(), QStringLiteral("From Carl"));
    QCOMPARE(shown.size(), QStringLiteral("9/9 kB"));
}

void TestNfcFileReceiveSheet::namesAreTakenLiterally()
{
    Shown shown;
    QVERIFY(shown.ready);
    shown.sheet.setRemoteDeviceName(QStringLiteral("<b>%1 %2 %L1</b>"));
    QCOMPARE(shown.sender(), QStringLiteral("From <b>%1 %2 %L1</b>"));
    shown.sheet.setRemoteDeviceName({});
    QCOMPARE(shown.sender(), QStringLiteral("From "));
}

void TestNfcFileReceiveSheet::thumbnailIsFoundByItsId()
{
    Shown shown;
    shown.sheet.setThumbnailImage(QStringLiteral("icon-m-service-nfc"));
    auto *thumbnail = styled<MImageWidget>(&shown.sheet, QStringLiteral("CommonThumbnail"));
    QVERIFY(thumbnail);
    QCOMPARE(thumbnail->imageId(), QStringLiteral("icon-m-service-nfc"));
}

void TestNfcFileReceiveSheet::thumbnailIsFoundByItsPath()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("picture.png"));
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(path));
    Shown shown;
    shown.sheet.setThumbnailImage(path);
    auto *thumbnail = styled<MImageWidget>(&shown.sheet, QStringLiteral("CommonThumbnail"));
    QVERIFY(thumbnail);
    const QPoint middle = shown.window.mapFromScene(thumbnail->mapToScene(thumbnail->rect().center()));
    QTRY_COMPARE(shown.window.grab().toImage().pixelColor(middle), QColor(Qt::red));
}

void TestNfcFileReceiveSheet::cancelButtonCancels()
{
    const Shown shown;
    QSignalSpy canceled(&shown.sheet, &NfcFileReceiveSheet::transferCanceled);
    auto *button = styled<MButton>(&shown.sheet, QStringLiteral("CommonSingleButton"));
    QVERIFY(button);
    button->click();
    QCOMPARE(canceled, QList<QVariantList>{{}});
    // It is for the client to say when the transfer is over.
    QCOMPARE(shown.sheet.sceneManager(), shown.window.sceneManager());
    button->click();
    QCOMPARE(canceled.size(), 2);
}

void TestNfcFileReceiveSheet::doneButtonOnlyClosesTheSheet()
{
    const Shown shown;
    QSignalSpy canceled(&shown.sheet, &NfcFileReceiveSheet::transferCanceled);
    auto *button = styled<MButton>(&shown.sheet, QStringLiteral("SimpleSheetButton"));
    QVERIFY(button);
    QCOMPARE(button->text(), QStringLiteral("Done"));
    button->click();
    QCOMPARE(shown.sheet.sceneManager(), nullptr);
    QCOMPARE(canceled, QList<QVariantList>());
}

void TestNfcFileReceiveSheet::keyboardReachesEveryButtonFromTopToBottom()
{
    Shown shown;
    QVERIFY(QTest::qWaitForWindowActive(&shown.window));
    QCoreApplication::processEvents();
    QList<QGraphicsItem *> fromTop = asItems(shownWidgets<MButton>(&shown.sheet));
    QCOMPARE(fromTop.size(), 2);
    QCOMPARE(itemsInFocusOrder(&shown.window, Qt::Key_Tab), fromTop);
    std::reverse(fromTop.begin(), fromTop.end());
    shown.sheet.setFocus();
    QCOMPARE(itemsInFocusOrder(&shown.window, Qt::Key_Backtab), fromTop);
}

// One key goes on, another one presses.
void TestNfcFileReceiveSheet::switchAccessPressesEveryButton()
{
    Shown shown;
    QVERIFY(QTest::qWaitForWindowActive(&shown.window));
    QSignalSpy canceled(&shown.sheet, &NfcFileReceiveSheet::transferCanceled);
    const auto press = [&shown] { QTest::keyClick(shown.window.viewport(), Qt::Key_Space); };
    const auto goOn = [&shown] { QTest::keyClick(shown.window.viewport(), Qt::Key_Tab); };
    goOn();
    goOn();
    press();
    QCOMPARE(canceled.size(), 1);
    QVERIFY(shown.sheet.sceneManager());
    goOn();
    press();
    QVERIFY(!shown.sheet.sceneManager());
    QCOMPARE(canceled.size(), 1);
}

void TestNfcFileReceiveSheet::sizesHaveUnits_data()
{
    QTest::addColumn<quint64>("transferred");
    QTest::addColumn<quint64>("total");
    QTest::addColumn<QString>("text");
    const auto row = [](quint64 transferred, quint64 total, const char *text) {
        QTest::addRow("%llu of %llu", transferred, total)
            << transferred << total << QString::fromLatin1(text);
    };
    row(0, 0, "0/0 kB");
    row(999, 999, "0/0 kB");
    row(1000, 1999, "1/1 kB");
    row(999999, 5000000, "999/5,000 kB");
    row(1000000, 5000000, "1,000/5,000 kB");
    row(1000999, 5000000, "1,000/5,000 kB");
    row(1001000, 5000000, "1/5 MB");
    row(1999999, 1999999, "1/1 MB");
    row(0, 5000000000000, "0/5,000,000,000 kB");
    row(1000000000, 5000000000, "1,000/5,000 MB");
    row(1000000999, 5000000000, "1,000/5,000 MB");
    row(1000001000, 5000000000, "1/5 GB");
    row(5000000, 1000000, "5/1 MB");
    row(5000000, 0, "5/0 MB");
    row(0, most, "0/18,446,744,073,709,551 kB");
    row(most, most, "18,446,744,073/18,446,744,073 GB");
    row(most, 0, "18,446,744,073/0 GB");
}

void TestNfcFileReceiveSheet::sizesHaveUnits()
{
    QFETCH(quint64, transferred);
    QFETCH(quint64, total);
    QFETCH(QString, text);
    Shown shown;
    QVERIFY(shown.ready);
    shown.sheet.setProgress({}, transferred, total);
    QCOMPARE(shown.size(), text);
}

void TestNfcFileReceiveSheet::sizesAreGroupedByTheLocale()
{
    const QLocale before;
    const auto restore = qScopeGuard([before] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(QLocale::German));
    Shown shown;
    shown.sheet.setProgress({}, 1000000000, 5000000000);
    QCOMPARE(shown.size(), QStringLiteral("1.000/5.000 MB"));
}

void TestNfcFileReceiveSheet::barShowsTheSameNumbersAsTheText_data()
{
    QTest::addColumn<quint64>("transferred");
    QTest::addColumn<quint64>("total");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("maximum");
    QTest::newRow("nothing of nothing") << quint64(0) << quint64(0) << 0 << 0;
    QTest::newRow("kilobytes") << quint64(999999) << quint64(5000000) << 999 << 5000;
    QTest::newRow("megabytes") << quint64(3500000) << quint64(5000000) << 3 << 5;
    QTest::newRow("gigabytes") << quint64(3500000000) << quint64(5000000000) << 3 << 5;
    QTest::newRow("everything") << quint64(5000000) << quint64(5000000) << 5 << 5;
    QTest::newRow("beyond the total") << quint64(9000000) << quint64(5000000) << 5 << 5;
    QTest::newRow("something of nothing") << quint64(9000000) << quint64(0) << 0 << 0;
    constexpr quint64 int32 = std::numeric_limits<int>::max();
    QTest::newRow("as much as a bar holds") << quint64(0) << int32 * 1000 << 0 << int(int32);
    QTest::newRow("more than a bar holds") << quint64(2000) << (int32 + 1) * 1000 << 1 << (1 << 30);
}

void TestNfcFileReceiveSheet::barShowsTheSameNumbersAsTheText()
{
    QFETCH(quint64, transferred);
    QFETCH(quint64, total);
    QFETCH(int, value);
    QFETCH(int, maximum);
    Shown shown;
    QVERIFY(shown.bar());
    // The unit of the report before is not that of this one.
    shown.sheet.setProgress({}, 1000000, 1000000);
    shown.sheet.setProgress({}, transferred, total);
    QCOMPARE(shown.bar()->minimum(), 0);
    QCOMPARE(shown.bar()->maximum(), maximum);
    QCOMPARE(shown.bar()->value(), value);
}

void TestNfcFileReceiveSheet::medianIsOfTheLastTenSpeeds_data()
{
    QTest::addColumn<QList<float>>("speeds");
    QTest::addColumn<float>("median");
    QTest::newRow("one") << QList<float>{7} << 7.0F;
    QTest::newRow("of two the newest, the slower") << QList<float>{9, 2} << 2.0F;
    QTest::newRow("of two the newest, the faster") << QList<float>{2, 9} << 9.0F;
    QTest::newRow("three") << QList<float>{9, 1, 5} << 5.0F;
    QTest::newRow("the upper of two in the middle") << QList<float>{4, 1, 3, 2} << 3.0F;
    QTest::newRow("ten") << QList<float>{10, 9, 8, 7, 6, 5, 4, 3, 2, 1} << 6.0F;
    QTest::newRow("eleven, without the oldest") << QList<float>{100, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10} << 6.0F;
    QTest::newRow("twenty, without the ten oldest")
        << QList<float>{90, 90, 90, 90, 90, 90, 90, 90, 90, 90, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1} << 6.0F;
    QTest::newRow("the oldest is the first, not the smallest")
        << QList<float>{9, 1, 1, 1, 1, 1, 9, 9, 9, 9, 9} << 9.0F;
}

void TestNfcFileReceiveSheet::medianIsOfTheLastTenSpeeds()
{
    QFETCH(QList<float>, speeds);
    QFETCH(float, median);
    Calculation calculation;
    float last = 0;
    for (const float speed : std::as_const(speeds))
        last = calculation.d.calculateMedianSpeed(speed);
    QCOMPARE(last, median);
    // In the order of arrival.
    QCOMPARE(calculation.d.speeds, speeds.last(qMin(speeds.size(), qsizetype(10))));
}

void TestNfcFileReceiveSheet::remainingTimeFollowsFromTheSpeed_data()
{
    QTest::addColumn<qint64>("elapsed");
    QTest::addColumn<quint64>("before");
    QTest::addColumn<quint64>("transferred");
    QTest::addColumn<quint64>("total");
    QTest::addColumn<QString>("time");
    const auto row = [](const char *name, qint64 elapsed, quint64 before, quint64 transferred, quint64 total,
                        const char *time) {
        QTest::newRow(name) << elapsed << before << transferred << total
                            << QString::fromLatin1(time) + QStringLiteral(" remaining");
    };
    row("half of two minutes", 60000, 1, 60001, 120001, "01:00");
    row("a millisecond", 1, 1, 11, 600011, "01:00");
    row("cut to the second", 1000, 1, 1001, 2000, "00:00");
    row("59 minutes 59 seconds", 1, 1, 2, 2 + 3599999, "59:59");
    row("one hour", 1, 1, 2, 2 + 3600000, "1:00:00");
    row("a minute short of a day", 1, 1, 2, 2 + 86340000, "23:59:00");
    row("a day", 1, 1, 2, 2 + 86400000, "00:00");
    row("a day and a minute", 1, 1, 2, 2 + 86460000, "01:00");
    row("24 days", 1, 1, 2, 2 + 2147483520, "20:31:23");
    row("beyond 24 days", 1, 1, 2, 2 + quint64(2147483648), "20:31:23");
    row("25 days", 1, 1, 2, 2 + quint64(2160000000), "20:31:23");
    row("as long as can be", std::numeric_limits<qint64>::max(), 1, 2, most, "20:31:23");
    row("as fast as can be", 1, 1, most, most, "00:00");
    row("done", 1000, 1, 5000, 5000, "00:00");
    row("beyond the total", 1000, 1, 9000, 5000, "00:00");
    row("beyond a total of nothing", 1000, 1, 9000, 0, "00:00");
}

void TestNfcFileReceiveSheet::remainingTimeFollowsFromTheSpeed()
{
    QFETCH(qint64, elapsed);
    QFETCH(quint64, before);
    QFETCH(quint64, transferred);
    QFETCH(quint64, total);
    QFETCH(QString, time);
    Calculation calculation;
    calculation.d.addReport(elapsed, before, transferred, total);
    QCOMPARE(calculation.d.timeLabel->text(), time);
    QCOMPARE(calculation.d.speeds.size(), 1);
}

void TestNfcFileReceiveSheet::remainingTimeFollowsFromTheMedian()
{
    Calculation calculation;
    NfcFileReceiveSheetPrivate &d = calculation.d;
    d.addReport(1, 1, 1001, 61001); // 1000 bytes per millisecond
    QCOMPARE(d.timeLabel->text(), QStringLiteral("00:00 remaining"));
    d.addReport(1, 1001, 1002, 61002); // 1
    QCOMPARE(d.timeLabel->text(), QStringLiteral("01:00 remaining"));
    d.addReport(2, 1002, 1022, 601022); // 10, the median
    QCOMPARE(d.timeLabel->text(), QStringLiteral("01:00 remaining"));
}

void TestNfcFileReceiveSheet::reportWithoutNewsLeavesTheTime_data()
{
    QTest::addColumn<qint64>("elapsed");
    QTest::addColumn<quint64>("before");
    QTest::addColumn<quint64>("transferred");
    QTest::newRow("no new bytes") << qint64(1000) << quint64(5) << quint64(5);
    QTest::newRow("fewer bytes") << qint64(1000) << quint64(5) << quint64(4);
    QTest::newRow("far fewer bytes") << qint64(1000) << most << quint64(0);
    QTest::newRow("in the same millisecond") << qint64(0) << quint64(5) << quint64(5000);
}

void TestNfcFileReceiveSheet::reportWithoutNewsLeavesTheTime()
{
    QFETCH(qint64, elapsed);
    QFETCH(quint64, before);
    QFETCH(quint64, transferred);
    Calculation calculation;
    calculation.d.addReport(1, 1, 2, 60002);
    calculation.d.addReport(elapsed, before, transferred, 1000000);
    QCOMPARE(calculation.d.timeLabel->text(), QStringLiteral("01:00 remaining"));
    QCOMPARE(calculation.d.speeds, QList<float>{1});
}

void TestNfcFileReceiveSheet::timeIsWrittenByItsLength_data()
{
    QTest::addColumn<QTime>("time");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << QTime(0, 0) << QStringLiteral("00:00 remaining");
    QTest::newRow("seconds") << QTime(0, 0, 7, 999) << QStringLiteral("00:07 remaining");
    QTest::newRow("nearly an hour") << QTime(0, 59, 59) << QStringLiteral("59:59 remaining");
    QTest::newRow("an hour") << QTime(1, 0) << QStringLiteral("1:00:00 remaining");
    QTest::newRow("hours") << QTime(12, 3, 4) << QStringLiteral("12:03:04 remaining");
}

void TestNfcFileReceiveSheet::timeIsWrittenByItsLength()
{
    QFETCH(QTime, time);
    QFETCH(QString, text);
    Calculation calculation;
    calculation.d.setTimeRemaining(time);
    QCOMPARE(calculation.d.timeLabel->text(), text);
}

void TestNfcFileReceiveSheet::timeIsSpokenInWords_data()
{
    QTest::addColumn<QTime>("time");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << QTime(0, 0) << QStringLiteral("0 seconds");
    QTest::newRow("a second") << QTime(0, 0, 1) << QStringLiteral("1 second");
    QTest::newRow("a minute") << QTime(0, 1, 0) << QStringLiteral("1 minute");
    QTest::newRow("nearly an hour") << QTime(0, 59, 59) << QStringLiteral("59 minutes and 59 seconds");
    QTest::newRow("an hour") << QTime(1, 0) << QStringLiteral("1 hour");
    QTest::newRow("hours") << QTime(4, 51, 39) << QStringLiteral("4 hours and 51 minutes");
}

void TestNfcFileReceiveSheet::timeIsSpokenInWords()
{
    QFETCH(QTime, time);
    QFETCH(QString, text);
    const QLocale before;
    const auto restore = qScopeGuard([before] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(QLocale::English));
    QCOMPARE(NfcFileReceiveSheetPrivate::spokenDuration(time), text);
}

void TestNfcFileReceiveSheet::invalidTimeIsLogged()
{
    Calculation calculation;
    calculation.d.setTimeRemaining(QTime(0, 1));
    QTest::ignoreMessage(QtWarningMsg, "NfcFileReceiveSheet: Invalid time");
    calculation.d.setTimeRemaining(QTime());
    QCOMPARE(calculation.d.timeLabel->text(), QStringLiteral("01:00 remaining"));
}

void TestNfcFileReceiveSheet::progressOfAShownSheetTellsTheTimeLeft()
{
    Shown shown;
    QVERIFY(shown.ready);
    shown.sheet.setProgress({}, 1000, 9000);
    QCOMPARE(shown.times(), QStringList());
    QElapsedTimer clock;
    clock.start();
    QTRY_VERIFY(clock.elapsed() > 1);
    shown.sheet.setProgress({}, 2000, 9000);
    QTRY_COMPARE(shown.times().size(), 1);
}

void TestNfcFileReceiveSheet::firstReportStartsTheClock()
{
    Calculation calculation;
    NfcFileReceiveSheetPrivate &d = calculation.d;
    QVERIFY(!d.interval.isValid());
    d.estimate(1000, 9000);
    QVERIFY(d.interval.isValid());
    QCOMPARE(d.timeLabel->text(), QString());
    QCOMPARE(d.speeds, QList<float>());
    QTRY_VERIFY(d.interval.elapsed() > 0);
    d.estimate(2000, 9000);
    QVERIFY(d.timeLabel->text().endsWith(QStringLiteral(" remaining")));
    QCOMPARE(d.speeds.size(), 1);
}

void TestNfcFileReceiveSheet::everyReportStartsTheClockAnew()
{
    Calculation calculation;
    NfcFileReceiveSheetPrivate &d = calculation.d;
    d.estimate(1000, 9000);
    QElapsedTimer now;
    for (const quint64 transferred : {2000, 2000, 1500}) {
        now.start();
        d.estimate(transferred, 9000);
        QVERIFY(now.msecsTo(d.interval) >= 0);
        QCOMPARE(d.previous, transferred);
        QTRY_VERIFY(now.elapsed() > 1);
    }
}

void TestNfcFileReceiveSheet::reportAfterZeroStartsTheClock()
{
    Calculation calculation;
    NfcFileReceiveSheetPrivate &d = calculation.d;
    d.estimate(0, 9000);
    QTRY_VERIFY(d.interval.elapsed() > 0);
    d.estimate(1000, 9000);
    QCOMPARE(d.speeds, QList<float>());
    QTRY_VERIFY(d.interval.elapsed() > 0);
    d.estimate(0, 9000);
    QTRY_VERIFY(d.interval.elapsed() > 0);
    d.estimate(1000, 9000);
    QCOMPARE(d.speeds, QList<float>());
    QCOMPARE(d.timeLabel->text(), QString());
}

void TestNfcFileReceiveSheet::countsMayGoBackwards()
{
    Calculation calculation;
    NfcFileReceiveSheetPrivate &d = calculation.d;
    d.estimate(5000, 9000);
    QTRY_VERIFY(d.interval.elapsed() > 0);
    d.estimate(1000, 9000);
    QCOMPARE(d.speeds, QList<float>());
    QTRY_VERIFY(d.interval.elapsed() > 0);
    d.estimate(2000, 9000);
    QCOMPARE(d.speeds.size(), 1);
    QVERIFY(d.speeds.constFirst() <= 1000);
}

void TestNfcFileReceiveSheet::everyCountIsDefined()
{
    Shown shown;
    const QList<quint64> counts{0,        1,   999, 1000, 1u << 31, quint64(1) << 32, quint64(1) << 63,
                                most - 1, most};
    QElapsedTimer clock;
    for (const quint64 total : counts) {
        for (const quint64 transferred : counts) {
            clock.start();
            while (clock.elapsed() == 0) {}
            shown.sheet.setProgress({}, transferred, total);
            QVERIFY(shown.bar()->value() <= shown.bar()->maximum());
            QVERIFY(!shown.window.grab().isNull());
        }
    }
}

QTEST_MAIN(TestNfcFileReceiveSheet)
#include "tst_nfcfilereceivesheet.moc"
