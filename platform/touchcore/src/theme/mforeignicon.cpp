// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QDataStream>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QProcess>

#include "theme/mbesidelibrary_p.h"
#include "theme/mforeignicon_p.h"

namespace {

/** The output of quenzotouchcore-draw-icon. */
struct Picture
{
    QImage image;       ///< as large as it is ever shown
    QList<QSize> sizes; ///< that there are bitmaps in; none of a drawing
};

class Engine : public QIconEngine
{
public:
    explicit Engine(const Picture &picture) : picture(picture) {}

    void paint(QPainter *painter, const QRect &area, QIcon::Mode mode, QIcon::State state) override
    {
        painter->drawPixmap(area, pixmap(area.size(), mode, state));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode, QIcon::State) override
    {
        // A bitmap is not made larger than it is.
        const QSize wanted = picture.sizes.isEmpty() ? size : size.boundedTo(picture.image.size());
        return QPixmap::fromImage(
            picture.image.scaled(wanted, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    }

    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override { return picture.sizes; }
    bool isNull() override { return false; }
    QIconEngine *clone() const override { return new Engine(*this); }

private:
    const Picture picture;
};

std::optional<Picture> draw(const QString &id)
{
    constexpr int patience = 5000;
    const QString program =
        pathBesideLibrary(QStringLiteral(PROGRAMS_FROM_LIBRARIES "/quenzotouchcore-draw-icon"));
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, {id, QIcon::themeName(), QIcon::fallbackThemeName(),
                            QIcon::themeSearchPaths().join(QLatin1Char('\n')),
                            QIcon::fallbackSearchPaths().join(QLatin1Char('\n'))});
    if (!process.waitForFinished(patience)) {
        if (process.error() == QProcess::FailedToStart)
            qWarning("MTheme: cannot start %s", qUtf8Printable(program));
        process.kill();
        process.waitForFinished();
        return std::nullopt;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return std::nullopt;

    Picture picture;
    QDataStream stream(process.readAllStandardOutput());
    stream >> picture.image >> picture.sizes;
    return picture;
}

} // namespace

std::optional<QIcon> foreignIcon(const QString &id)
{
    const std::optional<Picture> picture = draw(id);
    if (!picture)
        return QIcon();
    if (picture->image.isNull())
        return std::nullopt;
    return QIcon(new Engine(*picture));
}
