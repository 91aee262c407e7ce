// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TEST_UNMATCHEDCALLS_H
#define CONNUI_TEST_UNMATCHEDCALLS_H

#include <QRegularExpression>
#include <QTest>

/**
 * Fails the running test on each warning but those of QtDBus about a call whose arguments match no slot. The
 * caller gets an error for it as well. Qt 6.4 has no such warning, Qt 6.8 three for each call.
 */
inline void failOnWarningsExceptOfUnmatchedCalls()
{
    QTest::failOnWarning(QRegularExpression(
        QStringLiteral("^(?!QDBusConnection: couldn't handle call to \\w+, no slot matched$|"
                       "Could not find slot \\w+(::\\w+)*$)")));
}

#endif
