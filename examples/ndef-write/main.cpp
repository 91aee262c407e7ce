// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Makes an NDEF message of URIs and files: ndef-write [-o message.ndef] tel:12345 card.vcf
// Without -o the message is printed in hex.
#include <QtCore>

#include <NDEFGenerator>

namespace {

int fail(const QFile &file)
{
    std::fprintf(stderr, "ndef-write: %s: %s\n", qPrintable(file.fileName()), qPrintable(file.errorString()));
    return 1;
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
        else if (file.open(QIODevice::ReadOnly))
            generator.addRecord(
                NDEFGenerator::Record(QMimeDatabase().mimeTypeForFile(content).name(), file.readAll()));
        else
            return fail(file);
    }

    QFile out(arguments.value(QStringLiteral("o")));
    if (!arguments.isSet(QStringLiteral("o")))
        std::printf("%s\n", generator.data().toHex(' ').constData());
    else if (!out.open(QIODevice::WriteOnly) || out.write(generator.data()) < 0 || !out.flush())
        return fail(out);
    return 0;
}
