// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "remote/remotecontrol.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <QAbstractItemModel>
#include <QApplication>
#include <QGraphicsScene>
#include <QKeyEvent>
#include <QStringList>

#include <MButton>
#include <MLabel>
#include <MList>
#include <MSceneManager>
#include <MSceneWindow>
#include <MTypes>
#include <MWindow>
#include <SimpleCheckBoxLabel>

#include "core/terminal.h"

using ConnUi::SimpleCheckBoxLabel;

namespace {

constexpr int interval = 20; // milliseconds: often enough for a reader, seldom enough to cost nothing

MWindow *visibleWindow(bool takesFocus)
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        auto *window = qobject_cast<MWindow *>(widget);
        const bool wanted =
            window && window->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus) != takesFocus;
        if (wanted && window->isVisible())
            return window;
    }
    return nullptr;
}

MWindow *windowInFront()
{
    return visibleWindow(true);
}

// The indication of a touch is the window that takes no focus.
QString bannerDescription()
{
    const MWindow *banner = visibleWindow(false);
    return banner ? QStringLiteral("turned by %1").arg(int(banner->sceneManager()->orientationAngle()))
                  : QStringLiteral("gone");
}

template <typename Widget>
QList<Widget *> shown(const QGraphicsItem *parent)
{
    QList<Widget *> found;
    const QList<QGraphicsItem *> children = parent->childItems();
    for (QGraphicsItem *child : children) {
        if (!child->isVisible())
            continue;
        if (auto *widget = qobject_cast<Widget *>(child->toGraphicsObject()))
            found.append(widget);
        found += shown<Widget>(child);
    }
    return found;
}

MSceneWindow *sceneWindowInFront()
{
    const MWindow *window = windowInFront();
    if (!window)
        return nullptr;
    const QList<QGraphicsItem *> topmostFirst = window->scene()->items();
    for (QGraphicsItem *item : topmostFirst)
        if (auto *sceneWindow = qobject_cast<MSceneWindow *>(item->toGraphicsObject()))
            return sceneWindow;
    return nullptr;
}

// The order in which the user reads, not the one in which they were made.
void sortByPlace(QList<MLabel *> &labels, const MSceneWindow *front)
{
    const auto place = [front](const MLabel *label) {
        const QPointF corner = label->mapToItem(front, QPointF());
        return std::pair(corner.y(), corner.x());
    };
    std::stable_sort(labels.begin(), labels.end(),
                     [place](const MLabel *one, const MLabel *other) { return place(one) < place(other); });
}

// Of a text in several lengths the longest.
QString wording(const QString &text)
{
    return text.section(M::lengthVariantSeparator, 0, 0);
}

// The row that a switch stands in.
const SimpleCheckBoxLabel *rowOf(const MButton *button)
{
    return qobject_cast<const SimpleCheckBoxLabel *>(button->parentWidget());
}

QString nameOf(const MButton *button)
{
    const SimpleCheckBoxLabel *row = rowOf(button);
    return wording(row ? row->text() : button->text());
}

QString stateOf(const MButton *button)
{
    if (button->viewType() != MButton::switchType)
        return {};
    const QString state = button->isChecked() ? QStringLiteral(": on") : QStringLiteral(": off");
    const SimpleCheckBoxLabel *row = rowOf(button);
    return row && row->showProgressIndicator() ? state + QStringLiteral(", busy") : state;
}

QString description(const MSceneWindow *front)
{
    if (!front)
        return QStringLiteral("nothing");
    QStringList parts;
    QList<MLabel *> labels = shown<MLabel>(front);
    sortByPlace(labels, front);
    for (const MLabel *label : labels)
        if (!label->text().isEmpty())
            parts.append(label->drawnText());
    const QList<MButton *> buttons = shown<MButton>(front);
    for (const MButton *button : buttons)
        parts.append(QStringLiteral("[%1%2]").arg(nameOf(button), stateOf(button)));
    // One line, whatever the texts hold.
    return parts.join(QStringLiteral(" | ")).replace(QLatin1Char('\n'), QLatin1String(" / "));
}

// Each command returns whether there was something to do it to.

bool press(const QString &text)
{
    const MSceneWindow *front = sceneWindowInFront();
    const QList<MButton *> buttons = front ? shown<MButton>(front) : QList<MButton *>();
    const auto named = std::find_if(buttons.cbegin(), buttons.cend(),
                                    [&text](const MButton *button) { return nameOf(button) == text; });
    if (named == buttons.cend())
        return false;
    (*named)->click();
    return true;
}

bool selectRow(const QString &text)
{
    const MSceneWindow *front = sceneWindowInFront();
    const QList<MList *> lists = front ? shown<MList>(front) : QList<MList *>();
    for (MList *list : lists) {
        const QAbstractItemModel *model = list->itemModel();
        for (int row = 0; row < model->rowCount(); ++row) {
            const QModelIndex index = model->index(row, 0);
            if (!index.data().toStringList().contains(text))
                continue;
            list->selectItem(index);
            return true;
        }
    }
    return false;
}

bool escape(const QString &)
{
    MSceneWindow *front = sceneWindowInFront();
    if (front)
        front->dismiss();
    return front;
}

bool closeWindow(const QString &)
{
    MWindow *window = windowInFront();
    return window && window->close();
}

bool turn(const QString &angle)
{
    static const QStringList angles = {QStringLiteral("0"), QStringLiteral("90"), QStringLiteral("180"),
                                       QStringLiteral("270")};
    const MWindow *window = windowInFront();
    if (!window || !angles.contains(angle))
        return false;
    window->sceneManager()->setOrientationAngle(M::OrientationAngle(angle.toInt()));
    return true;
}

bool takePicture(const QString &file)
{
    MWindow *window = windowInFront();
    return window && window->grab().save(file);
}

struct Command
{
    QLatin1String name;
    bool (*execute)(const QString &argument);
};

constexpr Command commands[] = {
    {QLatin1String("press"), press},   {QLatin1String("select"), selectRow},
    {QLatin1String("escape"), escape}, {QLatin1String("close"), closeWindow},
    {QLatin1String("turn"), turn},     {QLatin1String("picture"), takePicture},
};

} // namespace

RemoteControl::RemoteControl(Terminal *terminal, QObject *parent) : QObject(parent), terminal(terminal)
{
    connect(&timer, &QTimer::timeout, this, &RemoteControl::tellChanges);
    connect(terminal, &Terminal::lineEntered, this, &RemoteControl::execute);
    timer.start(interval);
}

void RemoteControl::tellChanges()
{
    tellChange(QStringLiteral("banner"), bannerDescription(), banner);
    tellChange(QStringLiteral("screen"), description(sceneWindowInFront()), seen);
}

void RemoteControl::tellChange(const QString &what, const QString &now, QString &before)
{
    if (now == before)
        return;
    before = now;
    terminal->print(QStringLiteral("%1: %2").arg(what, now));
}

void RemoteControl::execute(const QString &line)
{
    const QString name = line.section(QLatin1Char(' '), 0, 0);
    const auto *command = std::find_if(std::begin(commands), std::end(commands),
                                       [&name](const Command &known) { return known.name == name; });
    QString outcome = QStringLiteral("not understood");
    if (command != std::end(commands))
        outcome = command->execute(line.section(QLatin1Char(' '), 1)) ? QStringLiteral("done")
                                                                      : QStringLiteral("failed");
    terminal->print(QStringLiteral("%1: %2").arg(outcome, line));
    // Reports the screen again, also when nothing has changed.
    seen.clear();
}
