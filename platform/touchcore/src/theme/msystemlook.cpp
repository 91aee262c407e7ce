// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <cmath>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include "theme/msystemlook_p.h"

namespace {

using Groups = QMap<QString, QVariantMap>;

constexpr QLatin1String portalService("org.freedesktop.portal.Desktop");
constexpr QLatin1String portalPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String portalInterface("org.freedesktop.portal.Settings");

// The settings that portals have, the common ones first. Older portals know some only as those of one
// desktop.
constexpr auto colorScheme = "org.freedesktop.appearance color-scheme";
constexpr auto contrast = "org.freedesktop.appearance contrast";
constexpr auto desktopContrast = "org.gnome.desktop.a11y.interface high-contrast";
constexpr auto desktopTextScale = "org.gnome.desktop.interface text-scaling-factor";
constexpr auto motion = "org.freedesktop.appearance reduced-motion";
constexpr auto desktopAnimations = "org.gnome.desktop.interface enable-animations";
constexpr uint preferDark = 1;
// No text is legible below the one, and no question fits a phone above the other.
constexpr qreal leastTextScale = 0.5;
constexpr qreal mostTextScale = 3;

QStringList followedGroups()
{
    return {QStringLiteral("org.freedesktop.appearance"), QStringLiteral("org.gnome.desktop.interface"),
            QStringLiteral("org.gnome.desktop.a11y.interface")};
}

QString nameOf(const QString &group, const QString &key)
{
    return group + QLatin1Char(' ') + key;
}

} // namespace

MSystemLook::MSystemLook(QObject *parent) : QObject(parent)
{
    qDBusRegisterMetaType<Groups>();
    qRegisterMetaType<QDBusVariant>();
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(portalService, portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    auto question =
        QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, QStringLiteral("ReadAll"));
    question.setArguments({followedGroups()});
    auto *call = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, &MSystemLook::readAll);
}

void MSystemLook::readAll(QDBusPendingCallWatcher *call)
{
    const QDBusPendingReply<Groups> reply = *call;
    call->deleteLater();
    // A system without a portal is nothing to speak of.
    if (reply.isError())
        return;
    QVariantMap all;
    const Groups found = reply.value();
    for (auto group = found.cbegin(); group != found.cend(); ++group)
        for (auto key = group->cbegin(); key != group->cend(); ++key)
            all.insert(nameOf(group.key(), key.key()), key.value());
    take(all);
}

void MSystemLook::settingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (followedGroups().contains(group))
        take({{nameOf(group, key), value.variant()}});
}

void MSystemLook::take(const QVariantMap &news)
{
    const MLook before = look();
    settings.insert(news);
    if (look() != before)
        Q_EMIT changed();
}

QVariant MSystemLook::first(std::initializer_list<const char *> names, const QVariant &otherwise) const
{
    for (const char *name : names)
        if (const QVariant value = settings.value(QLatin1String(name)); value.isValid())
            return value;
    return otherwise;
}

MLook MSystemLook::look() const
{
    MLook look;
    look.dark = first({colorScheme}).toUInt() == preferDark;
    look.highContrast = first({contrast, desktopContrast}).toUInt() != 0;
    const qreal scale = first({desktopTextScale}).toReal();
    if (std::isfinite(scale) && scale > 0)
        look.textScale = legible(scale);
    // The one is about less, the other about any.
    look.reducedMotion = first({motion}).toUInt() != 0 || !first({desktopAnimations}, true).toBool();
    return look;
}

qreal MSystemLook::legible(qreal scale)
{
    return qBound(leastTextScale, scale, mostTextScale);
}
