// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/tagquestion.h"

#include <QList>
#include <QLocale>

#include <NfcDeliveryDecision>
#include <NfcForeignText>
#include <NfcLink>
#include <NfcTagRecord>

#include "core/notices.h"

using ConnUi::NfcDeliveryDecision;
using ConnUi::NfcLink;
using ConnUi::NfcTagRecord;

namespace {

constexpr qsizetype mostOthers = 3; // records beside the first that are named

struct Words
{
    Question::Kind kind;
    const char *title;
    const char *yes;
    const char *direct;
};

Words wordsFor(NfcDeliveryDecision::Question question)
{
    switch (question) {
    case NfcDeliveryDecision::Link:
        return {Question::Link, "qtn_nfc_tags_url_tit", "qtn_nfc_tags_view", nullptr};
    case NfcDeliveryDecision::Number:
        return {Question::Number, "qtn_nfc_tags_contact_tit", "qtn_nfc_tags_view", "qtn_comm_call"};
    case NfcDeliveryDecision::Message:
        return {Question::Message, "qtn_nfc_tags_sms_tit", "qtn_nfc_tags_view", "qtn_comm_send"};
    case NfcDeliveryDecision::Text:
        return {Question::Text, "qtn_nfc_tags_text_tit", "qtn_nfc_tags_view", nullptr};
    case NfcDeliveryDecision::ContactCard:
        return {Question::ContactCard, "qtn_nfc_tags_contact_tit", "qtn_nfc_tags_view", nullptr};
    case NfcDeliveryDecision::StoreLink:
        return {Question::StoreLink, "qtn_nfc_tags_store_tit", "qtn_nfc_tags_view", nullptr};
    case NfcDeliveryDecision::OtherContent:
        break;
    }
    return {Question::OtherContent, "qtn_nfc_tags_gen_tit", "qtn_nfc_tags_open", nullptr};
}

// A record in a few words, beside others.
QString summary(const NfcTagRecord &record)
{
    return ConnUi::foreignName(record.text().isEmpty() ? record.type() : record.text(), QStringLiteral("?"));
}

QString typeNote(const NfcTagRecord &record)
{
    const qsizetype bytes = record.payload().size();
    // In one step: the type is the tag's, and may look like a placeholder.
    return qtTrId("qtn_nfc_tags_type", int(bytes)).arg(summary(record), QLocale().toString(bytes));
}

QString suspicionNote(NfcLink::Suspicion suspicion)
{
    switch (suspicion) {
    case NfcLink::NoHost:
        return qtTrId("qtn_nfc_link_nohost");
    case NfcLink::UserInfo:
        return qtTrId("qtn_nfc_link_user");
    case NfcLink::Disguised:
        return qtTrId("qtn_nfc_link_disguised");
    case NfcLink::NotSuspicious:
        break;
    }
    return {};
}

QStringList linkNotes(const NfcLink &link)
{
    constexpr int longestHost = 40;
    QStringList notes;
    if (!link.host().isEmpty())
        notes.append(qtTrId("qtn_nfc_link_host").arg(ConnUi::leftToRight(link.shortHost(longestHost))));
    if (link.suspicion() != NfcLink::NotSuspicious)
        notes.append(suspicionNote(link.suspicion()));
    if (!link.isEncrypted())
        notes.append(qtTrId("qtn_nfc_link_plain"));
    return notes;
}

QStringList messageNotes(const NfcLink &link)
{
    QStringList notes;
    const int receivers = link.receiverCount();
    if (receivers > 1)
        notes.append(qtTrId("qtn_nfc_message_receivers", receivers).arg(receivers));
    if (!link.isShownWhole())
        notes.append(qtTrId("qtn_nfc_message_more"));
    return notes;
}

QStringList uriNotes(const NfcLink &link)
{
    switch (link.kind()) {
    case NfcLink::Web:
        return linkNotes(link);
    case NfcLink::Number:
        return {link.isServiceCode() ? qtTrId("qtn_nfc_number_code") : qtTrId("qtn_nfc_number")};
    case NfcLink::Message:
        return messageNotes(link);
    case NfcLink::Other:
        break;
    }
    return {};
}

QStringList recordNotes(const NfcTagRecord &record)
{
    if (record.kind() == NfcTagRecord::Uri)
        return uriNotes(record.link());
    if (record.kind() == NfcTagRecord::StoreLink)
        return {qtTrId("qtn_nfc_store_link")};
    return record.kind() == NfcTagRecord::Other ? QStringList(typeNote(record)) : QStringList();
}

QStringList notes(const QList<NfcTagRecord> &records)
{
    const NfcTagRecord &record = records.constFirst();
    QStringList notes = recordNotes(record);
    QStringList others;
    for (const NfcTagRecord &other : records.mid(1, mostOthers))
        others.append(summary(other));
    if (records.size() > mostOthers + 1)
        others.append(QChar(0x2026));
    if (!others.isEmpty())
        notes.append(qtTrId("qtn_nfc_tags_more").arg(others.join(QStringLiteral(", "))));
    if (!record.isUnderstood())
        notes.append(qtTrId("qtn_nfc_tags_unknown_more"));
    return notes;
}

} // namespace

Question tagQuestion(const NfcDeliveryDecision &decision)
{
    const Words words = wordsFor(decision.question());
    const QList<NfcTagRecord> records = decision.content().records();
    Question question;
    question.kind = words.kind;
    question.title = qtTrId(words.title);
    question.notes = notes(records);
    question.data = records.constFirst().displayText();
    question.yes = qtTrId(words.yes);
    if (decision.hasDirectAction())
        question.direct = qtTrId(words.direct);
    question.no = qtTrId("qtn_nfc_tags_discard");
    if (question.kind == Question::OtherContent)
        question.applications = decision.applications();
    question.uri = records.constFirst().link().uri();
    question.card = records.constFirst().payload();
    return question;
}

Question contentNotice(const NfcDeliveryDecision &decision)
{
    const QList<NfcTagRecord> records = decision.content().records();
    Question shown = notice(qtTrId(wordsFor(decision.question()).title), {});
    shown.notes = notes(records);
    shown.data = records.constFirst().text();
    return shown;
}
