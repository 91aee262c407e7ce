// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "recordtext.h"

#include <QChar>
#include <QList>

using ConnUi::NdefRecord;

namespace {

// The words of a tag must not become lines or commands of the terminal.
bool isHarmless(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    return QChar::isPrint(character) && category != QChar::Separator_Line &&
           category != QChar::Separator_Paragraph;
}

QString oneLine(const QString &text)
{
    QString line;
    const QList<uint> characters = text.toUcs4();
    for (const char32_t character : characters)
        line +=
            isHarmless(character) ? QString::fromUcs4(&character, 1) : QString(QChar::ReplacementCharacter);
    return line;
}

} // namespace

QString recordText(const NdefRecord &record)
{
    if (!record.uri().isEmpty())
        return QStringLiteral("uri %1").arg(oneLine(record.uri()));
    if (!record.text().isEmpty())
        return QStringLiteral("text '%1'").arg(oneLine(record.text()));
    return QStringLiteral("type '%1', %2 bytes")
        .arg(oneLine(QString::fromLatin1(record.type())), QString::number(record.payload().size()));
}
