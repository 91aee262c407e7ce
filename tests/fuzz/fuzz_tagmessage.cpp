// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads the input as the message on a tag, as programs, the client and a daemon do, and stops where what the
// user is asked about is not what the application gets, or where two decoders differ.
#include <NdefRecord>
#include <NfcTagContent>
#include <URINDEFRecord>

#include "daemon/ndefkind.h"
#include "daemon/tags/ndefrecords.h"
#include "support.h"

using ConnUi::NfcTagContent;
using ConnUi::NfcTagRecord;

namespace {

void requireSame(const ConnUi::NdefRecord &record, const NdefRecord &other)
{
    require(record.typeNameFormat() == other.format && record.type() == other.type);
    require(record.id() == other.id && record.payload() == other.payload);
    if (!record.uri().isEmpty() && other.format == NdefRecord::WellKnown)
        require(record.uri() == QString::fromUtf8(URINDEFRecord(other.payload).getURI()));
    require(record.text().size() <= other.payload.size());
}

void requireSame(const QList<ConnUi::NdefRecord> &records, const std::optional<QList<NdefRecord>> &others)
{
    require(records.isEmpty() == !others);
    require(records.isEmpty() || records.size() == others->size());
    for (qsizetype i = 0; i < records.size(); ++i)
        requireSame(records[i], others->at(i));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // The decoder logs every broken message.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray message(reinterpret_cast<const char *>(data), qsizetype(size));
    const NfcTagContent content(message);
    const QList<NfcTagRecord> records = content.records();
    for (const NfcTagRecord &record : records) {
        if (record.kind() != NfcTagRecord::Uri || record.type() != QLatin1String("U"))
            continue;
        // An absolute URI stands in the type, and may be that letter.
        if (record.text() == QLatin1String("http://U"))
            continue;
        const QString uri = QString::fromUtf8(URINDEFRecord(record.payload()).getURI());
        // One without a scheme is shown as the web link that it is taken for.
        require(record.text() == QLatin1String("http://") + uri.trimmed() ||
                uri.contains(record.text().section(QLatin1Char(':'), 1), Qt::CaseInsensitive));
    }
    require(!content.isWellFormed() || !records.isEmpty() || message.isEmpty() || message.size() >= 3);
    require(!ndefKind(message).isNull());
    requireSame(ConnUi::NdefRecord::fromMessage(message), ndefRecords(message));
    return 0;
}
