// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "applicationsfolder.h"

#include <QDir>
#include <QFile>

namespace {

const QDir folder(QStringLiteral("/usr/share/applications"));

void clear()
{
    const QStringList entries = folder.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &entry : entries)
        QFile::remove(folder.filePath(entry));
}

} // namespace

ApplicationsFolder::ApplicationsFolder()
{
    if (!qEnvironmentVariableIsSet("CONNUI_OWN_APPLICATIONS"))
        qFatal("ApplicationsFolder: not under with-applications");
    clear();
}

ApplicationsFolder::~ApplicationsFolder()
{
    clear();
}

void ApplicationsFolder::install(const QString &id, const QString &name, const QString &icon) const
{
    QByteArray content = "[Desktop Entry]\nType=Application\nExec=/bin/true %u\n";
    if (!name.isEmpty())
        content += "Name=" + name.toUtf8() + '\n';
    if (!icon.isEmpty())
        content += "Icon=" + icon.toUtf8() + '\n';
    write(id, content);
}

void ApplicationsFolder::write(const QString &id, const QByteArray &content) const
{
    QFile file(folder.filePath(id + QStringLiteral(".desktop")));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("ApplicationsFolder: unable to write %s", qUtf8Printable(file.fileName()));
}
