// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Encodes messages and records made of the input, and stops where the bytes differ from the second encoder's.
#include <fuzzer/FuzzedDataProvider.h>

#include "../ndef/referenceencoder.h"
#include "ndef/ndefgenerator_p.h"
#include "support.h"

namespace {

QByteArray bytes(FuzzedDataProvider &input)
{
    return QByteArray::fromStdString(input.ConsumeRandomLengthString());
}

QString text(FuzzedDataProvider &input)
{
    const QByteArray source = bytes(input);
    if (input.ConsumeBool())
        return QString::fromUtf8(source);
    // Any code units, lone surrogates among them.
    QString units(source.size() / 2, Qt::Uninitialized);
    for (qsizetype i = 0; i < units.size(); ++i)
        units[i] = QChar(uchar(source[2 * i]), uchar(source[2 * i + 1]));
    return units;
}

QString uri(FuzzedDataProvider &input)
{
    static const char *const beginnings[] = {
        "",           "http://www.", "https://www.", "http://", "https://", "tel:",
        "mailto:",    "ftps://",     "sftp://",      "smb://",  "nfs://",   "ftp://anonymous:anonymous@",
        "ftp://ftp.", "ftp://",      "file://",
    };
    return QString::fromLatin1(input.PickValueInArray(beginnings)) + text(input);
}

void checkRecords(FuzzedDataProvider &input)
{
    const QByteArray id = bytes(input);
    const bool begin = input.ConsumeBool();
    const bool end = input.ConsumeBool();
    const NDEFGeneratorPrivate generator;
    if (input.ConsumeBool()) {
        const QString address = uri(input);
        const Reference::Written expected{"U", Reference::uriPayload(address), id, begin, end};
        require(generator.generateUriRecord(address, begin, end, id) == expected.bytes());
    } else {
        const QByteArray type = bytes(input);
        const QByteArray payload = bytes(input);
        const Reference::Written expected{type, payload, id, begin, end};
        require(generator.generateRecord(type, payload, begin, end, id) == expected.bytes());
    }
}

void checkMessage(FuzzedDataProvider &input)
{
    NDEFGenerator generator;
    QList<Reference::Record> records;
    while (input.remaining_bytes() > 0) {
        if (input.ConsumeBool()) {
            records.append({uri(input), {}, {}});
            generator.addRecord(NDEFGenerator::Record(records.last().uri));
        } else {
            const QString type = text(input);
            records.append({{}, type, bytes(input)});
            generator.addRecord(NDEFGenerator::Record(type, records.last().mimeData));
        }
    }
    require(generator.data() == Reference::bytes(Reference::write(records)));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // Records that are left out are warned about, thousands of them a second.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    if (input.ConsumeBool())
        checkMessage(input);
    else
        checkRecords(input);
    return 0;
}
