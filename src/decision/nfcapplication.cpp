// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcapplication.h"

#include <QFileInfo>
#include <QSharedData>
#include <QUrl>

#include <ContentAction>

#include "decision/applicationstart.h"
#include "support/keyfile.h"
#include "support/smallfile.h"

using ContentAction::Action;

namespace ConnUi {

class NfcApplicationPrivate : public QSharedData
{
public:
    QString id;
};

namespace {

// Separates a longer form of a text from a shorter one.
constexpr QChar lengthVariantSeparator(0x9c);

QString desktopEntry(const QString &file, const char *key)
{
    Support::KeyFile entries;
    entries.read(Support::readSmallFile(file));
    return entries.localizedValue(QStringLiteral(G_KEY_FILE_DESKTOP_GROUP), QLatin1String(key));
}

} // namespace

NfcApplication::NfcApplication() : d(new NfcApplicationPrivate) {}

NfcApplication::NfcApplication(const QString &id) : NfcApplication()
{
    d->id = id;
}

NfcApplication::NfcApplication(const NfcApplication &other) = default;

NfcApplication &NfcApplication::operator=(const NfcApplication &other) = default;

NfcApplication::~NfcApplication() = default;

QString NfcApplication::id() const
{
    return d->id;
}

QString NfcApplication::desktopFile() const
{
    // The daemon's handlers have ids that somebody else wrote.
    if (d->id.contains(QLatin1Char('/')) || d->id == QLatin1String("..") ||
        d->id.contains(QChar(QChar::Null)))
        return {};
    const QString path = QStringLiteral("/usr/share/applications/%1.desktop").arg(d->id);
    return QFileInfo(path).isFile() ? path : QString();
}

QString NfcApplication::name() const
{
    const QString name = desktopEntry(desktopFile(), G_KEY_FILE_DESKTOP_KEY_NAME);
    return name.isEmpty() ? d->id : name.section(lengthVariantSeparator, 0, 0);
}

QString NfcApplication::icon() const
{
    return desktopEntry(desktopFile(), G_KEY_FILE_DESKTOP_KEY_ICON);
}

NfcApplication NfcApplication::defaultForUri(const QString &uri)
{
    return NfcApplication(Action::defaultActionForScheme(uri).name());
}

void NfcApplication::openUri(const QString &uri)
{
    startApplication(Action::defaultActionForScheme(uri), uri);
}

void NfcApplication::openFile(const QString &path)
{
    const QUrl url = QUrl::fromLocalFile(path);
    startApplication(Action::defaultActionForFile(url), url.toString(QUrl::FullyEncoded));
}

} // namespace ConnUi
