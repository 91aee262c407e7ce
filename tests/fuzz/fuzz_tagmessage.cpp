// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads the input as the message on a tag, as the client and the simulated daemon do, and stops where what
// the user is asked about is not what the application gets.
#include <URINDEFRecord>

#include "../../client/console/messagetext.h"
#include "../../client/screen/tagcontent.h"
#include "daemon/ndefkind.h"
#include "support.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // The decoder tells of every broken message.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray message(reinterpret_cast<const char *>(data), qsizetype(size));
    const TagContent content = readTag(message);
    if (content.kind == TagContent::Uri)
        require(content.text == QString::fromUtf8(URINDEFRecord(content.payload).getURI()));
    require(message.isEmpty() || content.kind != TagContent::Empty || messageText(message).isEmpty());
    require(!ndefKind(message).isNull());
    return 0;
}
