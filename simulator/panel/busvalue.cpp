// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "panel/busvalue.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>
#include <QVariant>

namespace {

constexpr qsizetype longestString = 60; // characters
constexpr qsizetype mostElements = 24;

bool isSeen(QChar character)
{
    const QChar::Category category = character.category();
    return character.isPrint() && category != QChar::Separator_Line && category != QChar::Separator_Paragraph;
}

QString quoted(const QString &words)
{
    const QString beginning = words.left(longestString);
    QString text;
    for (const QChar character : beginning) {
        if (character == QLatin1Char('"') || character == QLatin1Char('\\'))
            text += QLatin1Char('\\');
        if (isSeen(character) || character.isSurrogate())
            text += character;
        else
            text += QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
    }
    const QString rest = words.size() > longestString ? QStringLiteral("…") : QString();
    return QStringLiteral("\"%1%2\"").arg(text, rest);
}

QString bytes(const QJsonArray &array)
{
    QStringList parts;
    for (qsizetype i = 0; i < qMin(array.size(), mostElements); ++i)
        parts.append(QStringLiteral("%1").arg(array[i].toInteger(), 2, 16, QLatin1Char('0')));
    if (array.size() > mostElements)
        parts.append(QStringLiteral("… (%1 bytes)").arg(array.size()));
    return parts.join(QLatin1Char(' '));
}

QString elements(const QJsonArray &array)
{
    if (!array.isEmpty() && array.first().isDouble())
        return bytes(array);
    QStringList parts;
    for (qsizetype i = 0; i < qMin(array.size(), mostElements); ++i)
        parts.append(BusValue::text(array[i]));
    if (array.size() > mostElements)
        parts.append(QStringLiteral("…"));
    return QStringLiteral("[%1]").arg(parts.join(QStringLiteral(", ")));
}

// A variant is an object with the two names, a dictionary one with its keys.
QString members(const QJsonObject &object)
{
    const QJsonValue data = object[QLatin1String("data")];
    if (object.size() == 2 && object.contains(QLatin1String("type")) && !data.isUndefined())
        return BusValue::text(data);
    QStringList parts;
    for (auto member = object.begin(); member != object.end(); ++member)
        parts.append(QStringLiteral("%1: %2").arg(quoted(member.key()), BusValue::text(member.value())));
    return QStringLiteral("{%1}").arg(parts.join(QStringLiteral(", ")));
}

} // namespace

QString BusValue::text(const QJsonValue &value)
{
    if (value.isString())
        return quoted(value.toString());
    if (value.isArray())
        return elements(value.toArray());
    if (value.isObject())
        return members(value.toObject());
    return value.toVariant().toString();
}
