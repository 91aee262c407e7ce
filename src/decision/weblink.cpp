// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "decision/weblink.h"

#include <algorithm>
#include <memory>
#include <unicode/uspoof.h>

#include <QRegularExpression>
#include <QStringList>
#include <QUrl>

#include "decision/publicsuffixes.h"

namespace ConnUi {

namespace {

// Unicode's own rules (UTS 39) for what may stand in a name without being taken for something else.
std::unique_ptr<USpoofChecker, void (*)(USpoofChecker *)> newChecker()
{
    UErrorCode status = U_ZERO_ERROR;
    USpoofChecker *checker = uspoof_open(&status);
    uspoof_setRestrictionLevel(checker, USPOOF_HIGHLY_RESTRICTIVE);
    uspoof_setAllowedChars(checker, uspoof_getRecommendedSet(&status), &status);
    uspoof_setChecks(checker,
                     USPOOF_RESTRICTION_LEVEL | USPOOF_CHAR_LIMIT | USPOOF_INVISIBLE | USPOOF_MIXED_NUMBERS |
                         USPOOF_HIDDEN_OVERLAY,
                     &status);
    return {checker, uspoof_close};
}

bool isAscii(const QString &text)
{
    return std::all_of(
        text.cbegin(), text.cend(), [](QChar character) { return character.unicode() < 0x80; });
}

// Whether the whole of a label looks like another one in plain letters.
bool looksPlain(const USpoofChecker *checker, const QString &label)
{
    constexpr int most = 256;
    UChar skeleton[most];
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = uspoof_getSkeleton(checker, 0, reinterpret_cast<const UChar *>(label.utf16()),
                                              int32_t(label.size()), skeleton, most, &status);
    return U_FAILURE(status) || isAscii(QString::fromUtf16(skeleton, length));
}

QString shownLabel(const QString &ascii)
{
    const QString label = QUrl::fromAce(ascii.toLatin1(), QUrl::IgnoreIDNWhitelist);
    if (isAscii(label))
        return ascii;
    static const auto checker = newChecker();
    UErrorCode status = U_ZERO_ERROR;
    const int32_t problems = uspoof_check2(checker.get(), reinterpret_cast<const UChar *>(label.utf16()),
                                           int32_t(label.size()), nullptr, &status);
    return U_FAILURE(status) || problems != 0 || looksPlain(checker.get(), label) ? ascii : label;
}

QString shownHost(const QString &ascii)
{
    QStringList labels = ascii.split(QLatin1Char('.'));
    for (QString &label : labels)
        label = shownLabel(label);
    return labels.join(QLatin1Char('.'));
}

QString domainOf(const QString &ascii)
{
    static const QRegularExpression address(QStringLiteral(":|\\A[0-9.]+\\z"));
    if (ascii.contains(address))
        return ascii;
    QByteArray name = ascii.toLatin1();
    while (name.endsWith('.'))
        name.chop(1);
    return QString::fromLatin1(registrableDomain(name));
}

// The text between the slashes and the path, as it is written.
struct Authority
{
    QString text;
    qsizetype hostPosition = -1; // in the whole link
    QString host;
};

Authority writtenAuthority(const QString &uri)
{
    static const QRegularExpression pattern(QStringLiteral("^[^:]*://([^/?#]*)"));
    static const QRegularExpression port(QStringLiteral(":[0-9]*\\z"));
    const QRegularExpressionMatch match = pattern.match(uri);
    const QString text = match.captured(1);
    const qsizetype host = text.lastIndexOf(QLatin1Char('@')) + 1;
    return {text, match.capturedStart(1) + host, text.mid(host).remove(port)};
}

bool isWrittenPlainly(const QString &writtenHost, const QString &ascii)
{
    QString host = writtenHost.toLower();
    if (host.startsWith(QLatin1Char('[')) && host.endsWith(QLatin1Char(']')))
        host = host.mid(1, host.size() - 2);
    return host == ascii || host == QUrl::fromAce(ascii.toLatin1(), QUrl::IgnoreIDNWhitelist);
}

// Returns the length of the end of the host that has as many labels as the domain.
qsizetype lengthOfDomain(const QString &host, const QString &domain)
{
    qsizetype start = host.size();
    while (start > 0 && host.at(start - 1) == QLatin1Char('.'))
        --start;
    for (qsizetype labels = domain.count(QLatin1Char('.')) + 1; labels > 0 && start > 0; --labels)
        start = host.lastIndexOf(QLatin1Char('.'), start - 1);
    return host.size() - start - 1;
}

bool hasOddCharacters(const QString &uri)
{
    return std::any_of(
        uri.cbegin(), uri.cend(),
        [](QChar character) {
            return character == QLatin1Char('\\') || character.isSpace() || !character.isPrint() ||
                   character.category() == QChar::Other_Format || character == QChar::ReplacementCharacter;
        });
}

NfcLink::Suspicion suspicionOf(const QString &uri, const QUrl &url, const Authority &authority)
{
    if (!url.isValid() || url.host().isEmpty())
        return NfcLink::NoHost;
    if (hasOddCharacters(uri))
        return NfcLink::Disguised;
    if (authority.text.contains(QLatin1Char('@')))
        return NfcLink::UserInfo;
    return isWrittenPlainly(authority.host, url.host(QUrl::FullyEncoded)) ? NfcLink::NotSuspicious
                                                                          : NfcLink::Disguised;
}

} // namespace

WebLink readWebLink(const QString &uri)
{
    const QUrl url(uri);
    WebLink link;
    link.isEncrypted = url.scheme() == QLatin1String("https");
    const Authority authority = writtenAuthority(uri);
    link.suspicion = suspicionOf(uri, url, authority);
    if (link.suspicion == NfcLink::NoHost)
        return link;
    const QString ascii = url.host(QUrl::FullyEncoded);
    link.host = shownHost(ascii);
    const QString domain = domainOf(ascii);
    link.domain = shownHost(domain);
    // Where programs may disagree, one place must not look more trustworthy than another.
    if (hasOddCharacters(uri))
        return link;
    const bool isCut = domain != ascii && isWrittenPlainly(authority.host, ascii);
    link.domainLength = isCut ? lengthOfDomain(authority.host, domain) : authority.host.size();
    link.domainPosition = authority.hostPosition + authority.host.size() - link.domainLength;
    return link;
}

} // namespace ConnUi
