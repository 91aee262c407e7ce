// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <glib.h>
#include <optional>

#include <QRegularExpression>
#include <QString>

#include "cardcharset_p.h"

namespace ConnUi {
namespace {

std::optional<QByteArray> convert(const QByteArray &text, const char *charset)
{
    gsize length = 0;
    char *converted = g_convert(text.constData(), text.size(), "UTF-8", charset, nullptr, &length, nullptr);
    if (!converted)
        return std::nullopt;
    const QByteArray copy(converted, qsizetype(length));
    g_free(converted);
    return copy;
}

} // namespace

bool CardCharset::isKnown(const QByteArray &charset)
{
    static const QRegularExpression known(
        QRegularExpression::anchoredPattern(
            QStringLiteral("iso-8859-[0-9]{1,2}|(windows-|cp)125[0-8]|koi8-[ru]|gb2312|gbk|gb18030|big5|"
                           "shift[_-]jis|euc-jp|iso-2022-jp|euc-kr")),
        QRegularExpression::CaseInsensitiveOption);
    return known.match(QString::fromLatin1(charset)).hasMatch();
}

QByteArray CardCharset::toUtf8(const QByteArray &text, const QByteArray &charset)
{
    if (isKnown(charset))
        if (const auto converted = convert(text, charset.constData()))
            return *converted;
    if (g_utf8_validate(text.constData(), text.size(), nullptr))
        return text;
    // Windows-1252 leaves five bytes undefined, Latin-1 none.
    return convert(text, "WINDOWS-1252").value_or(QString::fromLatin1(text).toUtf8());
}

} // namespace ConnUi
