// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads the input as the file of the connectivity settings, changes a setting and a radio, and stops where
// what was not changed is another.
#include <QCborValue>
#include <QDir>

#include <ConnectivitySettings>
#include <RadioState>

#include "support.h"

using ConnUi::ConnectivitySettings;
using ConnUi::RadioState;

namespace {

constexpr int nfcRadio = 16;
constexpr int bluetoothRadio = 1;

QList<QVariant> settings()
{
    QList<QVariant> values;
    for (const int type : {1, 2})
        for (const char *key : {"nfc_show_confirmations", "kept"})
            values.append(ConnectivitySettings(type).get(QString::fromLatin1(key)));
    return values;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // Damaged files are warned about.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(filePath(QString())));
    require(QDir(filePath(QString())).mkdir(QStringLiteral("connui")));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QString path = filePath(QStringLiteral("connui/settings.cbor"));
    static const QString changed = QStringLiteral("changed");
    writeFile(path, inputBytes(data, size));

    const QList<QVariant> before = settings();
    ConnectivitySettings(1).set(changed, QStringLiteral("value"));
    require(ConnectivitySettings(1).get(changed) == QStringLiteral("value"));

    const bool bluetooth = RadioState(bluetoothRadio).enabled();
    RadioState nfc(nfcRadio);
    const bool enabled = nfc.enabled();
    nfc.setEnabled(!enabled);
    require(nfc.enabled() == !enabled && RadioState(bluetoothRadio).enabled() == bluetooth);

    // Compared as the store keeps them: a value that is not a number differs from itself.
    const QList<QVariant> after = settings();
    for (qsizetype i = 0; i < before.size(); ++i)
        require(QCborValue::fromVariant(after[i]).toCbor() == QCborValue::fromVariant(before[i]).toCbor());
    return 0;
}
