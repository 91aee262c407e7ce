// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Makes an NDEF message of URIs and files: ndef-write [-o message.ndef] tel:12345 card.vcf
// Without -o the message is printed in hex.
#include <QtCore>

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

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser arguments;
    arguments.addOption(
        {QStringLiteral("o"), QStringLiteral("Write the message to <file>."), QStringLiteral("file")});
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

    QFile out(arguments.value(QStringLiteral("o")));
    const bool isPrinted = !arguments.isSet(QStringLiteral("o"));
    const bool isOpen = isPrinted ? out.open(stdout, QIODevice::WriteOnly) : out.open(QIODevice::WriteOnly);
    const QByteArray bytes = isPrinted ? generator.data().toHex(' ') + '\n' : generator.data();
    if (!isOpen || out.write(bytes) != bytes.size() || !out.flush())
        return fail(out);
    return 0;
}
