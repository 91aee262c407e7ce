// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads the input as a handler's announcement, and stops where it can be offered content that it does not
// take or cannot be called.
#include "daemon/handlerfolder.h"
#include "support.h"

namespace {

constexpr const char *kinds[] = {"empty", "unknown", "text/plain", "uri:tel:+358401234567",
                                 "urn:nfc:ext:example.com:t"};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // Files that announce nothing are warned about.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // A new one each time: one that is changed within the clock's tick is not always read again.
    static int files = 0;
    const QString path = filePath(QStringLiteral("%1.handler").arg(++files));
    writeFile(path, inputBytes(data, size));
    static const HandlerFolder folder({filePath(QString())});
    for (const char *kind : kinds) {
        const QList<Handler> handlers = folder.handlersFor(QString::fromLatin1(kind));
        for (const Handler &handler : handlers)
            require(!handler.service.isEmpty() && !handler.path.path().isEmpty() && !handler.takes.isEmpty());
    }
    require(QFile::remove(path));
    return 0;
}
