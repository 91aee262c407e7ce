// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "console/touchnews.h"

#include <QHash>

#include <NfcAgent>

#include "console/console.h"

using ConnUi::NfcAgent;

TouchNews::TouchNews(NfcAgent *agent, Console *console) : QObject(agent), console(console)
{
    connect(agent, &NfcAgent::notifyTouch, this, &TouchNews::tell);
}

void TouchNews::tell(const QDBusObjectPath &, int status)
{
    static const QHash<int, QString> texts = {
        {NfcAgent::Ok, QStringLiteral("something touched")},
        {NfcAgent::UnsupportedTagTypeError, QStringLiteral("this kind of tag is not supported")},
        {NfcAgent::MalformedContentError, QStringLiteral("the tag's content is malformed")},
    };
    console->print(texts.value(status, QStringLiteral("the touch failed")));
}
