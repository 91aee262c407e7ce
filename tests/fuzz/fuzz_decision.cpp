// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads the first three bytes as the circumstances of a touch and the rest as the tag, and stops where
// something is forwarded without a question that must not be, or where a question offers what it must not.
#include <algorithm>

#include "core/decision.h"
#include "core/tagcontent.h"
#include "support.h"

namespace {

// One record with the input as its payload: most bytes are not a message.
QByteArray record(char format, const QByteArray &type, const QByteArray &payload)
{
    QByteArray message(1, char(0xc0 | format));
    message.append(char(type.size()));
    for (int shift = 24; shift >= 0; shift -= 8)
        message.append(char(payload.size() >> shift));
    return message + type + payload;
}

QByteArray tagBytes(uint8_t shape, const QByteArray &input)
{
    switch (shape % 6) {
    case 0:
        return record(1, "U", input);
    case 1:
        return record(1, "T", QByteArrayLiteral("\2en") + input);
    case 2:
        return record(2, "text/vcard", input);
    case 3:
        return record(1, "Sp", record(1, "U", input));
    case 4:
        return record(3, "https:", input);
    default:
        return input;
    }
}

Circumstances circumstances(uint8_t first, uint8_t second)
{
    const QStringList all{QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")};
    Circumstances found;
    found.handlers = all.mid(0, first % 4);
    if (first & 0x80) // The same application in another role
        found.handlers.append(found.handlers);
    const int chosen = (first >> 2) % 8 - 1;
    found.inFront = chosen < found.handlers.size() ? chosen : -1;
    found.desktop = second & 1 ? QStringLiteral("desktop") : QString();
    found.wantsToBeAsked = second & 2;
    found.isLocked = second & 4;
    return found;
}

// Nothing that acts by being opened, or may mean something else than it shows.
bool mayGoUnasked(const TagContent &content, bool isInFront)
{
    const TagRecord &only = content.records.constFirst();
    if (content.records.size() != 1 || !only.isUnderstood)
        return false;
    if (only.kind != TagRecord::Uri)
        return only.kind == TagRecord::Text || only.kind == TagRecord::ContactCard;
    const QString scheme = schemeOf(only.text);
    return isInFront && (scheme == QLatin1String("http") || scheme == QLatin1String("https")) && only.link &&
           only.link->suspicion == Link::None && !only.link->host.isEmpty();
}

void checkForward(const Decision &decision, const TagContent &content, const Circumstances &given)
{
    require(!given.wantsToBeAsked && !given.isLocked && content.isWellFormed && !content.records.isEmpty());
    require(decision.applications.size() == 1);
    const QString chosen = decision.applications.constFirst();
    require(given.handlers.contains(chosen));
    const bool isInFront = given.inFront >= 0;
    require(!isInFront || chosen == given.handlers.at(given.inFront));
    require(mayGoUnasked(content, isInFront));
}

void checkQuestion(const Decision &decision, const TagContent &content, const Circumstances &given)
{
    require(content.isWellFormed && !content.records.isEmpty() && !decision.applications.isEmpty());
    for (const QString &application : decision.applications) {
        require(decision.applications.count(application) == 1);
        require(given.handlers.contains(application) ||
                (given.handlers.isEmpty() && application == given.desktop));
    }
    if (given.inFront >= 0)
        require(decision.applications.constFirst() == given.handlers.at(given.inFront));
    if (!decision.hasDirectAction)
        return;
    require(!given.desktop.isEmpty() && content.records.constFirst().kind == TagRecord::Uri);
    const QString uri = content.records.constFirst().text;
    if (schemeOf(uri) == QLatin1String("sms"))
        return;
    require(schemeOf(uri) == QLatin1String("tel") || schemeOf(uri) == QLatin1String("callto"));
    // A service code can change settings of the phone.
    const QString number = QString::fromUtf8(QByteArray::fromPercentEncoding(uri.toUtf8()));
    require(!number.contains(u'*') && !number.contains(u'#'));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // The decoder logs every broken message.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 3)
        return 0;
    const TagContent content = readTag(tagBytes(data[0], inputBytes(data + 3, size - 3)));
    const Circumstances given = circumstances(data[1], data[2]);
    const Decision decision = decide(content, given);
    switch (decision.outcome) {
    case Decision::Refuse:
        require(!content.isWellFormed || (given.handlers.isEmpty() && given.desktop.isEmpty()));
        break;
    case Decision::AcceptEmpty:
        require(content.isWellFormed && content.records.isEmpty());
        break;
    case Decision::Forward:
        checkForward(decision, content, given);
        break;
    case Decision::Ask:
        checkQuestion(decision, content, given);
        break;
    }
    return 0;
}
