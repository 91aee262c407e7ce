// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/tagquestion.h"

#include <QLocale>
#include <QStringDecoder>

#include "core/foreignname.h"
#include "core/link.h"
#include "core/notices.h"
#include "core/phoneuri.h"

namespace {

constexpr qsizetype mostOthers = 3; // records beside the first that are named

struct Words
{
    const char *title;
    const char *yes;
    const char *direct;
};

Words wordsFor(Question::Kind kind)
{
    switch (kind) {
    case Question::Link:
        return {"qtn_nfc_tags_url_tit", "qtn_nfc_tags_view", nullptr};
    case Question::Number:
        return {"qtn_nfc_tags_contact_tit", "qtn_nfc_tags_view", "qtn_comm_call"};
    case Question::Message:
        return {"qtn_nfc_tags_sms_tit", "qtn_nfc_tags_view", "qtn_comm_send"};
    case Question::Text:
        return {"qtn_nfc_tags_text_tit", "qtn_nfc_tags_view", nullptr};
    case Question::ContactCard:
        return {"qtn_nfc_tags_contact_tit", "qtn_nfc_tags_view", nullptr};
    case Question::StoreLink:
        return {"qtn_nfc_tags_store_tit", "qtn_nfc_tags_view", nullptr};
    default:
        return {"qtn_nfc_tags_gen_tit", "qtn_nfc_tags_open", nullptr};
    }
}

// The text of a record without a dialog of its own, if it has any.
QString plainText(const QByteArray &payload)
{
    constexpr qsizetype most = 1000;
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(payload);
    if (decoder.hasError() || text.contains(QChar(0)))
        return {};
    return text.size() > most ? text.left(most) + QChar(0x2026) : text;
}

QString shownData(const TagRecord &record)
{
    return record.kind == TagRecord::Other ? plainText(record.payload) : record.text;
}

// A record in a few words, beside others.
QString summary(const TagRecord &record)
{
    return foreignName(record.text.isEmpty() ? record.type : record.text, QStringLiteral("?"));
}

QString typeNote(const TagRecord &record)
{
    const qsizetype bytes = record.payload.size();
    // In one step: the type is the tag's, and may look like a placeholder.
    return qtTrId("qtn_nfc_tags_type", int(bytes)).arg(summary(record), QLocale().toString(bytes));
}

QString suspicionNote(Link::Suspicion suspicion)
{
    switch (suspicion) {
    case Link::NoHost:
        return qtTrId("qtn_nfc_link_nohost");
    case Link::UserInfo:
        return qtTrId("qtn_nfc_link_user");
    case Link::Disguised:
        return qtTrId("qtn_nfc_link_disguised");
    case Link::None:
        break;
    }
    return {};
}

QStringList linkNotes(const Link &link)
{
    constexpr qsizetype longestHost = 40;
    QStringList notes;
    if (!link.host.isEmpty())
        notes.append(qtTrId("qtn_nfc_link_host").arg(leftToRight(shortHost(link, longestHost))));
    if (link.suspicion != Link::None)
        notes.append(suspicionNote(link.suspicion));
    if (!link.isEncrypted)
        notes.append(qtTrId("qtn_nfc_link_plain"));
    return notes;
}

QStringList phoneNotes(const QString &uri)
{
    const QString scheme = schemeOf(uri);
    if (scheme == QLatin1String("tel") || scheme == QLatin1String("callto"))
        return {isServiceCode(uri) ? qtTrId("qtn_nfc_number_code") : qtTrId("qtn_nfc_number")};
    if (scheme != QLatin1String("sms"))
        return {};
    QStringList notes;
    if (receivers(uri) > 1)
        notes.append(qtTrId("qtn_nfc_message_receivers", int(receivers(uri))).arg(receivers(uri)));
    if (!isShownWhole(uri))
        notes.append(qtTrId("qtn_nfc_message_more"));
    return notes;
}

QStringList recordNotes(const TagRecord &record)
{
    if (record.link)
        return linkNotes(*record.link);
    if (record.kind == TagRecord::Uri)
        return phoneNotes(record.text);
    if (record.kind == TagRecord::StoreLink)
        return {qtTrId("qtn_nfc_store_link")};
    return record.kind == TagRecord::Other ? QStringList(typeNote(record)) : QStringList();
}

QStringList notes(const TagContent &content)
{
    const TagRecord &record = content.records.constFirst();
    QStringList notes = recordNotes(record);
    QStringList others;
    for (const TagRecord &other : content.records.mid(1, mostOthers))
        others.append(summary(other));
    if (content.records.size() > mostOthers + 1)
        others.append(QChar(0x2026));
    if (!others.isEmpty())
        notes.append(qtTrId("qtn_nfc_tags_more").arg(others.join(QStringLiteral(", "))));
    if (!record.isUnderstood)
        notes.append(qtTrId("qtn_nfc_tags_unknown_more"));
    return notes;
}

} // namespace

Question tagQuestion(const TagContent &content, const Decision &decision)
{
    const Words words = wordsFor(decision.question);
    const TagRecord &record = content.records.constFirst();
    Question question;
    question.kind = decision.question;
    question.title = qtTrId(words.title);
    question.notes = notes(content);
    question.data = shownData(record);
    question.yes = qtTrId(words.yes);
    if (decision.hasDirectAction)
        question.direct = qtTrId(words.direct);
    question.no = qtTrId("qtn_nfc_tags_discard");
    if (question.kind == Question::OtherContent)
        question.applications = decision.applications;
    question.content = record;
    return question;
}

Question contentNotice(const TagContent &content, const Decision &decision)
{
    Question shown = notice(qtTrId(wordsFor(decision.question).title), {});
    shown.notes = notes(content);
    shown.data = content.records.constFirst().text;
    return shown;
}
