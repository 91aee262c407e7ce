// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "panel/touchpanel.h"

#include <limits>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QVBoxLayout>

#include "support/whenanswered.h"

namespace {

constexpr int longestDetail = 90; // characters; a tag's bytes would fill the window

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

} // namespace

TouchPanel::TouchPanel() : transcript(new QPlainTextEdit), outcome(new QLabel)
{
    setWindowTitle(QStringLiteral("Hold something against the phone"));
    transcript->setReadOnly(true);
    transcript->setMaximumBlockCount(5000);
    transcript->setPlaceholderText(
        QStringLiteral("The D-Bus messages between the daemon, its client and other programs appear here."));
    auto *clear = new QPushButton(QStringLiteral("Clear"));
    connect(clear, &QPushButton::clicked, transcript, &QPlainTextEdit::clear);

    auto *talk = new QVBoxLayout;
    talk->addWidget(transcript);
    talk->addWidget(outcome);
    talk->addWidget(clear);
    auto *columns = new QHBoxLayout(this);
    columns->addLayout(newButtons());
    columns->addLayout(talk, 1);
    resize(900, 854);

    connect(&conversation, &Conversation::said, this, &TouchPanel::writeStep);
    connect(&conversation, &Conversation::detailed, this, [this](const QString &argument) {
        transcript->appendPlainText(QStringLiteral("      %1").arg(argument.left(longestDetail)));
    });
}

QBoxLayout *TouchPanel::newButtons()
{
    auto *column = new QVBoxLayout;
    QHash<QString, QBoxLayout *> groups;
    const QList<TouchButton> buttons = TouchButton::all();
    for (const TouchButton &button : buttons) {
        QBoxLayout *&group = groups[button.group];
        if (!group) {
            auto *box = new QGroupBox(button.group);
            group = new QVBoxLayout(box);
            group->setSpacing(2);
            column->addWidget(box);
        }
        auto *pushed = new QPushButton(button.label);
        connect(pushed, &QPushButton::clicked, this, [this, button] { touch(button); });
        group->addWidget(pushed);
    }
    auto *back = new QPushButton(QStringLiteral("Bring the daemon back"));
    connect(back, &QPushButton::clicked, this, &TouchPanel::bringDaemonBack);
    groups.value(QStringLiteral("Faults"))->addWidget(back);
    auto *settings = new QPushButton(QStringLiteral("Open the settings"));
    connect(settings, &QPushButton::clicked, this, [] {
        QProcess::startDetached(QCoreApplication::applicationDirPath() + QStringLiteral("/nfc-settings"), {});
    });
    groups.value(QStringLiteral("Settings"))->addWidget(settings);
    column->addStretch();
    return column;
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

void TouchPanel::writeStep(const QString &sentence)
{
    transcript->appendPlainText(QStringLiteral("%1  %2").arg(++steps, 4).arg(sentence));
}
