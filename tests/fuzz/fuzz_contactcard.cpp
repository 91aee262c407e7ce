// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads the input as a contact's card: its name, its picture, and its copy, which must be the input.
#include <glib.h>
#include <memory>

#include <QDir>
#include <QFileInfo>
#include <QImage>

#include <ContactExporter>

#include "support.h"

using ConnUi::ContactExporter;

// The vCard library loses the beginning of a broken line; only its allocator is left on the stack.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:g_realloc\n";
}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // Broken cards are warned about, thousands of them a second.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    g_log_set_writer_func(
        [](GLogLevelFlags, const GLogField *, gsize, gpointer) { return G_LOG_WRITER_HANDLED; }, nullptr,
        nullptr);
    qputenv("XDG_DATA_HOME", QFile::encodeName(filePath(QString())));
    require(QDir(filePath(QString())).mkdir(QStringLiteral("contacts")));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input = inputBytes(data, size);
    static const QString path = filePath(QStringLiteral("contacts/fuzzed.vcf"));
    writeFile(path, input);

    QString first;
    QString second;
    ContactExporter::resolveContactInfo(QFileInfo(path), first, second);
    const QString contact = QStringLiteral("contact:fuzzed");
    QImage avatar;
    require(ContactExporter::resolveContactAvatar(contact, avatar) != avatar.isNull());

    const std::unique_ptr<QFile> copy(ContactExporter::createContactCardFile(contact));
    require(copy->open(QIODevice::ReadOnly) && copy->readAll() == input);
    return 0;
}
