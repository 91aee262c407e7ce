// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QDir>
#include <QGraphicsScene>
#include <QTemporaryDir>

#include <MImageWidget>

#include "touchtest.h"

using namespace TouchTest;

class TestMImageWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void setPictureIsReturned();
    void styleGivesTheSize();
    void pictureKeepsItsAspectRatio();
    void absolutePathIsLoaded();
    void missingPictureIsReplacedWithOneWarning();
    void emptyIdShowsNothing();
    void thumbnailToComeShowsANeutralPicture();
    void svgIsDrawnAtThePixelRatio();

private:
    static QImage imageOf(MImageWidget *widget, qreal ratio = 1)
    {
        QGraphicsScene scene;
        scene.addItem(widget);
        widget->setGeometry(QRectF(QPointF(), widget->preferredSize()));
        const QImage image = picture(&scene, widget->rect(), ratio);
        scene.removeItem(widget);
        return image;
    }
};

void TestMImageWidget::setPictureIsReturned()
{
    MImageWidget widget(QStringLiteral("icon-m-service-nfc"));
    QCOMPARE(widget.imageId(), QStringLiteral("icon-m-service-nfc"));
    QVERIFY(widget.pixmap().isNull());
    QImage image(30, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    widget.setImage(image);
    QVERIFY(widget.imageId().isEmpty());
    QCOMPARE(widget.pixmap().toImage().convertToFormat(QImage::Format_RGB32), image);
    QCOMPARE(widget.preferredSize(), QSizeF(30, 20));
    widget.setImage(QStringLiteral("icon-m-content-nfc-inverse"));
    QVERIFY(widget.pixmap().isNull());
    widget.setPixmap(QPixmap::fromImage(image));
    QVERIFY(widget.imageId().isEmpty());
    QCOMPARE(widget.pixmap().size(), QSize(30, 20));
    widget.setImage(QImage());
    QVERIFY(widget.pixmap().isNull());
}

void TestMImageWidget::styleGivesTheSize()
{
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(Qt::red);
    MImageWidget widget;
    widget.setImage(image);
    QCOMPARE(widget.preferredSize(), QSizeF(300, 200));
    widget.setStyleName(QStringLiteral("CommonMainIcon"));
    QCOMPARE(widget.preferredSize(), QSizeF(48, 48));
    QCOMPARE(widget.maximumSize(), QSizeF(48, 48));
}

void TestMImageWidget::pictureKeepsItsAspectRatio()
{
    QImage image(400, 100, QImage::Format_RGB32);
    image.fill(Qt::red);
    MImageWidget widget;
    widget.setStyleName(QStringLiteral("CommonMainIcon"));
    widget.setImage(image);
    const QImage shown = imageOf(&widget);
    QCOMPARE(shown.pixelColor(24, 24), QColor(Qt::red));
    QCOMPARE(shown.pixelColor(24, 19), QColor(Qt::red));
    QCOMPARE(shown.pixelColor(24, 10), QColor(Qt::white));
    QCOMPARE(shown.pixelColor(24, 38), QColor(Qt::white));
}

void TestMImageWidget::absolutePathIsLoaded()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("picture.png"));
    QImage image(64, 64, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QVERIFY(image.save(path));
    MImageWidget widget(path);
    QCOMPARE(widget.imageId(), path);
    QCOMPARE(widget.preferredSize(), QSizeF(64, 64));
    QCOMPARE(imageOf(&widget).pixelColor(32, 32), QColor(Qt::blue));
}

void TestMImageWidget::missingPictureIsReplacedWithOneWarning()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("garbled.png"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("\x89PNG\r\n\x1a\nnothing") > 0);
    file.close();
    for (const QString &id :
         {QStringLiteral("icon-m-nowhere"), path, folder.filePath(QStringLiteral("absent.png"))}) {
        MImageWidget placeholder(QStringLiteral("icon-m-placeholder"));
        MImageWidget widget(id);
        QTest::ignoreMessage(QtWarningMsg,
                             qPrintable(QStringLiteral("MTheme: no picture is called '%1'").arg(id)));
        QCOMPARE(imageOf(&widget), imageOf(&placeholder));
        MImageWidget again(id);
        QCOMPARE(imageOf(&again), imageOf(&placeholder));
    }
}

void TestMImageWidget::thumbnailToComeShowsANeutralPicture()
{
    MImageWidget widget;
    widget.setStyleName(QStringLiteral("CommonThumbnail"));
    widget.resize(widget.preferredSize());
    QImage nothing(128, 128, QImage::Format_ARGB32_Premultiplied);
    nothing.fill(Qt::white);
    const QImage waiting = imageOf(&widget);
    QCOMPARE(waiting.size(), nothing.size());
    QVERIFY(waiting != nothing);
    // More than the slot alone.
    QVERIFY(waiting.pixelColor(64, 8) != waiting.pixelColor(64, 64) ||
            waiting.pixelColor(40, 40) != waiting.pixelColor(64, 8));
    QImage red(64, 32, QImage::Format_RGB32);
    red.fill(Qt::red);
    widget.setImage(red);
    const QImage arrived = imageOf(&widget);
    QCOMPARE(arrived.pixelColor(64, 64), QColor(Qt::red));
    QCOMPARE(arrived.pixelColor(64, 8), QColor(Qt::white));
}

void TestMImageWidget::emptyIdShowsNothing()
{
    MImageWidget widget;
    widget.setStyleName(QStringLiteral("CommonMainIcon"));
    QImage empty(48, 48, QImage::Format_ARGB32_Premultiplied);
    empty.fill(Qt::white);
    QCOMPARE(imageOf(&widget), empty);
    widget.setImage(QStringLiteral("icon-m-service-nfc"));
    QVERIFY(imageOf(&widget) != empty);
    widget.setImage(QString());
    QCOMPARE(imageOf(&widget), empty);
}

void TestMImageWidget::svgIsDrawnAtThePixelRatio()
{
    MImageWidget widget(QStringLiteral("icon-m-content-url-inverse"));
    QImage stretched = imageOf(&widget).scaled(128, 128, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    stretched.setDevicePixelRatio(2);
    MImageWidget fine(QStringLiteral("icon-m-content-url-inverse"));
    const QImage sharp = imageOf(&fine, 2);
    QCOMPARE(sharp.size(), QSize(128, 128));
    QVERIFY(sharp != stretched);
    // The thin lines of the drawing are white where they are not blurred.
    int white = 0;
    int blurred = 0;
    for (int y = 30; y < 98; ++y) {
        for (int x = 30; x < 98; ++x) {
            white += sharp.pixelColor(x, y) == QColor(Qt::white);
            blurred += stretched.pixelColor(x, y) == QColor(Qt::white);
        }
    }
    QVERIFY(white > blurred);
}

QTEST_MAIN(TestMImageWidget)
#include "tst_mimagewidget.moc"
