// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Makes an NDEF message of URIs and files: ndef-write [-o message.ndef | --to-tag] tel:12345 card.vcf
// The message is printed in hex, written to a file, or written onto the tag that is touched next.
#include <QtCore>
#include <QtDBus>

#include <NDEFGenerator>

namespace {

int fail(const QFile &file)
{
    const QString name = file.fileName().isEmpty() ? QStringLiteral("standard output") : file.fileName();
    std::fprintf(stderr, "ndef-write: %s: %s\n", qPrintable(name), qPrintable(file.errorString()));
    return 1;
}

bool addFile(QFile *file, NDEFGenerator *generator)
{
    if (!file->open(QIODevice::ReadOnly))
        return false;
    const QString type = QMimeDatabase().mimeTypeForFile(file->fileName()).name();
    generator->addRecord(NDEFGenerator::Record(type, file->readAll()));
    return file->error() == QFile::NoError;
}

int writeToFile(const QString &name, const QByteArray &message)
{
    QFile file(name);
    const bool isPrinted = name.isEmpty();
    const bool isOpen = isPrinted ? file.open(stdout, QIODevice::WriteOnly) : file.open(QIODevice::WriteOnly);
    const QByteArray bytes = isPrinted ? message.toHex(' ') + '\n' : message;
    return isOpen && file.write(bytes) == bytes.size() && file.flush() ? 0 : fail(file);
}

QDBusMessage callDaemon(const QString &path, const QString &interface, const QString &method,
                        const QVariantList &arguments = {})
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(QStringLiteral("com.tavix.nfc"), path, interface, method);
    call.setArguments(arguments);
    // The user brings the tag, and takes as long as that takes.
    constexpr int noTimeLimit = std::numeric_limits<int>::max();
    return QDBusConnection::systemBus().call(call, QDBus::Block, noTimeLimit);
}

// The answer comes when the tag was written and read back equal.
int writeToTag(const QByteArray &message)
{
    QDBusMessage reply = callDaemon(QStringLiteral("/"), QStringLiteral("com.tavix.nfc.Manager"),
                                    QStringLiteral("DefaultAdapter"));
    if (reply.type() == QDBusMessage::ReplyMessage)
        reply = callDaemon(reply.arguments().at(0).value<QDBusObjectPath>().path(),
                           QStringLiteral("com.tavix.nfc.TagWriter"), QStringLiteral("WriteNdef"), {message});
    if (reply.type() == QDBusMessage::ReplyMessage)
        return 0;
    std::fprintf(stderr, "ndef-write: %s\n", qPrintable(reply.errorMessage()));
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    // Makes QtDBus register its own types before its thread starts: it may still read when the program ends,
    // and types that were registered later are gone by then.
    QDBusMetaType::typeToSignature(QMetaType::fromType<QDBusObjectPath>());
    QCommandLineParser arguments;
    arguments.addOption(
        {QStringLiteral("o"), QStringLiteral("Write the message to <file>."), QStringLiteral("file")});
    arguments.addOption(
        {QStringLiteral("to-tag"), QStringLiteral("Write the message onto the tag that is touched next.")});
    arguments.addPositionalArgument(QStringLiteral("content"), QStringLiteral("URIs and files."));
    arguments.addHelpOption();
    arguments.process(application);

    NDEFGenerator generator;
    for (const QString &content : arguments.positionalArguments()) {
        QFile file(content);
        if (!QUrl(content).isRelative())
            generator.addRecord(NDEFGenerator::Record(content));
        else if (!addFile(&file, &generator))
            return fail(file);
    }

    QString error;
    const QByteArray message = generator.message(&error);
    if (message.isEmpty()) {
        std::fprintf(stderr, "ndef-write: %s\n", qPrintable(error));
        return 1;
    }
    if (arguments.isSet(QStringLiteral("to-tag")))
        return writeToTag(message);
    return writeToFile(arguments.value(QStringLiteral("o")), message);
}
