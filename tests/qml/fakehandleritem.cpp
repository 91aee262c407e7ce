// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "fakehandleritem.h"

#include <QFile>

void FakeHandlerItem::install(const QString &application, const QString &lines)
{
    applications.write(application, "[Desktop Entry]\nType=Application\n" + lines.toUtf8() + '\n');
}

void FakeHandlerItem::makeDefault(const QString &application, const QString &type)
{
    QFile file(qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/mimeapps.list"));
    const QString text = QStringLiteral("[Default Applications]\n%1=%2.desktop\n").arg(type, application);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        qFatal("cannot write %s", qUtf8Printable(file.fileName()));
}

void FakeHandlerItem::start()
{
    handler.start();
}

void FakeHandlerItem::kill()
{
    handler.kill();
}

void FakeHandlerItem::hold(const QString &member)
{
    handler.hold(member);
}

void FakeHandlerItem::release(const QString &member)
{
    handler.release(member);
}

int FakeHandlerItem::calls(const QString &member)
{
    return int(handler.calls(member).size());
}
