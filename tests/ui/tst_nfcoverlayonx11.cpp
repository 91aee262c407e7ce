// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <utility>

#include <QGuiApplication>
#include <QMouseEvent>
#include <QProcess>
#include <QScreen>
#include <QtTest>

#include <MSceneManager>
#include <NfcOverlay>

#include "ui/nfcoverlay_p.h"

using namespace ConnUi;

namespace {

constexpr int height = 80; // of the banner

// The output of a tool of the X Window System.
QString output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s: %s", qPrintable(program), process.readAllStandardError().constData());
    return QString::fromLocal8Bit(process.readAllStandardOutput());
}

QString lineWith(const QString &word, const QString &text)
{
    const QStringList lines = text.split(u'\n');
    for (const QString &line : lines)
        if (line.contains(word))
            return line.trimmed();
    return {};
}

QString shapeOf(QRect strip)
{
    return QStringLiteral("Window shape extents:  %1x%2+%3+%4")
        .arg(strip.width())
        .arg(strip.height())
        .arg(strip.x())
        .arg(strip.y());
}

void click(QPoint place)
{
    output(QStringLiteral("xdotool"),
           {QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
            QStringLiteral("click"), QStringLiteral("1")});
}

// A window that knows where it was pressed.
class Below : public QWidget
{
public:
    Below()
    {
        setWindowFlags(Qt::FramelessWindowHint);
        setGeometry(0, 0, 900, 900);
        show();
        activateWindow();
        ready = QTest::qWaitForWindowActive(this);
    }

    QList<QPoint> presses;
    bool ready;

protected:
    void mousePressEvent(QMouseEvent *event) override { presses.append(event->globalPosition().toPoint()); }
};

// The banner, over the corner of the screen.
class Banner
{
public:
    explicit Banner(QSize size = QSize(480, 854))
    {
        overlay.setGeometry(QRect(QPoint(0, 0), size));
        overlay.showIndication();
        ready = QTest::qWaitForWindowExposed(&overlay);
        // It stays as long as the test takes.
        overlay.findChild<NfcOverlayPrivate *>()->timer->stop();
    }

    QString property(const QString &name) const
    {
        return lineWith(name, output(QStringLiteral("xprop"), {QStringLiteral("-id"), id(), name}));
    }

    QString hints() const
    {
        return output(QStringLiteral("xprop"), {QStringLiteral("-id"), id(), QStringLiteral("WM_HINTS")});
    }

    // As the server reports it: size and place.
    QString shape() const
    {
        return lineWith(
            QStringLiteral("Window shape extents"),
            output(QStringLiteral("xwininfo"), {QStringLiteral("-id"), id(), QStringLiteral("-shape")}));
    }

    NfcOverlay overlay;
    bool ready;

private:
    QString id() const { return QString::number(overlay.winId()); }
};

} // namespace

class TestNfcOverlayOnX11 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void windowIsANotification();
    void windowAsksForNoInput();
    void shapeIsTheStrip_data();
    void shapeIsTheStrip();
    void clickBelowTheBannerReachesTheWindowBelow_data() { shapeIsTheStrip_data(); }
    void clickBelowTheBannerReachesTheWindowBelow();
    void focusStaysWhereItIs();
    void bannerSlidesAlongTheScreensEdges();
};

void TestNfcOverlayOnX11::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
}

void TestNfcOverlayOnX11::windowIsANotification()
{
    const Banner banner;
    QVERIFY(banner.ready);
    QCOMPARE(banner.property(QStringLiteral("_NET_WM_WINDOW_TYPE"))
                 .section(QStringLiteral(" = "), 1)
                 .section(u',', 0, 0),
             QStringLiteral("_NET_WM_WINDOW_TYPE_NOTIFICATION"));
}

void TestNfcOverlayOnX11::windowAsksForNoInput()
{
    const Banner banner;
    QVERIFY(banner.ready);
    QCOMPARE(lineWith(QStringLiteral("input focus"), banner.hints()),
             QStringLiteral("Client accepts input or input focus: False"));
}

void TestNfcOverlayOnX11::shapeIsTheStrip_data()
{
    QTest::addColumn<M::OrientationAngle>("angle");
    QTest::addColumn<QRect>("strip");
    QTest::newRow("0") << M::Angle0 << QRect(0, 0, 480, height);
    QTest::newRow("90") << M::Angle90 << QRect(480 - height, 0, height, 480);
    QTest::newRow("180") << M::Angle180 << QRect(0, 854 - height, 480, height);
    QTest::newRow("270") << M::Angle270 << QRect(0, 0, height, 480);
}

void TestNfcOverlayOnX11::shapeIsTheStrip()
{
    QFETCH(M::OrientationAngle, angle);
    QFETCH(QRect, strip);
    const Banner banner;
    QVERIFY(banner.ready);
    banner.overlay.sceneManager()->setOrientationAngle(angle);
    QTRY_COMPARE(banner.shape(), shapeOf(strip));
}

void TestNfcOverlayOnX11::clickBelowTheBannerReachesTheWindowBelow()
{
    QFETCH(M::OrientationAngle, angle);
    QFETCH(QRect, strip);
    const Below below;
    QVERIFY(below.ready);
    const Banner banner;
    QVERIFY(banner.ready);
    banner.overlay.sceneManager()->setOrientationAngle(angle);

    QTRY_COMPARE(banner.shape(), shapeOf(strip));

    // In the middle, and just beside the strip.
    QList<QPoint> outside{QPoint(240, 427)};
    const QRect around = strip.adjusted(-1, -1, 1, 1);
    for (const QPoint place :
         {QPoint(around.left(), strip.center().y()), QPoint(around.right(), strip.center().y()),
          QPoint(strip.center().x(), around.top()), QPoint(strip.center().x(), around.bottom())})
        if (banner.overlay.rect().contains(place))
            outside.append(place);
    QVERIFY(outside.size() > 1);
    // Everything within the strip is the banner's.
    click(strip.center());
    for (const QPoint place : std::as_const(outside))
        click(place);
    QTRY_COMPARE(below.presses, outside);
}

void TestNfcOverlayOnX11::focusStaysWhereItIs()
{
    const Below below;
    QVERIFY(below.ready);
    const QString before = output(QStringLiteral("xdotool"), {QStringLiteral("getwindowfocus")});
    const Banner banner;
    QVERIFY(banner.ready);
    click(QPoint(240, height / 2));
    click(QPoint(240, 427));
    QTRY_COMPARE(below.presses, QList<QPoint>{QPoint(240, 427)});
    QCOMPARE(output(QStringLiteral("xdotool"), {QStringLiteral("getwindowfocus")}), before);
    QVERIFY(below.isActiveWindow());
}

void TestNfcOverlayOnX11::bannerSlidesAlongTheScreensEdges()
{
    NfcOverlay overlay;
    overlay.showIndication();
    QVERIFY(QTest::qWaitForWindowExposed(&overlay));
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QCOMPARE(overlay.geometry(), screen);
    overlay.sceneManager()->setOrientationAngle(M::Angle180);
    QCOMPARE(overlay.mask(), QRegion(0, screen.height() - height, screen.width(), height));
}

QTEST_MAIN(TestNfcOverlayOnX11)
#include "tst_nfcoverlayonx11.moc"
