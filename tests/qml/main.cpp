// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Runs the tests in the file that -input names, with the module from the build tree.
#include <QQmlEngine>
#include <QtQuickTest>

class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine *engine) { engine->addImportPath(QStringLiteral(CONNUI_QML_DIR)); }
};

QUICK_TEST_MAIN_WITH_SETUP(qml, Setup)

#include "main.moc"
