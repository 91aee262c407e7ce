// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcdeliverydecision.h"

#include <QSharedData>

namespace ConnUi {

class NfcDeliveryDecisionPrivate : public QSharedData
{
public:
    NfcTagContent content;
    QStringList handlers;
    int inFront = -1;
    QString desktop; // the application that the desktop opens the first record's link with
    bool wantsToBeAsked = true;
    bool isLocked = false;
};

namespace {

using Circumstances = NfcDeliveryDecisionPrivate;

struct Decision
{
    NfcDeliveryDecision::Outcome outcome = NfcDeliveryDecision::Refuse;
    QStringList applications = {};
    NfcDeliveryDecision::Question question = NfcDeliveryDecision::OtherContent;
    bool hasDirectAction = false;
};

// A message of one record that is only shown, whatever it says. A call or a message costs money, and what
// other data does is up to the application.
bool isHarmless(const QList<NfcTagRecord> &records)
{
    const NfcTagRecord &record = records.constFirst();
    if (records.size() > 1 || !record.isUnderstood())
        return false;
    if (record.kind() == NfcTagRecord::Uri)
        return record.link().kind() == NfcLink::Web && record.link().suspicion() == NfcLink::NotSuspicious;
    return record.kind() == NfcTagRecord::Text || record.kind() == NfcTagRecord::ContactCard;
}

// The application that gets it when the user is not asked; empty when it is not clear which one the user
// means. A link leads anywhere, so only the application that the user is looking at may follow it.
QString unaskedApplication(const NfcTagRecord &record, const Circumstances &circumstances)
{
    if (circumstances.inFront >= 0)
        return circumstances.handlers.value(circumstances.inFront);
    return record.kind() != NfcTagRecord::Uri && circumstances.handlers.size() == 1
               ? circumstances.handlers.constFirst()
               : QString();
}

NfcDeliveryDecision::Question questionAboutLink(NfcLink::Kind kind, bool hasDirectAction)
{
    switch (kind) {
    case NfcLink::Web:
        return NfcDeliveryDecision::Link;
    case NfcLink::Number:
        return hasDirectAction ? NfcDeliveryDecision::Number : NfcDeliveryDecision::OtherContent;
    case NfcLink::Message:
        return hasDirectAction ? NfcDeliveryDecision::Message : NfcDeliveryDecision::OtherContent;
    case NfcLink::Other:
        break;
    }
    return NfcDeliveryDecision::OtherContent;
}

NfcDeliveryDecision::Question questionAbout(const NfcTagRecord &record, bool hasDirectAction)
{
    switch (record.kind()) {
    case NfcTagRecord::Uri:
        return questionAboutLink(record.link().kind(), hasDirectAction);
    case NfcTagRecord::Text:
        return NfcDeliveryDecision::Text;
    case NfcTagRecord::ContactCard:
        return NfcDeliveryDecision::ContactCard;
    case NfcTagRecord::StoreLink:
        return NfcDeliveryDecision::StoreLink;
    case NfcTagRecord::Other:
        break;
    }
    return NfcDeliveryDecision::OtherContent;
}

bool canActDirectly(const NfcLink &link, const Circumstances &circumstances)
{
    return !circumstances.desktop.isEmpty() && (link.kind() == NfcLink::Message || link.isPlainNumber());
}

// The one in front comes first: it is the one that the user means, if any.
QStringList offeredApplications(const Circumstances &circumstances)
{
    QStringList applications = circumstances.handlers;
    if (circumstances.inFront > 0 && circumstances.inFront < applications.size())
        applications.move(circumstances.inFront, 0);
    applications.removeDuplicates();
    if (applications.isEmpty() && !circumstances.desktop.isEmpty())
        applications.append(circumstances.desktop);
    return applications;
}

Decision decide(const Circumstances &circumstances)
{
    if (!circumstances.content.isWellFormed())
        return {NfcDeliveryDecision::Refuse};
    const QList<NfcTagRecord> records = circumstances.content.records();
    if (records.isEmpty())
        return {NfcDeliveryDecision::AcceptEmpty};
    const QStringList applications = offeredApplications(circumstances);
    if (applications.isEmpty())
        return {NfcDeliveryDecision::Refuse};

    const NfcTagRecord &record = records.constFirst();
    const QString unasked = unaskedApplication(record, circumstances);
    if (isHarmless(records) && !unasked.isNull() && !circumstances.wantsToBeAsked && !circumstances.isLocked)
        return {NfcDeliveryDecision::Forward, {unasked}};
    const bool hasDirectAction = canActDirectly(record.link(), circumstances);
    return {NfcDeliveryDecision::Ask, applications, questionAbout(record, hasDirectAction), hasDirectAction};
}

} // namespace

NfcDeliveryDecision::NfcDeliveryDecision() : d(new NfcDeliveryDecisionPrivate) {}

NfcDeliveryDecision::NfcDeliveryDecision(const NfcTagContent &content) : NfcDeliveryDecision()
{
    d->content = content;
}

NfcDeliveryDecision::NfcDeliveryDecision(const NfcDeliveryDecision &other) = default;

NfcDeliveryDecision &NfcDeliveryDecision::operator=(const NfcDeliveryDecision &other) = default;

NfcDeliveryDecision::~NfcDeliveryDecision() = default;

NfcTagContent NfcDeliveryDecision::content() const
{
    return d->content;
}

QStringList NfcDeliveryDecision::handlers() const
{
    return d->handlers;
}

void NfcDeliveryDecision::setHandlers(const QStringList &ids)
{
    d->handlers = ids;
}

int NfcDeliveryDecision::foregroundHandler() const
{
    return d->inFront;
}

void NfcDeliveryDecision::setForegroundHandler(int index)
{
    d->inFront = index;
}

QString NfcDeliveryDecision::defaultApplication() const
{
    return d->desktop;
}

void NfcDeliveryDecision::setDefaultApplication(const QString &id)
{
    d->desktop = id;
}

bool NfcDeliveryDecision::isConfirmationEnabled() const
{
    return d->wantsToBeAsked;
}

void NfcDeliveryDecision::setConfirmationEnabled(bool enabled)
{
    d->wantsToBeAsked = enabled;
}

bool NfcDeliveryDecision::isSessionLocked() const
{
    return d->isLocked;
}

void NfcDeliveryDecision::setSessionLocked(bool locked)
{
    d->isLocked = locked;
}

NfcDeliveryDecision::Outcome NfcDeliveryDecision::outcome() const
{
    return decide(*d).outcome;
}

QStringList NfcDeliveryDecision::applications() const
{
    return decide(*d).applications;
}

NfcDeliveryDecision::Question NfcDeliveryDecision::question() const
{
    return decide(*d).question;
}

bool NfcDeliveryDecision::hasDirectAction() const
{
    return decide(*d).hasDirectAction;
}

} // namespace ConnUi
