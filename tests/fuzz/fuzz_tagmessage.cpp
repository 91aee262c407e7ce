// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads the input as the message on a tag, as the client and a daemon do, and stops where what the user is
// asked about is not what the application gets.
#include <URINDEFRecord>

#include "core/decision.h"
#include "core/tagcontent.h"
#include "daemon/ndefkind.h"
#include "support.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // The decoder logs every broken message.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray message(reinterpret_cast<const char *>(data), qsizetype(size));
    const TagContent content = readTag(message);
    for (const TagRecord &record : content.records) {
        if (record.kind != TagRecord::Uri)
            continue;
        const QString uri = QString::fromUtf8(URINDEFRecord(record.payload).getURI());
        // One without a scheme is shown as the web link that it is taken for.
        require(record.text == QLatin1String("http://") + uri.trimmed() ||
                uri.contains(record.text.section(QLatin1Char(':'), 1), Qt::CaseInsensitive));
    }
    require(!content.isWellFormed || !content.records.isEmpty() || message.isEmpty() || message.size() >= 3);
    require(!ndefKind(message).isNull());
    return 0;
}
