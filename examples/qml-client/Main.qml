// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import org.connui.nfc

// A phone with nothing on its screen but the questions of the NFC daemon.
ApplicationWindow {
    id: phone

    readonly property NfcRequest request: agent.requests.first
    readonly property DeliveryRequest tag: request as DeliveryRequest
    readonly property SharingRequest sharing: request as SharingRequest

    // What need not be asked is done at once; a notice says why nothing opens.
    function begin() {
        const outcome = (request as DeliveryRequest)?.outcome ?? DeliveryRequest.Ask
        guard.restart()
        applications.currentIndex = 0
        if (outcome !== DeliveryRequest.Ask)
            notice.text = [qsTr("The phone cannot open this tag."), qsTr("There is nothing on this tag."), ""][outcome]
        if (outcome === DeliveryRequest.Refuse)
            request.reject()
        else if (outcome !== DeliveryRequest.Ask)
            request.accept()
    }

    function question() {
        if (request instanceof PairingRequest)
            return qsTr("Pair with this device?")
        if (request instanceof ConnectionRequest)
            return request.disconnects ? qsTr("End the connection?") : qsTr("Connect to this device?")
        if (sharing)
            return sharing.selects ? qsTr("Choose what to share?") : qsTr("Share by touch?")
        return [qsTr("Open this web link?"), qsTr("Phone number on tag"), qsTr("Text message on tag"),
                qsTr("Text on tag"), qsTr("Contact on tag"), qsTr("Store link on tag"),
                qsTr("Content of tag")][tag?.kind ?? DeliveryRequest.OtherContent]
    }

    function notes() {
        const pin = (request as PairingRequest)?.pin
        return [
            pin ? qsTr("PIN: %1").arg(pin) : "",
            sharing?.resources.length > 1 ? qsTr("and %n more", "", sharing.resources.length - 1) : "",
            tag?.suspicious ? qsTr("This link hides where it leads.") : "",
            tag?.host && !tag.encrypted ? qsTr("The connection is not encrypted.") : "",
            tag?.more ? qsTr("There is more on this tag.") : "",
        ].filter(note => note).join("\n")
    }

    width: 480
    height: 854
    visible: true
    font.pixelSize: 20
    onRequestChanged: begin()

    NfcAdapter { id: nfc }

    NfcAgent {
        id: agent
        adapter: nfc
        onTouched: status => notice.text = status === NfcAgent.Ok ? "" : qsTr("The phone cannot read this tag.")
    }

    // A tap that was meant for something else does not answer: nobody has read a question that is this new.
    Timer { id: guard; interval: 500 }

    ColumnLayout {
        anchors { fill: parent; margins: 24 }
        Switch {
            text: qsTr("NFC")
            enabled: nfc.available
            checked: nfc.powered
            onToggled: nfc.powered = checked
        }
        Label {
            id: notice
            Layout.fillWidth: true
            Layout.fillHeight: true
            wrapMode: Text.Wrap
            text: agent.registered ? qsTr("Hold a tag against the phone.") : ""
        }
    }

    Shortcut {
        sequences: ["Escape", "Back"]
        enabled: phone.request !== null && !guard.running
        onActivated: phone.request.reject()
    }

    Popup {
        y: phone.height - height
        width: phone.width
        height: content.implicitHeight + 2 * padding
        padding: 24
        modal: true
        closePolicy: Popup.NoAutoClose
        visible: phone.request !== null

        // The words of others are never rich text, take a few lines at most, and leave the buttons where they are.
        component ForeignLabel: Label {
            Layout.fillWidth: true
            visible: text !== ""
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            elide: Text.ElideRight
        }

        component Choice: Button { Layout.fillWidth: true; Layout.preferredHeight: 56 }

        ColumnLayout {
            id: content
            width: parent.width
            spacing: 12
            Label { text: phone.question(); Layout.fillWidth: true; wrapMode: Text.Wrap }
            ForeignLabel {
                text: phone.tag?.text && !phone.tag.host ? "" : phone.request?.title ?? ""
                maximumLineCount: 2
                font { bold: true; pixelSize: 26 }
            }
            ForeignLabel { text: phone.tag?.text ?? ""; maximumLineCount: 6 }
            ForeignLabel { text: phone.notes(); maximumLineCount: 4 }
            ComboBox {
                id: applications
                Layout.fillWidth: true
                Layout.preferredHeight: 56
                visible: count > 0
                model: phone.tag?.handlers ?? []
                textRole: "name"
            }
            RowLayout {
                enabled: !guard.running
                Choice { text: phone.tag ? qsTr("Discard") : qsTr("Cancel"); onClicked: phone.request.reject() }
                Choice {
                    text: phone.tag?.kind === DeliveryRequest.Message ? qsTr("Send") : qsTr("Call")
                    visible: phone.tag?.actionable ?? false
                    onClicked: phone.tag.act()
                }
                Choice {
                    highlighted: true
                    text: phone.tag ? qsTr("Open") : qsTr("Allow")
                    onClicked: phone.tag ? phone.tag.acceptWith(phone.tag.handlers[applications.currentIndex])
                                         : phone.request.accept()
                }
            }
        }
    }
}
