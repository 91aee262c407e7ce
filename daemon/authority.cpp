// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/authority.h"

#include <limits>
#include <optional>
#include <unistd.h>
#include <utility>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QMap>
#include <QMetaType>
#include <QVariantMap>

namespace {

using Handling = std::function<void(const QDBusMessage &reply)>;

// Calls and has the reply handled when it comes, unless the receiver has gone by then.
void ask(QObject *receiver, const QDBusMessage &question, int timeLimit, const Handling &handle)
{
    auto *watcher =
        new QDBusPendingCallWatcher(QDBusConnection::systemBus().asyncCall(question, timeLimit), receiver);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, receiver, [watcher, handle] {
        watcher->deleteLater();
        handle(watcher->reply());
    });
}

// The subject (sa{sv}) "whoever has this name on the system bus".
QVariant subject(const QString &busName)
{
    QDBusArgument subject;
    subject.beginStructure();
    subject << QStringLiteral("system-bus-name") << QVariantMap{{QStringLiteral("name"), busName}};
    subject.endStructure();
    return QVariant::fromValue(subject);
}

QVariant noDetails()
{
    QDBusArgument details;
    details.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QString>());
    details.endMap();
    return QVariant::fromValue(details);
}

// Asks whether the program with that name may manage NFC.
QDBusMessage questionAbout(const QString &busName, bool mayAskUser)
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.PolicyKit1"), QStringLiteral("/org/freedesktop/PolicyKit1/Authority"),
        QStringLiteral("org.freedesktop.PolicyKit1.Authority"), QStringLiteral("CheckAuthorization"));
    question.setArguments(
        {subject(busName), QStringLiteral("com.tavix.nfc.manage"), noDetails(), uint(mayAskUser), QString()});
    return question;
}

// Polkit's decision, or nothing when it has made none.
std::optional<bool> decision(const QDBusMessage &reply)
{
    if (reply.signature() != QLatin1String("(bba{ss})"))
        return std::nullopt;
    const auto result = reply.arguments().constFirst().value<QDBusArgument>();
    bool authorized = false;
    bool isChallenge = false;
    QMap<QString, QString> details;
    // A structure that is not read to its end is leaked.
    result.beginStructure();
    result >> authorized >> isChallenge >> details;
    result.endStructure();
    // Nothing is decided until somebody has typed a password.
    if (isChallenge)
        return std::nullopt;
    return authorized;
}

} // namespace

QSet<uint> Authority::usersOfTheSystem()
{
    constexpr uint root = 0;
    return {root, geteuid()};
}

Authority::Authority(const QSet<uint> &trusted, QObject *parent) : QObject(parent), trusted(trusted) {}

void Authority::decide(const QDBusMessage &call, const Action &action)
{
    open(std::make_shared<Case>(Case{call, action, false, 0, std::nullopt}));
}

void Authority::permit(const QDBusMessage &call, const Action &action)
{
    open(std::make_shared<Case>(Case{call, action, true, 0, std::nullopt}));
}

void Authority::review(const QString &busName, uint user, const Review &reviewed)
{
    if (trusted.contains(user)) {
        reviewed(true);
        return;
    }
    ask(this, questionAbout(busName, false), -1,
        [reviewed](const QDBusMessage &reply) { reviewed(decision(reply)); });
}

void Authority::reviewBefore(const QDBusMessage &call, const QString &busName, uint user,
                             const Review &reviewed)
{
    // An open case before those that wait.
    const auto opened =
        std::make_shared<Case>(Case{call, [](const QDBusMessage &, uint) {}, true, 0, std::nullopt});
    cases[call.service()].prepend(opened);
    review(busName, user, [this, opened, reviewed](std::optional<bool> allowed) {
        reviewed(allowed);
        close(opened, true);
    });
}

void Authority::open(const CasePointer &opened)
{
    cases[opened->call.service()].enqueue(opened);
    askForUser(opened);
}

void Authority::askForUser(const CasePointer &opened)
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixUser"));
    question.setArguments({opened->call.service()});
    ask(this, question, -1, [this, opened](const QDBusMessage &reply) {
        const bool isKnown = reply.signature() == QLatin1String("u");
        if (isKnown)
            opened->user = reply.arguments().constFirst().toUInt();
        if (!isKnown || opened->isPermitted || trusted.contains(opened->user))
            close(opened, isKnown);
        else
            askPolkit(opened);
    });
}

void Authority::askPolkit(const CasePointer &opened)
{
    // Only a caller who says so waits until somebody has typed a password.
    const bool mayAskUser = opened->call.isInteractiveAuthorizationAllowed();
    const int timeLimit = mayAskUser ? std::numeric_limits<int>::max() : -1;
    ask(this, questionAbout(opened->call.service(), mayAskUser), timeLimit,
        [this, opened](const QDBusMessage &reply) { close(opened, decision(reply).value_or(false)); });
}

void Authority::close(const CasePointer &opened, bool allowed)
{
    opened->allowed = allowed;
    const QString caller = opened->call.service();
    while (!cases[caller].isEmpty() && cases[caller].constFirst()->allowed) {
        const CasePointer closed = cases[caller].dequeue();
        if (*closed->allowed)
            closed->action(closed->call, closed->user);
        else
            QDBusConnection::systemBus().send(closed->call.createErrorReply(
                QDBusError::AccessDenied, QStringLiteral("Not allowed to manage NFC")));
    }
    if (cases[caller].isEmpty())
        cases.remove(caller);
}
