// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>
#include <memory>

#include <QApplication>
#include <QGraphicsScene>
#include <QPointer>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <IndicationItem>
#include <MWindow>
#include <NfcOverlay>

#include "catalogue.h"
#include "fakeservice.h"
#include "screen/phonecase.h"
#include "screen/phonewindow.h"
#include "screen/screenface.h"
#include "support/overlay.h"

using ConnUi::IndicationItem;
using ConnUi::NfcOverlay;

namespace {

constexpr int patience = 60000; // ms: a busy machine may take its time
constexpr QLatin1String picture("picture");
const QColor ofApplication(Qt::green);

bool onWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

void run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(patience) || process.exitCode() != 0)
        qFatal("%s: %s", qUtf8Printable(program), process.readAllStandardError().constData());
}

// The screen as the user sees it: the X screen that the compositor fills, or what the compositor itself
// shows.
QImage screen()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("screen.png"));
    if (Support::hasOverlays()) {
        run(QStringLiteral("grim"), {file});
        return QImage(file);
    }
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {picture, file});
    if (!process.waitForFinished(patience) || process.exitCode() != 0)
        qFatal("no picture: %s", process.readAllStandardError().constData());
    const QImage whole(file);
    // The last column is not the compositor's.
    return whole.copy(0, 0, whole.width() - 1, whole.height());
}

int share(const QImage &image, QColor color)
{
    const QImage plain = image.convertToFormat(QImage::Format_RGB32);
    qsizetype count = 0;
    for (int y = 0; y < plain.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(plain.constScanLine(y));
        count += std::count(line, line + plain.width(), color.rgb());
    }
    return int(100 * count / (plain.width() * plain.height()));
}

// The application that the user has open when something touches the phone.
class UsersApplication
{
public:
    UsersApplication()
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral(USERS_APPLICATION));
    }
    ~UsersApplication()
    {
        process.kill();
        process.waitForFinished();
    }

    // Nothing but a pointer may be drawn on it.
    static bool isInSight() { return share(screen(), ofApplication) >= 99; }

    // Everything that has reached it so far.
    QByteArray input()
    {
        process.waitForReadyRead(0);
        return seen += process.readAll();
    }

private:
    QByteArray seen;
    QProcess process;
};

IndicationItem *bannerIn(const QWidget *widget)
{
    const auto *window = qobject_cast<const MWindow *>(widget);
    const QList<QGraphicsItem *> items = window ? window->scene()->items() : QList<QGraphicsItem *>();
    for (QGraphicsItem *item : items)
        if (auto *banner = dynamic_cast<IndicationItem *>(item))
            return banner;
    return nullptr;
}

QList<QWidget *> visibleWindows()
{
    QList<QWidget *> visible;
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget *widget : all)
        if (widget->isVisible())
            visible.append(widget);
    return visible;
}

// Which way of showing the banner the test is about: there is one in each session.
bool isOfThisSession(const QByteArray &test)
{
    if (test.startsWith("overlay"))
        return Support::hasOverlays();
    if (test.startsWith("bannerIsAWindow"))
        return !onWayland() || Support::hasOverlays();
    if (test.startsWith("bannerIsAtTheEdge"))
        return !onWayland();
    return onWayland() && !Support::hasOverlays();
}

// The part of the screen that the banner takes at its top.
QImage top(const QImage &screen)
{
    return screen.copy(0, 0, screen.width(), screen.height() / 20);
}

QImage bottom(const QImage &screen)
{
    return screen.copy(0, screen.height() / 2, screen.width(), screen.height() / 2);
}

void click(QPoint place)
{
    run(QStringLiteral("xdotool"),
        {QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
         QStringLiteral("click"), QStringLiteral("1")});
}

// Shows a banner that stays until the test hides it: a busy machine may take its time.
NfcOverlay *showBanner(ScreenFace &face)
{
    face.indicateTouch();
    const QList<QWidget *> windows = visibleWindows();
    for (QWidget *window : windows) {
        if (auto *overlay = qobject_cast<NfcOverlay *>(window)) {
            overlay->findChild<QTimer *>()->setInterval(patience);
            return overlay;
        }
    }
    return nullptr;
}

void setOutput(const QString &property, const QString &value)
{
    run(QStringLiteral("swaymsg"), {QStringLiteral("output"), QStringLiteral("*"), property, value});
}

Question plainQuestion()
{
    Question question;
    question.kind = Question::EmptyTag;
    question.title = QStringLiteral("Empty tag");
    return question;
}

} // namespace

class TestTouchIndication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void applicationStaysInSightWithoutAQuestion();
    void newerNotificationReplacesTheOlder();
    void bannerIsWithinTheQuestion();
    void bannerIsWithinTheQuestionThatFollows();
    void bannerIsNotInAWindowThatGoes();
    void bannerTakesNoTaps();
    void bannerHidesNoWords();
    void bannerIsAWindowWhereItCanBeAbove();
    void bannerIsAtTheEdgeOfAPhoneInAWindow();
    void overlayLeavesTheApplicationInSight();
    void overlayTakesTheTapsOnTheBannerOnly();
    void overlayIsWholeOnEveryScreen_data();
    void overlayIsWholeOnEveryScreen();
    void overlayIsAboveTheQuestionThatFollows();
    void overlayIsNotForAPhoneInAWindow();

private:
    std::unique_ptr<Catalogue> catalogue;
    std::unique_ptr<FakeService> desktop;
};

void TestTouchIndication::init()
{
    // Qt 6.8 says the second one of any window whose screen gets another scale.
    QTest::failOnWarning(QRegularExpression(
        QStringLiteral("^(?!This plugin does not support |The cached device pixel ratio value was stale)")));
    if (!isOfThisSession(QTest::currentTestFunction()))
        QSKIP("The banner is shown in the other way here.");
    catalogue = std::make_unique<Catalogue>();
    desktop = std::make_unique<FakeService>(QDBusConnection::SessionBus,
                                            QStringLiteral("org.freedesktop.Notifications"));
    desktop->reply(QStringLiteral("Notify"), {7U});
    desktop->start();
}

void TestTouchIndication::cleanup()
{
    desktop.reset();
    catalogue.reset();
    // The last question slides out.
    QTRY_VERIFY_WITH_TIMEOUT(visibleWindows().isEmpty(), patience);
}

void TestTouchIndication::applicationStaysInSightWithoutAQuestion()
{
    const UsersApplication application;
    QTRY_VERIFY_WITH_TIMEOUT(UsersApplication::isInSight(), patience);
    ScreenFace face;
    face.prepare();
    face.indicateTouch();
    while (desktop->calls(QStringLiteral("Notify")).isEmpty()) {
        QVERIFY(UsersApplication::isInSight());
        QTest::qWait(10);
    }
    QVERIFY(UsersApplication::isInSight());
    const QVariantList arguments = desktop->calls(QStringLiteral("Notify")).first().arguments;
    QCOMPARE(arguments.value(3).toString(), qtTrId("qtn_nfc_touched"));
    QCOMPARE(visibleWindows(), QList<QWidget *>());
}

void TestTouchIndication::newerNotificationReplacesTheOlder()
{
    ScreenFace face;
    for (int touches = 1; touches <= 2; ++touches) {
        face.indicateTouch();
        QTRY_COMPARE_WITH_TIMEOUT(desktop->calls(QStringLiteral("Notify")).size(), touches, patience);
        QCoreApplication::processEvents();
    }
    const auto calls = desktop->calls(QStringLiteral("Notify"));
    QCOMPARE(calls.at(0).arguments.value(1).toUInt(), 0U);
    QCOMPARE(calls.at(1).arguments.value(1).toUInt(), 7U);
}

void TestTouchIndication::bannerIsWithinTheQuestion()
{
    ScreenFace face;
    face.show(plainQuestion());
    face.indicateTouch();
    QCOMPARE(visibleWindows().size(), 1);
    QVERIFY(bannerIn(visibleWindows().first()));
    QTRY_COMPARE_WITH_TIMEOUT(bannerIn(visibleWindows().first())->visibilityFactor(), 1.0F, patience);
    QTRY_VERIFY_WITH_TIMEOUT(!bannerIn(visibleWindows().first()), patience);
    QCOMPARE(desktop->calls(QStringLiteral("Notify")).size(), 0);
}

void TestTouchIndication::bannerIsWithinTheQuestionThatFollows()
{
    ScreenFace face;
    face.indicateTouch();
    QCOMPARE(visibleWindows(), QList<QWidget *>());
    face.show(plainQuestion());
    QCOMPARE(visibleWindows().size(), 1);
    QVERIFY(bannerIn(visibleWindows().first()));
    QTRY_VERIFY_WITH_TIMEOUT(!bannerIn(visibleWindows().first()), patience);
    QCOMPARE(desktop->calls(QStringLiteral("Notify")).size(), 0);
}

void TestTouchIndication::bannerIsNotInAWindowThatGoes()
{
    ScreenFace face;
    face.show(plainQuestion());
    QVERIFY(QTest::qWaitForWindowExposed(visibleWindows().first(), patience));
    face.withdraw();
    face.indicateTouch();
    const QList<QWidget *> leaving = visibleWindows();
    for (const QWidget *window : leaving)
        QVERIFY(!bannerIn(window));
    QTRY_COMPARE_WITH_TIMEOUT(desktop->calls(QStringLiteral("Notify")).size(), 1, patience);
}

void TestTouchIndication::bannerTakesNoTaps()
{
    ScreenFace face;
    face.show(plainQuestion());
    face.indicateTouch();
    QCOMPARE(bannerIn(visibleWindows().first())->acceptedMouseButtons(), Qt::NoButton);
}

void TestTouchIndication::bannerHidesNoWords()
{
    ScreenFace face;
    Question question = plainQuestion();
    // Its title and "Cancel" lie at the top.
    question.kind = Question::Receiving;
    question.file.name = QStringLiteral("photo.jpg");
    face.show(question);
    face.indicateTouch();
    const QPointer<IndicationItem> banner = bannerIn(visibleWindows().first());
    QVERIFY(banner);
    QTRY_VERIFY_WITH_TIMEOUT(!banner || !banner->isVisible(), patience);
    QVERIFY(banner);
}

void TestTouchIndication::bannerIsAWindowWhereItCanBeAbove()
{
    ScreenFace face;
    face.show(plainQuestion());
    face.indicateTouch();
    QList<const QWidget *> overlays;
    const QList<QWidget *> windows = visibleWindows();
    for (const QWidget *window : windows)
        if (qobject_cast<const NfcOverlay *>(window))
            overlays.append(window);
        else
            QVERIFY(!bannerIn(window));
    QCOMPARE(windows.size(), 2);
    QCOMPARE(overlays.size(), 1);
}

void TestTouchIndication::bannerIsAtTheEdgeOfAPhoneInAWindow()
{
    PhoneWindow phone;
    phone.setGeometry(40, 30, 320, 480);
    phone.show();
    ScreenFace face(&phone);
    face.indicateTouch();
    QList<QWidget *> windows = visibleWindows();
    QVERIFY(windows.removeOne(&phone));
    QCOMPARE(windows.size(), 1);
    QCOMPARE(windows.first()->geometry(), QRect(40, 30, 320, 480).marginsRemoved(PhoneCase::margins()));
}

void TestTouchIndication::overlayLeavesTheApplicationInSight()
{
    const UsersApplication application;
    QTRY_VERIFY_WITH_TIMEOUT(UsersApplication::isInSight(), patience);
    ScreenFace face;
    face.prepare();
    for (int touches = 0; touches < 2; ++touches) {
        NfcOverlay *banner = showBanner(face);
        QVERIFY(banner);
        // Nothing of the application is left where the banner is, and nothing of the banner elsewhere.
        QTRY_COMPARE_WITH_TIMEOUT(share(top(screen()), ofApplication), 0, patience);
        QVERIFY(share(bottom(screen()), ofApplication) >= 99);
        banner->hideIndication();
        QTRY_VERIFY_WITH_TIMEOUT(UsersApplication::isInSight(), patience);
    }
    QCOMPARE(desktop->calls(QStringLiteral("Notify")).size(), 0);
}

void TestTouchIndication::overlayTakesTheTapsOnTheBannerOnly()
{
    UsersApplication application;
    QTRY_VERIFY_WITH_TIMEOUT(UsersApplication::isInSight(), patience);
    const QPoint center = screen().rect().center();
    const QPoint edge(center.x(), 10);
    ScreenFace face;
    NfcOverlay *banner = showBanner(face);
    QVERIFY(banner);
    QTRY_COMPARE_WITH_TIMEOUT(share(top(screen()), ofApplication), 0, patience);
    click(edge);
    click(center);
    QTRY_COMPARE_WITH_TIMEOUT(application.input(), QByteArray("press\nrelease\n"), patience);
    banner->hideIndication();
    QTRY_VERIFY_WITH_TIMEOUT((click(edge), application.input().count("press") > 1), patience);
}

void TestTouchIndication::overlayIsWholeOnEveryScreen_data()
{
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("value");
    QTest::newRow("turned") << QStringLiteral("transform") << QStringLiteral("90");
    QTest::newRow("upright again") << QStringLiteral("transform") << QStringLiteral("normal");
    QTest::newRow("dense") << QStringLiteral("scale") << QStringLiteral("2");
    QTest::newRow("normal again") << QStringLiteral("scale") << QStringLiteral("1");
}

// One banner goes through all of them.
void TestTouchIndication::overlayIsWholeOnEveryScreen()
{
    QFETCH(QString, property);
    QFETCH(QString, value);
    const UsersApplication application;
    QTRY_VERIFY_WITH_TIMEOUT(UsersApplication::isInSight(), patience);
    ScreenFace face;
    NfcOverlay *banner = showBanner(face);
    QVERIFY(banner);
    QTRY_COMPARE_WITH_TIMEOUT(share(top(screen()), ofApplication), 0, patience);
    const QSize before = banner->size();
    setOutput(property, value);
    QTRY_VERIFY_WITH_TIMEOUT(banner->size() != before, patience);
    QTRY_COMPARE_WITH_TIMEOUT(share(top(screen()), ofApplication), 0, patience);
    QTRY_VERIFY_WITH_TIMEOUT(share(bottom(screen()), ofApplication) >= 99, patience);
    QCOMPARE(banner->mask().boundingRect().width(), banner->width());
}

void TestTouchIndication::overlayIsAboveTheQuestionThatFollows()
{
    ScreenFace face;
    const NfcOverlay *overlay = showBanner(face);
    QVERIFY(overlay);
    QTRY_VERIFY_WITH_TIMEOUT(bannerIn(overlay), patience);
    QTRY_COMPARE_WITH_TIMEOUT(bannerIn(overlay)->visibilityFactor(), 1.0F, patience);
    const QColor inSight = screen().pixelColor(4, 4);
    face.show(plainQuestion());
    QTRY_VERIFY_WITH_TIMEOUT(share(bottom(screen()), Qt::white) > 5, patience);
    QTRY_COMPARE_WITH_TIMEOUT(screen().pixelColor(4, 4), inSight, patience);
}

void TestTouchIndication::overlayIsNotForAPhoneInAWindow()
{
    MWindow phone;
    phone.show();
    ScreenFace face(&phone);
    face.prepare();
    face.indicateTouch();
    QVERIFY(bannerIn(&phone));
    QCOMPARE(visibleWindows(), QList<QWidget *>{&phone});
}

namespace {

int takePicture(const QString &file)
{
    return QGuiApplication::primaryScreen()->grabWindow().save(file) ? 0 : 1;
}

} // namespace

// The program is also the camera.
int main(int argc, char *argv[])
{
    const QApplication program(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == picture)
        return takePicture(arguments.value(2));
    TestTouchIndication test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_touchindication.moc"
