// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcforeigntext.h"

#include <algorithm>

#include <QStringList>
#include <QTextBoundaryFinder>

#include "support/foreigntext.h"

namespace ConnUi {

namespace {

constexpr qsizetype mostCharacters = 64;
constexpr qsizetype longestEnd = 20; // of what is cut in its middle
constexpr qsizetype mostMarks = 4;   // on one letter, in every script there is
constexpr QChar ellipsis(0x2026);
constexpr QChar leftToRightIsolate(0x2066);
constexpr QChar firstStrongIsolate(0x2068);
constexpr QChar popDirectionalIsolate(0x2069);

// As users see them: a letter with its marks, an emoji with its parts.
QStringList characters(const QString &text)
{
    QStringList found;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype from = 0, to = finder.toNextBoundary(); to > 0; from = to, to = finder.toNextBoundary())
        found.append(text.mid(from, to - from));
    return found;
}

// More marks than any script has would paint over the lines around them.
QString withFewMarks(const QString &character)
{
    QString kept;
    qsizetype marks = 0;
    for (const QChar unit : character)
        if (!unit.isMark() || ++marks <= mostMarks)
            kept.append(unit);
    return kept;
}

QString inShort(const QStringList &text)
{
    if (text.size() <= mostCharacters)
        return text.join(QString());
    // A file's extension, if it is one that can be seen whole.
    const qsizetype dot = text.lastIndexOf(QLatin1String("."));
    const qsizetype extension = dot > 0 ? text.size() - dot : 0;
    const qsizetype end = extension > longestEnd ? longestEnd : qMax(longestEnd / 2, extension);
    const QStringList front = text.mid(0, mostCharacters - end - 1);
    return front.join(QString()) + ellipsis + text.mid(text.size() - end).join(QString());
}

bool runsFromRightToLeft(const QString &text)
{
    const QList<uint> points = text.toUcs4();
    return std::any_of(points.cbegin(), points.cend(), [](uint point) {
        const QChar::Direction direction = QChar::direction(point);
        return direction == QChar::DirR || direction == QChar::DirAL || direction == QChar::DirAN;
    });
}

} // namespace

QString foreignText(const QString &text)
{
    return Support::drawableForeignText(text);
}

QString foreignName(const QString &name, const QString &fallback)
{
    QString line = foreignText(name.trimmed());
    // The marks that isolate a program's own number isolate nothing here.
    for (const QChar steering : {leftToRightIsolate, popDirectionalIsolate})
        line.replace(steering, QChar::ReplacementCharacter);
    QStringList text = characters(line.simplified());
    for (QString &character : text)
        character = withFewMarks(character);
    QString shortened = inShort(text);
    // The characters around one decide where QTextBoundaryFinder sees its limits, and they have changed.
    while (characters(shortened).size() > mostCharacters)
        shortened = inShort(characters(shortened));
    if (shortened.isEmpty())
        return fallback;
    return runsFromRightToLeft(shortened) ? firstStrongIsolate + shortened + popDirectionalIsolate
                                          : shortened;
}

QString leftToRight(const QString &text)
{
    return runsFromRightToLeft(text) ? leftToRightIsolate + text + popDirectionalIsolate : text;
}

} // namespace ConnUi
