// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "decision/publicsuffixes.h"

#include <libpsl.h>
#include <optional>

#include "support/functions.h"

namespace ConnUi {

namespace {

// The functions of libpsl that are called here, each under its own name.
struct PublicSuffixList
{
    decltype(&::psl_builtin) psl_builtin;
    decltype(&::psl_registrable_domain) psl_registrable_domain;
};

const PublicSuffixList *publicSuffixList()
{
    using Support::Symbol;
    static const std::optional<PublicSuffixList> library = Support::loadFunctions<PublicSuffixList>(
        QStringLiteral("libpsl.so.5"), "NfcLink: unable to find the domains of hosts",
        Symbol{"psl_builtin", &PublicSuffixList::psl_builtin},
        Symbol{"psl_registrable_domain", &PublicSuffixList::psl_registrable_domain});
    return library ? &*library : nullptr;
}

} // namespace

QByteArray registrableDomain(const QByteArray &name)
{
    const PublicSuffixList *list = publicSuffixList();
    // The result is a part of the argument.
    const char *domain = list ? list->psl_registrable_domain(list->psl_builtin(), name.constData()) : nullptr;
    return domain ? QByteArray(domain) : name;
}

} // namespace ConnUi
