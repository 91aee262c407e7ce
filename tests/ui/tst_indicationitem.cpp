// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QGraphicsScene>
#include <QPixmapCache>
#include <QtTest>

#include <IndicationItem>
#include <MSceneManager>
#include <MTheme>
#include <MWindow>

using ConnUi::IndicationItem;

namespace {

constexpr QSize upright(480, 854);
constexpr QSize wide(854, 480);
constexpr int height = 80; // of both pictures

constexpr const char *notInView = "IndicationItem: setting orientation when not yet in view!";
constexpr const char *noManager = "IndicationItem: Unble to resolve sceneManager()";

const QStringList pictures{QStringLiteral("quenzotouch-nfc-banner-landscape"),
                           QStringLiteral("quenzotouch-nfc-banner-portrait")};

} // namespace

class TestIndicationItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void startsOutOfViewUnturned();
    void picturesComeFromTheTheme_data();
    void picturesComeFromTheTheme();
    void picturesGoBackToTheTheme();
    void placeFollowsFromAngleAndFactor_data();
    void placeFollowsFromAngleAndFactor();
    void turningKeepsTheFactor();
    void unknownAngleIsUpright();
    void factorIsAPropertyThatCanBeAnimated();
    void childTakesItsParent();

    void withoutSceneItOnlyWarns();
    void withoutViewItOnlyWarns();
    void inAnotherKindOfViewItOnlyWarns();
    void withoutSceneManagerItOnlyWarns();
    void firstViewCounts();
};

void TestIndicationItem::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestIndicationItem::startsOutOfViewUnturned()
{
    const IndicationItem item;
    QCOMPARE(item.visibilityFactor(), 0.0F);
    QCOMPARE(item.rotation(), 0.0);
    QCOMPARE(item.pos(), QPointF());
    QCOMPARE(item.shapeMode(), QGraphicsPixmapItem::BoundingRectShape);
}

void TestIndicationItem::picturesComeFromTheTheme_data()
{
    QTest::addColumn<M::OrientationAngle>("angle");
    QTest::addColumn<QString>("picture");
    QTest::newRow("0") << M::Angle0 << pictures[0];
    QTest::newRow("90") << M::Angle90 << pictures[1];
    QTest::newRow("180") << M::Angle180 << pictures[0];
    QTest::newRow("270") << M::Angle270 << pictures[1];
}

void TestIndicationItem::picturesComeFromTheTheme()
{
    QFETCH(M::OrientationAngle, angle);
    QFETCH(QString, picture);
    MWindow window;
    auto *item = new IndicationItem;
    window.scene()->addItem(item);
    item->setOrientationAngle(angle);
    const QPixmap *expected = MTheme::pixmap(picture);
    const auto handBack = qScopeGuard([expected] { MTheme::releasePixmap(expected); });
    QCOMPARE(item->pixmap().cacheKey(), expected->cacheKey());
    QCOMPARE(item->pixmap().deviceIndependentSize().height(), height);
    QCOMPARE(item->rotation(), qreal(angle));
}

void TestIndicationItem::picturesGoBackToTheTheme()
{
    const auto keyOf = [](const QString &id) {
        // Or the picture that is drawn anew is the one drawn before.
        QPixmapCache::clear();
        const QPixmap *picture = MTheme::pixmap(id);
        const qint64 key = picture->cacheKey();
        MTheme::releasePixmap(picture);
        return key;
    };
    for (const QString &id : pictures) {
        auto item = std::make_unique<IndicationItem>();
        const qint64 key = keyOf(id);
        QCOMPARE(keyOf(id), key);
        item.reset();
        QVERIFY(keyOf(id) != key);
    }
}

void TestIndicationItem::placeFollowsFromAngleAndFactor_data()
{
    QTest::addColumn<QSize>("window");
    QTest::addColumn<M::OrientationAngle>("angle");
    QTest::addColumn<float>("factor");
    QTest::addColumn<QPointF>("place");
    const auto rows = [](const char *name, QSize window) {
        const int w = window.width();
        const int h = window.height();
        const auto row = [&](M::OrientationAngle angle, float factor, QPointF place) {
            QTest::addRow("%s, at %d, factor %.1f", name, int(angle), double(factor))
                << window << angle << factor << place;
        };
        row(M::Angle0, 0, QPointF(0, -height));
        row(M::Angle0, 0.5, QPointF(0, -height / 2));
        row(M::Angle0, 1, QPointF(0, 0));
        row(M::Angle0, -0.1F, QPointF(0, -height * 1.1));
        row(M::Angle180, 0, QPointF(w, h + height));
        row(M::Angle180, 0.5, QPointF(w, h + height / 2));
        row(M::Angle180, 1, QPointF(w, h));
        row(M::Angle180, -0.1F, QPointF(w, h + height * 1.1));
        row(M::Angle270, 0, QPointF(-height, h));
        row(M::Angle270, 0.5, QPointF(-height / 2, h));
        row(M::Angle270, 1, QPointF(0, h));
        row(M::Angle270, -0.1F, QPointF(-height * 1.1, h));
        row(M::Angle90, 0, QPointF(w + height, 0));
        row(M::Angle90, 0.5, QPointF(w + height / 2, 0));
        row(M::Angle90, 1, QPointF(w, 0));
        row(M::Angle90, -0.1F, QPointF(w + height * 1.1, 0));
    };
    rows("upright", upright);
    rows("wide", wide);
}

void TestIndicationItem::placeFollowsFromAngleAndFactor()
{
    QFETCH(QSize, window);
    QFETCH(M::OrientationAngle, angle);
    QFETCH(float, factor);
    QFETCH(QPointF, place);
    MWindow screen;
    screen.resize(window);
    screen.sceneManager()->setOrientationAngle(angle);
    auto *item = new IndicationItem;
    screen.scene()->addItem(item);
    item->setOrientationAngle(angle);
    item->setVisibilityFactor(factor);
    QCOMPARE(item->visibilityFactor(), factor);
    QVERIFY2((item->pos() - place).manhattanLength() < 0.01, qPrintable(QDebug::toString(item->pos())));

    // The visible effect: this part of the banner is within the screen.
    const QRectF shown = item->sceneBoundingRect() & QRectF(QPointF(), window);
    const qreal visible = qMin(shown.width(), shown.height());
    QVERIFY2(qAbs(visible - height * qMax(factor, 0.0F)) < 0.01, qPrintable(QDebug::toString(shown)));
}

void TestIndicationItem::turningKeepsTheFactor()
{
    MWindow window;
    window.resize(upright);
    auto *item = new IndicationItem;
    window.scene()->addItem(item);
    item->setVisibilityFactor(0.5);
    window.sceneManager()->setOrientationAngle(M::Angle180);
    item->setOrientationAngle(M::Angle180);
    QCOMPARE(item->visibilityFactor(), 0.5F);
    QCOMPARE(item->pos(), QPointF(480, 854 + height / 2));
}

void TestIndicationItem::unknownAngleIsUpright()
{
    MWindow window;
    auto *item = new IndicationItem;
    window.scene()->addItem(item);
    item->setOrientationAngle(M::Angle90);
    item->setOrientationAngle(M::OrientationAngle(45));
    item->setVisibilityFactor(0.5);
    QCOMPARE(item->rotation(), 0.0);
    QCOMPARE(item->pos(), QPointF(0, -height / 2));
    QCOMPARE(item->boundingRect().size(), QSizeF(854, height));
}

void TestIndicationItem::factorIsAPropertyThatCanBeAnimated()
{
    MWindow window;
    auto *item = new IndicationItem;
    window.scene()->addItem(item);
    QPropertyAnimation animation(item, "visibilityFactor");
    animation.setStartValue(0.0F);
    animation.setEndValue(1.0F);
    animation.setDuration(100);
    animation.start();
    animation.setCurrentTime(25);
    QCOMPARE(item->visibilityFactor(), 0.25F);
    QCOMPARE(item->property("visibilityFactor").typeId(), int(QMetaType::Float));
}

void TestIndicationItem::childTakesItsParent()
{
    QGraphicsRectItem parent;
    const auto *item = new IndicationItem(&parent);
    QCOMPARE(item->parentItem(), &parent);
}

void TestIndicationItem::withoutSceneItOnlyWarns()
{
    IndicationItem item;
    item.setPos(3, 4);
    QTest::ignoreMessage(QtWarningMsg, notInView);
    item.setVisibilityFactor(0.5);
    QCOMPARE(item.visibilityFactor(), 0.5F);
    QCOMPARE(item.pos(), QPointF(3, 4));
    QTest::ignoreMessage(QtWarningMsg, notInView);
    item.setOrientationAngle(M::Angle90);
    QCOMPARE(item.rotation(), 90.0);
    QCOMPARE(item.pos(), QPointF(3, 4));
}

void TestIndicationItem::withoutViewItOnlyWarns()
{
    QGraphicsScene scene;
    auto *item = new IndicationItem;
    scene.addItem(item);
    item->setPos(3, 4);
    QTest::ignoreMessage(QtWarningMsg, notInView);
    item->setVisibilityFactor(0.5);
    QCOMPARE(item->visibilityFactor(), 0.5F);
    QCOMPARE(item->pos(), QPointF(3, 4));
}

void TestIndicationItem::inAnotherKindOfViewItOnlyWarns()
{
    QGraphicsScene scene;
    const QGraphicsView view(&scene);
    auto *item = new IndicationItem;
    scene.addItem(item);
    item->setPos(3, 4);
    QTest::ignoreMessage(QtWarningMsg, noManager);
    item->setVisibilityFactor(0.5);
    QCOMPARE(item->visibilityFactor(), 0.5F);
    QCOMPARE(item->pos(), QPointF(3, 4));
}

void TestIndicationItem::withoutSceneManagerItOnlyWarns()
{
    QGraphicsScene scene;
    MWindow window;
    window.setScene(&scene);
    delete window.sceneManager();
    QCOMPARE(window.sceneManager(), nullptr);
    auto *item = new IndicationItem;
    scene.addItem(item);
    item->setPos(3, 4);
    QTest::ignoreMessage(QtWarningMsg, noManager);
    item->setVisibilityFactor(0.5);
    QCOMPARE(item->pos(), QPointF(3, 4));
}

void TestIndicationItem::firstViewCounts()
{
    MWindow window;
    window.resize(upright);
    const QGraphicsView second(window.scene());
    auto *item = new IndicationItem;
    window.scene()->addItem(item);
    item->setVisibilityFactor(0.5);
    QCOMPARE(item->pos(), QPointF(0, -height / 2));
}

QTEST_MAIN(TestIndicationItem)
#include "tst_indicationitem.moc"
