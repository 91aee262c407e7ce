// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
import org.connui.nfc

Sheet {
    id: sheet

    readonly property DeliveryRequest request: agent.requests.first as DeliveryRequest
    readonly property NfcAgent agent: NfcAgent { adapter: NfcAdapter {} }

    subject: request?.title ?? ""
    content: request?.text ?? ""
    visible: request !== null
    onAnswered: request.reject()
}
