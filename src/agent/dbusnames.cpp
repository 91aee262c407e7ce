// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "agent/dbusnames.h"

#include <QRegularExpression>

namespace ConnUi::DBusNames {

namespace {

constexpr qsizetype longestName = 255;

bool matches(const QString &name, const QRegularExpression &form)
{
    return name.size() <= longestName && form.match(name).hasMatch();
}

} // namespace

bool isBusName(const QString &name)
{
    static const QRegularExpression wellKnown(
        QStringLiteral("\\A[A-Za-z_-][A-Za-z0-9_-]*(\\.[A-Za-z_-][A-Za-z0-9_-]*)+\\z"));
    static const QRegularExpression unique(QStringLiteral("\\A:[A-Za-z0-9_-]+(\\.[A-Za-z0-9_-]+)+\\z"));
    return matches(name, wellKnown) || matches(name, unique);
}

bool isErrorName(const QString &name)
{
    static const QRegularExpression form(
        QStringLiteral("\\A[A-Za-z_][A-Za-z0-9_]*(\\.[A-Za-z_][A-Za-z0-9_]*)+\\z"));
    return matches(name, form);
}

} // namespace ConnUi::DBusNames
