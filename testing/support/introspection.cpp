// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "introspection.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QXmlStreamReader>

QStringList Introspection::members(const QByteArray &data, const QString &interface)
{
    QStringList members;
    QStringList arguments;
    QString current;
    QString member;
    QXmlStreamReader xml(data);
    while (!xml.atEnd()) {
        xml.readNext();
        const QString element = xml.name().toString();
        const auto attribute = [&xml](QLatin1String name) { return xml.attributes().value(name).toString(); };
        const bool isMember = element == QStringLiteral("method") || element == QStringLiteral("signal") ||
                              element == QStringLiteral("property");
        if (xml.isStartElement() && element == QStringLiteral("interface")) {
            current = attribute(QLatin1String("name"));
        } else if (xml.isStartElement() && isMember) {
            member = element + u' ' + attribute(QLatin1String("name"));
            arguments.clear();
        } else if (xml.isStartElement() && element == QStringLiteral("arg")) {
            // Those of a signal go one way, said or not.
            const QString direction = member.startsWith(QStringLiteral("signal"))
                                          ? QStringLiteral("out")
                                          : attribute(QLatin1String("direction"));
            arguments.append(
                QStringList{direction, attribute(QLatin1String("type")), attribute(QLatin1String("name"))}
                    .join(u' '));
        } else if (xml.isEndElement() && isMember && current == interface) {
            members.append(member + u'(' + arguments.join(QStringLiteral(", ")) + u')');
        }
    }
    return members;
}

QStringList Introspection::publishedMembers(const QString &interface)
{
    QFile file(QStringLiteral(INTERFACES "/%1.xml").arg(interface));
    return file.open(QFile::ReadOnly) ? members(file.readAll(), interface) : QStringList();
}

QStringList Introspection::daemonMembers(const QString &path, const QString &interface)
{
    const QDBusMessage reply = QDBusConnection::systemBus().call(QDBusMessage::createMethodCall(
        QStringLiteral("com.tavix.nfc"), path, QStringLiteral("org.freedesktop.DBus.Introspectable"),
        QStringLiteral("Introspect")));
    return members(reply.arguments().value(0).toString().toUtf8(), interface);
}
