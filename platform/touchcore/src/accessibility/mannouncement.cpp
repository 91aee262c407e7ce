// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QAccessible>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

#include "accessibility/maccessible_p.h"

#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)

void MAccessible::announce(QObject *object, const QString &text, Politeness politeness)
{
    if (!QAccessible::isActive() || text.isEmpty())
        return;
    QAccessibleAnnouncementEvent news(object, text);
    news.setPoliteness(politeness == Assertive ? QAccessible::AnnouncementPoliteness::Assertive
                                               : QAccessible::AnnouncementPoliteness::Polite);
    QAccessible::updateAccessibility(&news);
}

#else

// Qt has announcements from 6.8 on. The bus that it reports everything else on has known them for longer, and
// this is the connection that Qt has to it.
void MAccessible::announce(QObject *object, const QString &text, Politeness politeness)
{
    QAccessibleInterface *teller =
        QAccessible::isActive() ? QAccessible::queryAccessibleInterface(object) : nullptr;
    const QDBusConnection bus(QStringLiteral("a11y"));
    if (!teller || text.isEmpty() || !bus.isConnected())
        return;
    const QString path = QStringLiteral("/org/a11y/atspi/accessible/%1").arg(QAccessible::uniqueId(teller));
    auto news = QDBusMessage::createSignal(path, QStringLiteral("org.a11y.atspi.Event.Object"),
                                           QStringLiteral("Announcement"));
    news.setArguments(
        {QString(), int(politeness), 0, QVariant::fromValue(QDBusVariant(text)), QVariantMap()});
    bus.send(news);
}

#endif
