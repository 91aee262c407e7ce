// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "decision/phoneuri.h"

#include <utility>

#include <QRegularExpression>
#include <QStringList>
#include <QUrl>
#include <QUrlQuery>

namespace ConnUi {

namespace {

// Without its scheme and with nothing encoded, the way a dialer reads it.
QString decoded(const QString &uri)
{
    const QByteArray bytes = QByteArray::fromPercentEncoding(uri.section(QLatin1Char(':'), 1).toUtf8());
    // Wide forms of the same signs are the same signs.
    return QString::fromUtf8(bytes).normalized(QString::NormalizationForm_KC);
}

} // namespace

bool isPlainNumber(const QString &uri)
{
    // The number, written as people write it, then parameters such as an extension.
    static const QRegularExpression number(
        QStringLiteral("\\A\\+?[().\\- ]*[0-9][0-9().\\- ]*(;[A-Za-z0-9-]+(=[A-Za-z0-9.+-]*)?)*\\z"));
    return number.match(decoded(uri)).hasMatch();
}

bool isServiceCode(const QString &uri)
{
    return decoded(uri).contains(QLatin1Char('*')) || decoded(uri).contains(QLatin1Char('#'));
}

qsizetype receivers(const QString &uri)
{
    static const QRegularExpression separator(QStringLiteral("[,;]"));
    static const QRegularExpression digit(QStringLiteral("[0-9]"));
    const QString path = decoded(uri.section(QLatin1Char('?'), 0, 0));
    // A parameter of a receiver is not another receiver.
    qsizetype count = 0;
    for (const QString &part : path.split(separator, Qt::SkipEmptyParts))
        count += part.contains(digit) && !part.contains(QLatin1Char('=')) ? 1 : 0;
    return count;
}

bool isShownWhole(const QString &uri)
{
    static const QRegularExpression cutting(QStringLiteral("[&=#]"));
    // The question decodes a link before it takes it apart: such a receiver would end there, or be a host.
    static const QRegularExpression cuttingReceiver(QStringLiteral("\\A//|[?#]"));
    if (decoded(uri.section(QLatin1Char('?'), 0, 0)).contains(cuttingReceiver))
        return false;
    if (uri.contains(QLatin1Char('#')))
        return false;
    const QList<std::pair<QString, QString>> items =
        QUrlQuery(uri.section(QLatin1Char('?'), 1)).queryItems(QUrl::FullyDecoded);
    for (const auto &[key, value] : items)
        if (key != QLatin1String("body") || value.contains(cutting))
            return false;
    return items.size() <= 1;
}

} // namespace ConnUi
