// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ndefmessagetype.h"

#include <utility>

#include "arraybuffer.h"

using ConnUi::NdefRecord;

NdefMessageType::NdefMessageType(QObject *parent) : QObject(parent) {}

QByteArray NdefMessageType::bytes() const
{
    return arrayBuffer(message);
}

void NdefMessageType::setBytes(const QByteArray &bytes)
{
    generator.clear();
    message = bytes;
    problem.clear();
    Q_EMIT changed();
}

QList<NdefRecord> NdefMessageType::records() const
{
    return NdefRecord::fromMessage(message);
}

QString NdefMessageType::error() const
{
    return problem;
}

void NdefMessageType::addUri(const QString &uri)
{
    add(NDEFGenerator::Record(uri));
}

void NdefMessageType::addText(const QString &mimeType, const QString &data)
{
    addData(mimeType, data.toUtf8());
}

void NdefMessageType::addData(const QString &mimeType, const QByteArray &data)
{
    add(NDEFGenerator::Record(mimeType, data));
}

void NdefMessageType::clear()
{
    setBytes({});
}

void NdefMessageType::add(NDEFGenerator::Record &&record)
{
    generator.addRecord(std::move(record));
    message = generator.message(&problem);
    Q_EMIT changed();
}
