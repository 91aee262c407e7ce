// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_FAKEPOLKIT_H
#define CONNUI_TESTS_FAKEPOLKIT_H

#include <utility>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <QMetaType>
#include <QSet>
#include <QString>
#include <QVariantMap>

/** polkit on the system bus, for as long as it lives. It decides by bus names. */
class FakePolkit : public QDBusVirtualObject
{
public:
    FakePolkit() : bus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("polkit")))
    {
        if (!bus.registerVirtualObject(path(), this) || !bus.registerService(name()))
            qFatal("polkit cannot be on the bus");
    }

    ~FakePolkit() override
    {
        bus.unregisterService(name());
        QDBusConnection::disconnectFromBus(QStringLiteral("polkit"));
    }

    /** Lets the programs with these names manage NFC from now on, and no others. */
    void allow(const QSet<QString> &busNames) { allowed = busNames; }

    /** Reports that its decisions may have changed. */
    void reportChange()
    {
        bus.send(QDBusMessage::createSignal(path(), interface(), QStringLiteral("Changed")));
    }

    /** Wants a password for the programs that are not allowed. */
    void challenge() { isChallenging = true; }

    /** Answers further questions with an error. */
    void fail() { isFailing = true; }

    /** Answers further questions only at release(), as it decides now. */
    void hold() { isHolding = true; }
    void release()
    {
        isHolding = false;
        for (const QDBusMessage &answer : std::exchange(held, {}))
            bus.send(answer);
    }

    /** Counts the questions since the start. */
    int questions() const { return asked; }

    QString introspect(const QString &) const override { return QString(); }

    bool handleMessage(const QDBusMessage &question, const QDBusConnection &) override
    {
        ++asked;
        const QDBusMessage answer =
            isFailing ? question.createErrorReply(QDBusError::Failed, QStringLiteral("test"))
                      : question.createReply(decision(subject(question)));
        if (isHolding)
            held.append(answer);
        else
            bus.send(answer);
        return true;
    }

private:
    static QString name() { return QStringLiteral("org.freedesktop.PolicyKit1"); }
    static QString path() { return QStringLiteral("/org/freedesktop/PolicyKit1/Authority"); }
    static QString interface() { return QStringLiteral("org.freedesktop.PolicyKit1.Authority"); }

    static QString subject(const QDBusMessage &question)
    {
        const auto argument = question.arguments().constFirst().value<QDBusArgument>();
        QString kind;
        QVariantMap details;
        argument.beginStructure();
        argument >> kind >> details;
        argument.endStructure();
        return details.value(QStringLiteral("name")).toString();
    }

    QVariant decision(const QString &busName) const
    {
        QDBusArgument result;
        result.beginStructure();
        const bool isAllowed = allowed.contains(busName);
        result << isAllowed << (isChallenging && !isAllowed);
        result.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QString>());
        result.endMap();
        result.endStructure();
        return QVariant::fromValue(result);
    }

    QDBusConnection bus;
    QSet<QString> allowed;
    QList<QDBusMessage> held;
    bool isChallenging = false;
    bool isFailing = false;
    bool isHolding = false;
    int asked = 0;
};

#endif
