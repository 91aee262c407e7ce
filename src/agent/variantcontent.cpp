// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "agent/variantcontent.h"

#include <sys/stat.h>

#include <QByteArray>
#include <QDataStream>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <QIODevice>
#include <QString>

namespace ConnUi {

namespace {

// The file behind a descriptor, not its number: every reading of an argument makes a new descriptor.
void writeFile(QDataStream &out, const QDBusUnixFileDescriptor &descriptor)
{
    struct stat file;
    if (::fstat(descriptor.fileDescriptor(), &file) == 0)
        out << quint64(file.st_dev) << quint64(file.st_ino);
}

void writeValue(QDataStream &out, const QVariant &value);
void writeElements(QDataStream &out, const QDBusArgument &argument);

// Writes the element at the argument's cursor, which moves on to the next.
void writeElement(QDataStream &out, const QDBusArgument &argument)
{
    out << argument.currentSignature();
    switch (argument.currentType()) {
    case QDBusArgument::BasicType:
    case QDBusArgument::VariantType:
        writeValue(out, argument.asVariant());
        break;
    case QDBusArgument::ArrayType:
        argument.beginArray();
        writeElements(out, argument);
        argument.endArray();
        break;
    case QDBusArgument::StructureType:
        argument.beginStructure();
        writeElements(out, argument);
        argument.endStructure();
        break;
    case QDBusArgument::MapType:
        argument.beginMap();
        writeElements(out, argument);
        argument.endMap();
        break;
    case QDBusArgument::MapEntryType:
        argument.beginMapEntry();
        writeElements(out, argument);
        argument.endMapEntry();
        break;
    case QDBusArgument::UnknownType:
        break;
    }
}

// Writes what the container at hand holds. Each element begins with its signature, and the end has an empty
// one, or the variants [[1], 2] and [[1, 2]] would be the same.
void writeElements(QDataStream &out, const QDBusArgument &argument)
{
    while (!argument.atEnd())
        writeElement(out, argument);
    out << QString();
}

void writeValue(QDataStream &out, const QVariant &value)
{
    const QMetaType type = value.metaType();
    out << QByteArray(type.name());
    if (type == QMetaType::fromType<QDBusArgument>()) {
        const auto copy = value.value<QDBusArgument>();
        writeElement(out, copy);
    } else if (type == QMetaType::fromType<QDBusVariant>()) {
        writeValue(out, value.value<QDBusVariant>().variant());
    } else if (type == QMetaType::fromType<QDBusObjectPath>()) {
        out << value.value<QDBusObjectPath>().path();
    } else if (type == QMetaType::fromType<QDBusSignature>()) {
        out << value.value<QDBusSignature>().signature();
    } else if (type == QMetaType::fromType<QDBusUnixFileDescriptor>()) {
        writeFile(out, value.value<QDBusUnixFileDescriptor>());
    } else if (type.isValid()) {
        type.save(out, value.constData());
    }
}

QByteArray content(const QVariant &value)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    writeValue(out, value);
    return bytes;
}

} // namespace

bool sameContent(const QVariant &left, const QVariant &right)
{
    if (left == right)
        return true;
    return left.metaType() == right.metaType() && content(left) == content(right);
}

size_t contentHash(const QVariant &value)
{
    const QMetaType type = value.metaType();
    if (type == QMetaType::fromType<QString>())
        return qHash(value.toString());
    if (type == QMetaType::fromType<QByteArray>())
        return qHash(value.toByteArray());
    if (type == QMetaType::fromType<QDBusObjectPath>() || type == QMetaType::fromType<QDBusArgument>())
        return qHash(content(value));
    if (type == QMetaType::fromType<QDBusVariant>())
        return contentHash(value.value<QDBusVariant>().variant());
    // Numbers of different types may be equal.
    return 0;
}

} // namespace ConnUi
