// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>
#include <array>

#include "cardcharset_p.h"
#include "cardtext_p.h"

namespace ConnUi {
namespace {

constexpr std::array wanted{"VERSION", "N", "FN", "ORG", "NICKNAME", "EMAIL", "TEL", "PHOTO"};
constexpr int countLimit = 8;
// More than any program writes, and little work.
constexpr qsizetype headerLimit = 1000;
constexpr int propertyLimit = 5000;

bool isWanted(const QByteArray &name)
{
    return std::find(wanted.begin(), wanted.end(), name) != wanted.end();
}

bool isCard(const QByteArray &value)
{
    return value.trimmed().compare("VCARD", Qt::CaseInsensitive) == 0;
}

// The position of a property's value; -1 if the line is not a property.
qsizetype endOfHeader(const QByteArray &line)
{
    bool quoted = false;
    for (qsizetype i = 0; i < qMin(line.size(), headerLimit); ++i)
        if (line[i] == '"')
            quoted = !quoted;
        else if (line[i] == ':' && !quoted)
            return i;
    return -1;
}

// Where the next comma is, from a place on: it separates several names of a kind.
qsizetype nextComma(const QByteArray &names, qsizetype from)
{
    for (qsizetype i = from; i < names.size(); ++i)
        if (names[i] == '\\')
            ++i;
        else if (names[i] == ',')
            return i;
    return names.size();
}

QByteArray joined(QByteArray names)
{
    for (qsizetype comma = nextComma(names, 0); comma < names.size(); comma = nextComma(names, comma))
        names[comma] = ' ';
    return names;
}

// Without the beginning of a character that the end of the file has cut off: the library would read on behind
// it.
QByteArray wholeCharacters(const QByteArray &value)
{
    const qsizetype last = value.lastIndexOf('=');
    return last >= 0 && last > value.size() - 3 ? value.first(last) : value;
}

} // namespace

CardText::CardText(const QByteArray &file)
{
    // A byte of zero is the end for the library.
    QByteArray data = QByteArray(file.constData()).trimmed();
    data.replace("\r\n", "\n").replace('\r', '\n');
    for (qsizetype begin = 0; begin < data.size() && !ended;) {
        qsizetype end = data.indexOf('\n', begin);
        if (end < 0)
            end = data.size();
        addLine(data.sliced(begin, end - begin));
        begin = end + 1;
    }
    endProperty();
    if (!card.isEmpty())
        card += "END:VCARD\r\n";
}

void CardText::addLine(const QByteArray &line)
{
    // A quoted-printable value is folded by a "=" at the end of a line, all else by a blank at the beginning
    // of the next one. Some programs fold base64 by nothing.
    if (isQuotedPrintable && current.endsWith('=')) {
        current.chop(1);
        current += line;
        return;
    }
    if (!current.isEmpty() && (line.startsWith(' ') || line.startsWith('\t'))) {
        current += line.sliced(1);
        return;
    }
    if (isBase64 && !line.isEmpty() && !line.contains(':')) {
        current += line;
        return;
    }
    endProperty();
    const Property property = parse(line);
    current = line;
    isQuotedPrintable = property.isQuotedPrintable;
    isBase64 = property.isBase64;
}

CardText::Property CardText::parse(const QByteArray &line)
{
    const qsizetype end = endOfHeader(line);
    if (end < 0)
        return {};
    const QByteArrayList header = line.first(end).split(';');
    Property property;
    // In front of the name there may be a group's.
    property.name = header.constFirst().sliced(header.constFirst().lastIndexOf('.') + 1).trimmed().toUpper();
    property.value = line.sliced(end + 1);
    for (const QByteArray &part : header.sliced(1)) {
        const qsizetype equals = part.indexOf('=');
        const QByteArray key = part.first(qMax<qsizetype>(equals, 0)).trimmed().toUpper();
        const QByteArray value = part.sliced(equals + 1).trimmed().toUpper();
        if (key == "CHARSET")
            property.charset = value;
        else if (key == "ENCODING" || key.isEmpty()) {
            // In 2.1 the name of the parameter may be missing.
            property.isQuotedPrintable |= value == "QUOTED-PRINTABLE";
            property.isBase64 |= value == "BASE64" || value == "B";
        }
    }
    return property;
}

void CardText::endProperty()
{
    if (current.isEmpty() || ended)
        return;
    ended = ++properties == propertyLimit;
    const Property property = parse(current);
    current.clear();
    const bool begins = property.name == "BEGIN" && isCard(property.value);
    const bool ends = property.name == "END" && isCard(property.value);
    // A nested card begins on a line of its own, or behind the colon of the property that it is the value of.
    const QByteArray agent = property.name == "AGENT" ? property.value.trimmed().toUpper() : QByteArray();
    const bool nests = agent.startsWith("BEGIN:VCARD") && !agent.contains("END:VCARD");
    if (begins && depth == 0)
        card = "BEGIN:VCARD\r\n";
    else if (depth == 1 && isWanted(property.name) && !nests && ++counts[property.name] <= countLimit)
        write(property);
    if (begins || nests)
        ++depth;
    else if (ends && depth > 0)
        ended |= --depth == 0;
}

// As a parameter, for the library of cards: its later releases take a text without one for UTF-8.
QByteArray CardText::charsetOf(const QByteArray &charset, const QByteArray &quotedPrintable)
{
    if (CardCharset::isKnown(charset))
        return ";CHARSET=" + charset;
    const bool isUtf8 = QByteArray::fromPercentEncoding(quotedPrintable, '=').isValidUtf8();
    return isUtf8 ? "" : ";CHARSET=WINDOWS-1252";
}

void CardText::write(const Property &property)
{
    if (property.name == "PHOTO") {
        // An empty one is left out by those who read the card.
        card += "PHOTO;ENCODING=b:" + photo(property) + "\r\n";
        return;
    }
    QByteArray value = property.value;
    card += property.name;
    if (property.isQuotedPrintable) {
        value = wholeCharacters(value);
        card += ";ENCODING=QUOTED-PRINTABLE";
        card += charsetOf(property.charset, value);
    } else {
        value = CardCharset::toUtf8(value, property.charset);
    }
    if (property.name == "N")
        value = joined(value);
    else if (property.name == "NICKNAME")
        value.truncate(nextComma(value, 0));
    card += ':' + value + "\r\n";
}

// The picture in base64; empty when it is elsewhere. A "data:" URI (RFC 2397) holds it as well.
QByteArray CardText::photo(const Property &property)
{
    QByteArray value = property.value.trimmed();
    if (!value.toLower().startsWith("data:"))
        return property.isBase64 ? value.replace(' ', "").replace('\t', "") : QByteArray();
    value.replace('\\', "");
    const qsizetype comma = value.indexOf(',');
    if (comma < 0)
        return QByteArray();
    const QByteArray data = QByteArray::fromPercentEncoding(value.sliced(comma + 1));
    return value.first(comma).toLower().endsWith(";base64") ? data : data.toBase64();
}

} // namespace ConnUi
