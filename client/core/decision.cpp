// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/decision.h"

#include <QHash>

#include "core/phoneuri.h"

namespace {

Question::Kind questionAboutLink(const QString &scheme)
{
    static const QHash<QString, Question::Kind> questions = {
        {QStringLiteral("http"), Question::Link},   {QStringLiteral("https"), Question::Link},
        {QStringLiteral("tel"), Question::Number},  {QStringLiteral("callto"), Question::Number},
        {QStringLiteral("sms"), Question::Message},
    };
    return questions.value(scheme, Question::OtherContent);
}

// A message of one record that is only shown, whatever it says. A call or a message costs money, and what
// other data does is up to the application.
bool isHarmless(const TagContent &content)
{
    const TagRecord &record = content.records.constFirst();
    if (content.records.size() > 1 || !record.isUnderstood)
        return false;
    if (record.kind == TagRecord::Uri)
        return record.link && record.link->suspicion == Link::None;
    return record.kind == TagRecord::Text || record.kind == TagRecord::ContactCard;
}

// The application that gets it when the user is not asked; empty when it is not clear which one the user
// means. A link leads anywhere, so only the application that the user is looking at may follow it.
QString unaskedApplication(const TagRecord &record, const Circumstances &circumstances)
{
    if (circumstances.inFront >= 0)
        return circumstances.handlers.value(circumstances.inFront);
    return record.kind != TagRecord::Uri && circumstances.handlers.size() == 1
               ? circumstances.handlers.constFirst()
               : QString();
}

Question::Kind questionAbout(const TagRecord &record, bool hasDirectAction)
{
    switch (record.kind) {
    case TagRecord::Uri: {
        const Question::Kind kind = questionAboutLink(schemeOf(record.text));
        return kind == Question::Link || hasDirectAction ? kind : Question::OtherContent;
    }
    case TagRecord::Text:
        return Question::Text;
    case TagRecord::ContactCard:
        return Question::ContactCard;
    case TagRecord::StoreLink:
        return Question::StoreLink;
    case TagRecord::Other:
        break;
    }
    return Question::OtherContent;
}

bool canActDirectly(const TagRecord &record, const Circumstances &circumstances)
{
    if (record.kind != TagRecord::Uri || circumstances.desktop.isEmpty())
        return false;
    const Question::Kind kind = questionAboutLink(schemeOf(record.text));
    return kind == Question::Message || (kind == Question::Number && isPlainNumber(record.text));
}

// The one in front comes first: it is the one that the user means, if any.
QStringList offeredApplications(const Circumstances &circumstances)
{
    QStringList applications = circumstances.handlers;
    if (circumstances.inFront > 0)
        applications.move(circumstances.inFront, 0);
    applications.removeDuplicates();
    if (applications.isEmpty() && !circumstances.desktop.isEmpty())
        applications.append(circumstances.desktop);
    return applications;
}

} // namespace

Decision decide(const TagContent &content, const Circumstances &circumstances)
{
    if (!content.isWellFormed)
        return {Decision::Refuse};
    if (content.records.isEmpty())
        return {Decision::AcceptEmpty};
    const QStringList applications = offeredApplications(circumstances);
    if (applications.isEmpty())
        return {Decision::Refuse};

    const TagRecord &record = content.records.constFirst();
    const QString unasked = unaskedApplication(record, circumstances);
    if (isHarmless(content) && !unasked.isNull() && !circumstances.wantsToBeAsked && !circumstances.isLocked)
        return {Decision::Forward, {unasked}};
    const bool hasDirectAction = canActDirectly(record, circumstances);
    return {Decision::Ask, applications, questionAbout(record, hasDirectAction), hasDirectAction};
}
