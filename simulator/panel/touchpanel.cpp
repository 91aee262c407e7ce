// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "panel/touchpanel.h"

#include <algorithm>
#include <limits>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGridLayout>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>

#include "support/whenanswered.h"

namespace {

constexpr int narrow = 640; // in device-independent pixels, like the others
constexpr int space = 16;
constexpr int longestRole = 6; // in characters
constexpr int valuesIndent = 5 + 2 * longestRole + 3 + 2;
constexpr QSize preferred(800, 760);

// The colors are those of the desktop, light or dark.
constexpr QLatin1String look(R"(
    QScrollArea, QScrollArea > QWidget > QWidget { background: transparent; }
    QPushButton { text-align: left; padding: 7px 12px; border: 1px solid palette(mid); border-radius: 8px;
        background: palette(base); color: palette(text); outline: none; }
    QPushButton:hover, QPushButton:focus { border-color: palette(highlight); }
    QPushButton:pressed { background: palette(highlight); color: palette(highlighted-text); }
    QTextEdit { border: 1px solid palette(mid); border-radius: 8px; padding: 6px; background: palette(base); }
)");

QDBusMessage callOf(const TouchButton &button)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("com.tavix.nfc"), QStringLiteral("/com/tavix/nfc/simulator"),
        QStringLiteral("com.tavix.nfc.Simulator"), button.method);
    call.setArguments(button.arguments);
    // A touch does not start a daemon.
    call.setAutoStartService(false);
    return call;
}

QLabel *newHeading(const QString &text)
{
    auto *heading = new QLabel(text);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    return heading;
}

} // namespace

TouchPanel::TouchPanel()
    : transcript(new QTextEdit)
    , outcome(new QLabel)
    , halves(new QBoxLayout(QBoxLayout::LeftToRight, this))
{
    setWindowTitle(QStringLiteral("Hold something against the phone"));
    setStyleSheet(look);
    halves->setContentsMargins(space, space, space, space);
    halves->setSpacing(space);
    halves->addWidget(newButtons());
    halves->addLayout(newTalk(), 1);
    setMinimumSize(320, 320);
    resize(preferred.boundedTo(screen()->availableSize()));

    connect(&conversation, &Conversation::said, this, &TouchPanel::write);
    connect(&conversation, &Conversation::failed, this, [this] {
        transcript->setPlaceholderText(QStringLiteral("There is no busctl to listen to the bus with."));
    });
}

void TouchPanel::resizeEvent(QResizeEvent *event)
{
    halves->setDirection(width() < narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    QWidget::resizeEvent(event);
}

QWidget *TouchPanel::newButtons()
{
    // In the window from the start, for the sizes to be those of its look.
    auto *area = new QScrollArea(this);
    auto *list = new QWidget(area);
    auto *column = new QVBoxLayout(list);
    column->setContentsMargins(0, 0, space / 2, 0);
    QHash<QString, QGridLayout *> groups;
    const QList<TouchButton> buttons = TouchButton::all();
    for (const TouchButton &button : buttons) {
        QGridLayout *&group = groups[button.group];
        if (!group) {
            column->addWidget(newHeading(button.group));
            group = new QGridLayout;
            group->setColumnStretch(0, 1);
            group->setColumnStretch(1, 1);
            column->addLayout(group);
            column->addSpacing(space / 2);
        }
        connect(addButton(group, button.label), &QPushButton::clicked, this,
                [this, button] { touch(button); });
    }
    connect(addButton(groups.value(QStringLiteral("Faults")), QStringLiteral("Start the daemon")),
            &QPushButton::clicked, this, &TouchPanel::bringDaemonBack);
    connect(addButton(groups.value(QStringLiteral("Settings")), QStringLiteral("Open the settings")),
            &QPushButton::clicked, this, [] {
                QProcess::startDetached(
                    QCoreApplication::applicationDirPath() + QStringLiteral("/nfc-settings"), {});
            });
    column->addStretch();
    const QList<QPushButton *> all = list->findChildren<QPushButton *>();
    const auto widest =
        std::max_element(all.begin(), all.end(), [](const QPushButton *a, const QPushButton *b) {
            return a->sizeHint().width() < b->sizeHint().width();
        });
    const int width = (*widest)->sizeHint().width();
    for (QPushButton *button : all)
        button->setMinimumWidth(width);

    area->setWidget(list);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setMinimumWidth(list->minimumSizeHint().width() + area->verticalScrollBar()->sizeHint().width());
    return area;
}

// They fill a row of two before the next.
QPushButton *TouchPanel::addButton(QGridLayout *group, const QString &label)
{
    auto *button = new QPushButton(label);
    group->addWidget(button, group->count() / 2, group->count() % 2);
    return button;
}

QBoxLayout *TouchPanel::newTalk()
{
    transcript->setReadOnly(true);
    transcript->document()->setMaximumBlockCount(5000);
    transcript->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    transcript->setPlaceholderText(
        QStringLiteral("The D-Bus messages between the daemon, its client and other programs appear here."));
    // The end stays in view, whatever comes and however narrow it gets, unless the user has scrolled away
    // from it.
    const QScrollBar *bar = transcript->verticalScrollBar();
    connect(
        bar, &QScrollBar::valueChanged, this,
        [this, bar](int value) { followsEnd = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this](int /*minimum*/, int maximum) {
        if (followsEnd)
            transcript->verticalScrollBar()->setValue(maximum);
    });
    // The daemon's words.
    outcome->setTextFormat(Qt::PlainText);
    outcome->setWordWrap(true);
    auto *clear = new QPushButton(QStringLiteral("Clear"));
    connect(clear, &QPushButton::clicked, transcript, &QTextEdit::clear);

    auto *footer = new QHBoxLayout;
    footer->addWidget(outcome, 1);
    footer->addWidget(clear);
    auto *talk = new QVBoxLayout;
    talk->setSpacing(space / 2);
    talk->addWidget(newHeading(QStringLiteral("System bus")));
    talk->addWidget(transcript, 1);
    talk->addLayout(footer);
    return talk;
}

void TouchPanel::touch(const TouchButton &button)
{
    outcome->setText(QStringLiteral("%1: ...").arg(button.label));
    constexpr int noTimeLimit = std::numeric_limits<int>::max();
    const QDBusPendingCall call = QDBusConnection::systemBus().asyncCall(callOf(button), noTimeLimit);
    Support::whenAnswered(call, this, [this, label = button.label](const QDBusPendingReply<QString> &reply) {
        const QString end = reply.isError() ? QStringLiteral("no daemon any more") : reply.value();
        outcome->setText(QStringLiteral("%1: %2").arg(label, end));
    });
}

// Through the bus, as a client does.
void TouchPanel::bringDaemonBack()
{
    QDBusMessage start = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("StartServiceByName"));
    start.setArguments({QStringLiteral("com.tavix.nfc"), 0U});
    QDBusConnection::systemBus().send(start);
}

void TouchPanel::write(const Conversation::Message &message)
{
    QTextCursor line = newLine(-valuesIndent);
    line.insertText(QStringLiteral("%1  ").arg(++steps, 3));
    line.insertText(message.caller.leftJustified(longestRole), formatOf(message.caller));
    line.insertText(message.isAnswer ? QStringLiteral(" ← ") : QStringLiteral(" → "), QTextCharFormat());
    line.insertText(message.receiver.leftJustified(longestRole), formatOf(message.receiver));
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    line.insertText(QStringLiteral("  ") + message.what, bold);
    for (const QString &value : message.values)
        newLine(0).insertText(value);
}

// The values stand in a column of their own; the line with the names begins before it, by so many characters.
QTextCursor TouchPanel::newLine(int textIndent)
{
    const qreal character = QFontMetricsF(transcript->font()).horizontalAdvance(QLatin1Char('0'));
    QTextBlockFormat format;
    format.setLeftMargin(character * valuesIndent);
    format.setTextIndent(character * textIndent);
    format.setTopMargin(textIndent == 0 ? 0 : space / 4);
    QTextCursor cursor(transcript->document());
    cursor.movePosition(QTextCursor::End);
    if (transcript->document()->isEmpty())
        cursor.setBlockFormat(format);
    else
        cursor.insertBlock(format, QTextCharFormat());
    return cursor;
}

QTextCharFormat TouchPanel::formatOf(const QString &role) const
{
    QTextCharFormat format;
    if (role == QLatin1String("daemon"))
        format.setForeground(palette().highlight());
    return format;
}
