// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "application.h"

#include <QTextStream>

Application::Application(QObject *parent) : QDBusAbstractAdaptor(parent) {}

void Application::launch()
{
    QTextStream(stdout) << "launched" << Qt::endl;
}
