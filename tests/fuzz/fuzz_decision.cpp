// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads the first three bytes as the circumstances of a touch and the rest as the tag, and stops where
// something is forwarded without a question that must not be, or where a question offers what it must not.
#include <algorithm>

#include <NfcDeliveryDecision>

#include "support.h"

using ConnUi::NfcDeliveryDecision;
using ConnUi::NfcLink;
using ConnUi::NfcTagContent;
using ConnUi::NfcTagRecord;

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

NfcDeliveryDecision decisionAbout(const NfcTagContent &content, uint8_t first, uint8_t second)
{
    const QStringList all{QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")};
    QStringList handlers = all.mid(0, first % 4);
    if (first & 0x80) // The same application in another role
        handlers.append(handlers);
    const int chosen = (first >> 2) % 8 - 1;
    NfcDeliveryDecision decision(content);
    decision.setHandlers(handlers);
    decision.setForegroundHandler(chosen < handlers.size() ? chosen : -1);
    decision.setDefaultApplication(second & 1 ? QStringLiteral("desktop") : QString());
    decision.setConfirmationEnabled(second & 2);
    decision.setSessionLocked(second & 4);
    return decision;
}

// Nothing that acts by being opened, or may mean something else than it shows.
bool mayGoUnasked(const QList<NfcTagRecord> &records, bool isInFront)
{
    const NfcTagRecord &only = records.constFirst();
    if (records.size() != 1 || !only.isUnderstood())
        return false;
    if (only.kind() != NfcTagRecord::Uri)
        return only.kind() == NfcTagRecord::Text || only.kind() == NfcTagRecord::ContactCard;
    const QString scheme = only.link().scheme();
    return isInFront && (scheme == QLatin1String("http") || scheme == QLatin1String("https")) &&
           only.link().suspicion() == NfcLink::NotSuspicious && !only.link().host().isEmpty();
}

void checkForward(const NfcDeliveryDecision &decision)
{
    const QList<NfcTagRecord> records = decision.content().records();
    require(!decision.isConfirmationEnabled() && !decision.isSessionLocked() &&
            decision.content().isWellFormed() && !records.isEmpty());
    require(decision.applications().size() == 1);
    const QString chosen = decision.applications().constFirst();
    require(decision.handlers().contains(chosen));
    const int inFront = decision.foregroundHandler();
    require(inFront < 0 || chosen == decision.handlers().at(inFront));
    require(mayGoUnasked(records, inFront >= 0));
}

void checkApplications(const NfcDeliveryDecision &decision)
{
    const QStringList applications = decision.applications();
    const QStringList handlers = decision.handlers();
    require(!applications.isEmpty());
    for (const QString &application : applications) {
        require(applications.count(application) == 1);
        require(handlers.contains(application) ||
                (handlers.isEmpty() && application == decision.defaultApplication()));
    }
    if (decision.foregroundHandler() >= 0)
        require(applications.constFirst() == handlers.at(decision.foregroundHandler()));
}

void checkQuestion(const NfcDeliveryDecision &decision)
{
    const QList<NfcTagRecord> records = decision.content().records();
    require(decision.content().isWellFormed() && !records.isEmpty());
    checkApplications(decision);
    if (!decision.hasDirectAction())
        return;
    require(!decision.defaultApplication().isEmpty() && records.constFirst().kind() == NfcTagRecord::Uri);
    const QString uri = records.constFirst().text();
    const QString scheme = records.constFirst().link().scheme();
    if (scheme == QLatin1String("sms"))
        return;
    require(scheme == QLatin1String("tel") || scheme == QLatin1String("callto"));
    // A service code can change settings of the phone.
    const QString number = QString::fromUtf8(QByteArray::fromPercentEncoding(uri.toUtf8()));
    require(!number.contains(u'*') && !number.contains(u'#'));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 3)
        return 0;
    const NfcTagContent content(tagBytes(data[0], inputBytes(data + 3, size - 3)));
    const NfcDeliveryDecision decision = decisionAbout(content, data[1], data[2]);
    switch (decision.outcome()) {
    case NfcDeliveryDecision::Refuse:
        require(!content.isWellFormed() ||
                (decision.handlers().isEmpty() && decision.defaultApplication().isEmpty()));
        break;
    case NfcDeliveryDecision::AcceptEmpty:
        require(content.isWellFormed() && content.records().isEmpty());
        break;
    case NfcDeliveryDecision::Forward:
        checkForward(decision);
        break;
    case NfcDeliveryDecision::Ask:
        checkQuestion(decision);
        break;
    }
    return 0;
}
