// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// NDEFGenerator against Qt's encoder of NDEF messages and against a plain copy.
#include <cstring>
#include <memory>

#include <QNdefMessage>
#include <QNdefNfcUriRecord>
#include <QNdefRecord>
#include <QUrl>

#include <NDEFGenerator>

#include "comparison.h"

namespace {

// The content of a record: a URI, or data with its MIME type.
struct Content
{
    QString uri;
    QString mimeType;
    QByteArray mimeData;
};

QString uri(int number)
{
    static const QString hosts[] = {
        QStringLiteral("https://www.example.org/articles/%1"),
        QStringLiteral("tel:+35850123%1"),
        QStringLiteral("http://example.com/map?place=%1"),
        QStringLiteral("mailto:someone%1@example.net"),
        QStringLiteral("geo:60.17,24.94?z=%1"),
    };
    return hosts[number % std::size(hosts)].arg(number);
}

QList<Content> uris(int count)
{
    QList<Content> contents;
    for (int i = 0; i < count; ++i)
        contents.append({uri(i), {}, {}});
    return contents;
}

QList<Content> mixed(int count)
{
    static const QString types[] = {QStringLiteral("text/plain"), QStringLiteral("text/vcard"),
                                    QStringLiteral("application/octet-stream")};
    QList<Content> contents;
    for (int i = 0; i < count; ++i)
        if (i % 2)
            contents.append({{}, types[i % std::size(types)], QByteArray(60 * (1 + i % 5), 'x')});
        else
            contents.append({uri(i), {}, {}});
    return contents;
}

void fill(NDEFGenerator &generator, const QList<Content> &contents)
{
    for (const Content &content : contents)
        if (content.uri.isEmpty())
            generator.addRecord(NDEFGenerator::Record(content.mimeType, content.mimeData));
        else
            generator.addRecord(NDEFGenerator::Record(content.uri));
}

QNdefMessage qtMessage(const QList<Content> &contents)
{
    QNdefMessage message;
    message.reserve(contents.size());
    for (const Content &content : contents) {
        if (content.uri.isEmpty()) {
            QNdefRecord record;
            record.setTypeNameFormat(QNdefRecord::Mime);
            record.setType(content.mimeType.toUtf8());
            record.setPayload(content.mimeData);
            message.append(record);
        } else {
            QNdefNfcUriRecord record;
            record.setUri(QUrl(content.uri));
            message.append(record);
        }
    }
    return message;
}

QByteArray encode(const QList<Content> &contents)
{
    NDEFGenerator generator;
    fill(generator, contents);
    return generator.data();
}

// A call of data() on records made beforehand.
auto dataOf(const QList<Content> &contents)
{
    auto generator = std::make_shared<NDEFGenerator>();
    fill(*generator, contents);
    return [generator] { return generator->data(); };
}

void compareWithQt(const std::string &what, const QList<Content> &contents, double fromStrings)
{
    compare(what + ", from strings to bytes", Side{"NDEFGenerator", [=] { return encode(contents); }},
            Side{"Qt", [=] { return qtMessage(contents).toByteArray(); }}, {.atLeast = fromStrings});
    compare(what + ", records made before", Side{"NDEFGenerator", dataOf(contents)},
            Side{"Qt", [message = qtMessage(contents)] { return message.toByteArray(); }}, {.atLeast = 2});
}

void compareWithCopy()
{
    const QByteArray data(1024 * 1024, 'x');
    const auto copy = [=] {
        QByteArray result(data.size(), Qt::Uninitialized);
        std::memcpy(result.data(), data.constData(), std::size_t(data.size()));
        return result;
    };
    compare("One MIME record of 1 MiB", Side{"memcpy", copy},
            Side{"NDEFGenerator", dataOf({{{}, QStringLiteral("application/octet-stream"), data}})},
            {.atMost = 1.1});
}

} // namespace

int main(int argc, char **argv)
{
    compareWithQt("One URI", uris(1), 7);
    compareWithQt("Ten URIs", uris(10), 12);
    compareWithQt("1,000 mixed records", mixed(1000), 5);
    compareWithCopy();
    compare("Ten times the records", Side{"1,000", dataOf(mixed(1000))}, Side{"10,000", dataOf(mixed(10000))},
            {.atLeast = 9, .atMost = 11});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
