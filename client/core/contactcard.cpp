// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/contactcard.h"

#include <QByteArray>
#include <QFileInfo>
#include <QString>
#include <QTemporaryFile>

#include <ContactExporter>

#include "core/clientlog.h"

std::unique_ptr<QTemporaryFile> cardFile(const QByteArray &card)
{
    auto file = std::make_unique<QTemporaryFile>();
    if (!file->open() || file->write(card) != card.size() || !file->flush())
        qCWarning(clientLog, "Unable to keep the tag's content: %s", qUtf8Printable(file->errorString()));
    return file;
}

QString nameOnCard(const QFileInfo &file)
{
    QString first;
    QString second;
    ConnUi::ContactExporter::resolveContactInfo(file, first, second);
    return QStringLiteral("%1 %2").arg(first, second).trimmed();
}
