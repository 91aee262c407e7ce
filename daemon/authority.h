// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_DAEMON_AUTHORITY_H
#define CONNUI_DAEMON_AUTHORITY_H

#include <functional>
#include <memory>
#include <optional>

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QHash>
#include <QObject>
#include <QQueue>
#include <QSet>
#include <QString>

/**
 * Decides who may manage NFC: root, the daemon's own user, and every caller whom polkit lets do
 * "com.tavix.nfc.manage". Without polkit on the bus it is the former two.
 *
 * It asks and never waits: the daemon serves others meanwhile.
 */
class Authority : public QObject
{
    Q_OBJECT

public:
    /** Carries out and answers a call of \a user. */
    using Action = std::function<void(const QDBusMessage &call, uint user)>;

    /** Acts on a decision of polkit; it is missing when polkit has not answered, or wants a password. */
    using Review = std::function<void(std::optional<bool> allowed)>;

    /** Root and the daemon's own user. */
    static QSet<uint> usersOfTheSystem();

    /** One that lets \a trusted users pass unasked. */
    explicit Authority(const QSet<uint> &trusted = usersOfTheSystem(), QObject *parent = nullptr);

    /**
     * Has \a action carry out \a call once its caller has turned out to be allowed, and answers AccessDenied
     * otherwise. The calls of one caller are carried out in their order.
     */
    void decide(const QDBusMessage &call, const Action &action);

    /** As decide(), for a \a call that its caller may make in any case. */
    void permit(const QDBusMessage &call, const Action &action);

    /**
     * Asks polkit about a program that was allowed to manage NFC once more, by its \a busName, and calls
     * \a reviewed. A program of a trusted \a user is allowed at once.
     */
    void review(const QString &busName, uint user, const Review &reviewed);

    /** As review(), for \a call, which is being carried out: the caller's next calls wait until then. */
    void reviewBefore(const QDBusMessage &call, const QString &busName, uint user, const Review &reviewed);

private:
    struct Case
    {
        const QDBusMessage call;
        const Action action;
        const bool isPermitted;
        uint user = 0;
        std::optional<bool> allowed;
    };
    using CasePointer = std::shared_ptr<Case>;

    void open(const CasePointer &opened);
    void askForUser(const CasePointer &opened);
    void askPolkit(const CasePointer &opened);
    void close(const CasePointer &opened, bool allowed);

    const QSet<uint> trusted;
    QHash<QString, QQueue<CasePointer>> cases; // that are open, by caller
};

#endif
