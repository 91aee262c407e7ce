// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
import org.connui.nfc.bare

Sheet {
    id: sheet

    readonly property BareAgent agent: BareAgent {}

    subject: agent.content.slice(0, 64)
    content: agent.content
    visible: agent.content !== ""
    onAnswered: agent.reject()
}
