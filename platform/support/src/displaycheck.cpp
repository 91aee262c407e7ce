// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "support/displaycheck.h"

#include <unistd.h>

#include <QString>

#include "support/commandline.h"

namespace Support {

namespace {

QtMessageHandler otherwise = nullptr;

// The platform plugin's last word; an abort would follow.
void endWithoutDisplay(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type != QtFatalMsg) {
        otherwise(type, context, message);
        return;
    }
    fail(NoDisplay, QStringLiteral("no display: %1").arg(message.section(QLatin1Char('\n'), 0, 0)));
    _exit(NoDisplay);
}

} // namespace

DisplayCheck::DisplayCheck()
{
    otherwise = qInstallMessageHandler(&endWithoutDisplay);
}

DisplayCheck::~DisplayCheck()
{
    qInstallMessageHandler(otherwise);
}

} // namespace Support
