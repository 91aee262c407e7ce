// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A question about a tag, the same for both sides.
ApplicationWindow {
    id: sheet

    property string subject
    property string content

    signal answered

    width: 480
    height: 854

    ColumnLayout {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 24 }
        Label { text: sheet.subject; font.bold: true; Layout.fillWidth: true; textFormat: Text.PlainText; maximumLineCount: 2; elide: Text.ElideRight }
        Label { text: sheet.content; Layout.fillWidth: true; textFormat: Text.PlainText; maximumLineCount: 6; wrapMode: Text.Wrap }
        RowLayout {
            Button { text: "Discard"; onClicked: sheet.answered() }
            Button { text: "Open"; Layout.fillWidth: true; highlighted: true }
        }
    }
}
