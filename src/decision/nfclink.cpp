// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfclink.h"

#include <QHash>
#include <QRegularExpression>
#include <QSharedData>

#include "decision/phoneuri.h"
#include "decision/weblink.h"

namespace ConnUi {

class NfcLinkPrivate : public QSharedData
{
public:
    QString uri;
    QString scheme;
    NfcLink::Kind kind = NfcLink::Other;
    WebLink web;
};

namespace {

QString schemeOf(const QString &uri)
{
    // RFC 3986, 3.1.
    static const QRegularExpression scheme(QStringLiteral("^([A-Za-z][A-Za-z0-9+.-]*):"));
    return scheme.match(uri).captured(1);
}

NfcLink::Kind kindOf(const QString &scheme)
{
    static const QHash<QString, NfcLink::Kind> kinds = {
        {QStringLiteral("http"), NfcLink::Web},    {QStringLiteral("https"), NfcLink::Web},
        {QStringLiteral("tel"), NfcLink::Number},  {QStringLiteral("callto"), NfcLink::Number},
        {QStringLiteral("sms"), NfcLink::Message},
    };
    return kinds.value(scheme, NfcLink::Other);
}

} // namespace

NfcLink::NfcLink() : d(new NfcLinkPrivate) {}

NfcLink::NfcLink(const QString &uri) : NfcLink()
{
    const QString trimmed = uri.trimmed();
    const QString written = schemeOf(trimmed);
    d->scheme = written.isEmpty() ? QStringLiteral("http") : written.toLower();
    d->uri = written.isEmpty() ? QLatin1String("http://") + trimmed : d->scheme + trimmed.mid(written.size());
    d->kind = kindOf(d->scheme);
    if (d->kind == Web)
        d->web = readWebLink(d->uri);
}

NfcLink::NfcLink(const NfcLink &other) = default;

NfcLink &NfcLink::operator=(const NfcLink &other) = default;

NfcLink::~NfcLink() = default;

QString NfcLink::uri() const
{
    return d->uri;
}

QString NfcLink::scheme() const
{
    return d->scheme;
}

NfcLink::Kind NfcLink::kind() const
{
    return d->kind;
}

QString NfcLink::host() const
{
    return d->web.host;
}

QString NfcLink::domain() const
{
    return d->web.domain;
}

qsizetype NfcLink::domainPosition() const
{
    return d->web.domainPosition;
}

qsizetype NfcLink::domainLength() const
{
    return d->web.domainLength;
}

QString NfcLink::shortHost(int length) const
{
    const qsizetype most = qMax<qsizetype>(length, domain().size() + 1);
    return host().size() <= most ? host() : QChar(0x2026) + host().right(most - 1);
}

bool NfcLink::isEncrypted() const
{
    return d->web.isEncrypted;
}

NfcLink::Suspicion NfcLink::suspicion() const
{
    return d->web.suspicion;
}

bool NfcLink::isPlainNumber() const
{
    return d->kind == Number && ConnUi::isPlainNumber(d->uri);
}

bool NfcLink::isServiceCode() const
{
    return d->kind == Number && ConnUi::isServiceCode(d->uri);
}

int NfcLink::receiverCount() const
{
    return d->kind == Message ? int(receivers(d->uri)) : 0;
}

bool NfcLink::isShownWhole() const
{
    return d->kind != Message || ConnUi::isShownWhole(d->uri);
}

} // namespace ConnUi
