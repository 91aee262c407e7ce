// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QDataStream>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTimer>

#include "theme/mbesidelibrary_p.h"
#include "theme/mforeignicon_p.h"

namespace {

constexpr int patience = 5000; // milliseconds

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

// A drawing process, which ends with its object.
class Drawing : public QProcess
{
public:
    explicit Drawing(QObject *parent = nullptr) : QProcess(parent) {}

    ~Drawing() override { end(); }

    void begin(const QString &id)
    {
        setStandardInputFile(nullDevice());
        setStandardErrorFile(nullDevice());
        setProgram(pathBesideLibrary(QStringLiteral(PROGRAMS_FROM_LIBRARIES "/quenzotouchcore-draw-icon")));
        setArguments({id, QIcon::themeName(), QIcon::fallbackThemeName(),
                      QIcon::themeSearchPaths().join(QLatin1Char('\n')),
                      QIcon::fallbackSearchPaths().join(QLatin1Char('\n'))});
        start();
    }

    // Returns nothing when the process did not end as it should.
    std::optional<Picture> picture()
    {
        if (error() == FailedToStart)
            qWarning("MTheme: cannot start %s", qUtf8Printable(program()));
        if (error() != UnknownError || exitStatus() != NormalExit || exitCode() != 0)
            return std::nullopt;
        Picture picture;
        QDataStream stream(readAllStandardOutput());
        stream >> picture.image >> picture.sizes;
        return picture;
    }

    void end()
    {
        kill();
        waitForFinished();
    }
};

std::optional<Picture> draw(const QString &id)
{
    Drawing drawing;
    drawing.begin(id);
    drawing.waitForFinished(patience);
    return drawing.picture();
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

void drawForeignImage(const QString &id, QObject *context, const std::function<void(const QImage &)> &then)
{
    auto *drawing = new Drawing(context);
    const auto end = [=] {
        const std::optional<Picture> picture = drawing->picture();
        drawing->deleteLater();
        then(picture ? picture->image : QImage());
    };
    // Later: it may fail before this function returns, and the receiver may delete it.
    QObject::connect(drawing, &QProcess::finished, context, end, Qt::QueuedConnection);
    QObject::connect(
        drawing, &QProcess::errorOccurred, context,
        [end](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                end();
        },
        Qt::QueuedConnection);
    QTimer::singleShot(patience, drawing, &QProcess::kill);
    drawing->begin(id);
}
