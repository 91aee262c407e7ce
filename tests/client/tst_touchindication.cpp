// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QApplication>
#include <QGraphicsScene>
#include <QPointer>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include <IndicationItem>
#include <MWindow>
#include <NfcOverlay>

#include "catalogue.h"
#include "fakeservice.h"
#include "screen/screenface.h"

using ConnUi::IndicationItem;
using ConnUi::NfcOverlay;

namespace {

constexpr int patience = 60000; // ms: a busy machine may take its time
constexpr QLatin1String application("application");
constexpr QLatin1String picture("picture");
const QColor ofApplication(Qt::green);

bool onWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

// The screen as the user sees it: the X screen that the compositor fills.
QImage screen()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("screen.png"));
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
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == color ? 1 : 0;
    return 100 * count / (image.width() * image.height());
}

// The application that the user has open when something touches the phone.
class UsersApplication
{
public:
    UsersApplication()
    {
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QCoreApplication::applicationFilePath(), {application});
    }
    ~UsersApplication()
    {
        process.kill();
        process.waitForFinished();
    }

    // Nothing but a pointer may be drawn on it.
    static bool isInSight() { return share(screen(), ofApplication) >= 99; }

private:
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
    void bannerTakesNoTaps();
    void bannerHidesNoWords();
    void bannerIsAWindowWhereItCanBeAbove();
    void bannerIsAtTheEdgeOfAPhoneInAWindow();

private:
    std::unique_ptr<Catalogue> catalogue;
    std::unique_ptr<FakeService> desktop;
};

void TestTouchIndication::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support )")));
    const bool isAbove = QByteArray(QTest::currentTestFunction()).startsWith("bannerIsA");
    if (isAbove == onWayland())
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
    MWindow phone;
    phone.setGeometry(40, 30, 320, 480);
    phone.show();
    ScreenFace face(&phone);
    face.indicateTouch();
    const QList<QWidget *> windows = visibleWindows();
    QCOMPARE(windows.size(), 2);
    QCOMPARE(windows.at(0)->geometry(), windows.at(1)->geometry());
}

namespace {

int showApplication()
{
    QWidget window;
    window.setStyleSheet(QStringLiteral("background: %1").arg(ofApplication.name()));
    window.showFullScreen();
    return QApplication::exec();
}

int takePicture(const QString &file)
{
    return QGuiApplication::primaryScreen()->grabWindow().save(file) ? 0 : 1;
}

} // namespace

// The program is also the user's application, and the camera.
int main(int argc, char *argv[])
{
    const QApplication program(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == application)
        return showApplication();
    if (arguments.value(1) == picture)
        return takePicture(arguments.value(2));
    TestTouchIndication test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_touchindication.moc"
