// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
import QtQuick
import QtTest
import org.connui.nfc
import org.connui.nfc.tests

TestCase {
    id: test

    property NfcAgent agent

    // Fails on warnings, except about a machine without a policy daemon, and daemons that live for a moment.
    function init() {
        failOnWarning(/^(?!ApplicationTracker: |NfcAdapter(Private)?: )/)
        message.clear()
        viewer.install("viewer", "Name=Viewer\nIcon=viewer-icon")
        viewer.start()
        daemon.start()
        agent = agentType.createObject(test)
        tryCompare(agent, "registered", true)
    }

    function cleanup() {
        nfc.confirmationEnabled = false
        agent?.destroy()
        agent = null
        daemon.kill()
        viewer.kill()
    }

    function deliver(applications) {
        daemon.deliver("/tag", message.bytes, applications)
        tryCompare(agent.requests, "count", 1)
        return agent.requests.first
    }

    function bytes(hex) {
        return new Uint8Array(hex.match(/../g).map(each => parseInt(each, 16))).buffer
    }

    function test_linkSaysWhereItLeads() {
        message.addUri("https://www.example.org/path")
        const tag = deliver(["viewer"])
        verify(tag instanceof DeliveryRequest)
        compare(tag.outcome, DeliveryRequest.Ask)
        compare(tag.kind, DeliveryRequest.Link)
        compare(tag.title, "www.example.org")
        compare(tag.host, "www.example.org")
        compare(tag.uri, "https://www.example.org/path")
        compare(tag.text, "https://www.example.org/path")
        compare([tag.encrypted, tag.suspicious, tag.more, tag.actionable], [true, false, false, false])
    }

    function test_disguisedLinkIsSuspicious() {
        message.addUri("http://bank.example@evil.example/")
        const tag = deliver(["viewer"])
        compare(tag.host, "evil.example")
        compare([tag.encrypted, tag.suspicious], [false, true])
    }

    function test_otherRecordsAreMore() {
        message.addUri("https://www.example.org/")
        message.addText("text/plain", "hello")
        const tag = deliver(["viewer"])
        verify(tag.more)
        compare(tag.records.length, 2)
        compare(tag.records[1].mimeType, "text/plain")
        compare(tag.data.byteLength, message.bytes.byteLength)
    }

    function test_textIsSafeToDraw() {
        message.bytes = bytes("d1010854" + "02656e" + "41e280ae42")
        nfc.confirmationEnabled = true
        const tag = deliver(["viewer"])
        compare(tag.kind, DeliveryRequest.Text)
        compare(tag.text, "A\ufffdB")
        compare(tag.title, "A\ufffdB")
    }

    function test_contentWithoutTextIsNamedByItsType() {
        message.addData("application/x-notes", bytes("00ff"))
        const tag = deliver(["viewer"])
        compare(tag.kind, DeliveryRequest.OtherContent)
        compare(tag.text, "")
        compare(tag.title, "application/x-notes")
    }

    function test_handlersHaveNamesAndIcons() {
        message.addUri("https://www.example.org/")
        const tag = deliver(["viewer", "unknown"])
        compare(tag.handlers.length, 2)
        compare(tag.handlers[0].applicationId, "viewer")
        compare(tag.handlers[0].name, "Viewer")
        compare(tag.handlers[0].icon, "viewer-icon")
        compare(tag.handlers[1].name, "unknown")
        compare(tag.handlers[1].icon, "")
    }

    function test_acceptedContentGoesToTheFirstHandler() {
        message.addUri("https://www.example.org/")
        deliver(["viewer", "other"]).accept()
        tryVerify(() => daemon.replies().length === 1)
        compare(daemon.replies(), ["0 granted"])
        compare(viewer.calls("NDEFData"), 1)
    }

    function test_daemonWaitsForTheHandler() {
        viewer.hold("NDEFData")
        message.addUri("https://www.example.org/")
        deliver(["viewer"]).accept()
        tryCompare(agent.requests, "count", 0)
        tryVerify(() => viewer.calls("NDEFData") === 1)
        compare(daemon.replies(), [])
        viewer.release("NDEFData")
        tryVerify(() => daemon.replies().length === 1)
        compare(daemon.replies(), ["0 granted"])
    }

    function test_userPicksTheHandler() {
        message.addUri("https://www.example.org/")
        const tag = deliver(["other", "viewer"])
        tag.acceptWith(tag.handlers[1])
        tryVerify(() => daemon.replies().length === 1)
        compare(daemon.replies(), ["0 granted"])
        compare(viewer.calls("NDEFData"), 1)
    }

    function test_strangeHandlerGetsNothing() {
        message.addUri("https://www.example.org/")
        const tag = deliver(["viewer"])
        ignoreWarning("DeliveryRequest: the handler is not one of the request's")
        tag.acceptWith(null)
        tag.reject()
        tryVerify(() => daemon.replies().length === 1)
        compare(daemon.replies(), ["0 Rejected"])
        compare(viewer.calls("NDEFData"), 0)
    }

    function test_linkCannotBeCalled() {
        message.addUri("https://www.example.org/")
        const tag = deliver(["viewer"])
        ignoreWarning("DeliveryRequest: there is nothing to call or to send")
        tag.act()
        compare(agent.requests.count, 1)
    }

    function test_numberCanBeCalled() {
        viewer.install("dialer", "Name=Dialer\nMimeType=x-scheme-handler/tel;\nExec=true %u")
        viewer.makeDefault("dialer", "x-scheme-handler/tel")
        message.addUri("tel:+49301234")
        const tag = deliver(["viewer"])
        compare(tag.kind, DeliveryRequest.Number)
        verify(tag.actionable)
        tag.act()
        tryVerify(() => daemon.replies().length === 1)
        compare(daemon.replies(), ["0 granted"])
        compare(viewer.calls("NDEFData"), 0)
    }

    function test_textGoesUnaskedIfTheUserWantsThat() {
        message.bytes = bytes("d1010554" + "02656e" + "6869")
        compare(deliver(["viewer"]).outcome, DeliveryRequest.Forward)
        agent.requests.first.cancel()
        tryCompare(agent.requests, "count", 0)
        nfc.confirmationEnabled = true
        compare(deliver(["viewer"]).outcome, DeliveryRequest.Ask)
    }

    function test_nothingGoesUnaskedWhileTheSessionIsLocked() {
        message.bytes = bytes("d1010554" + "02656e" + "6869")
        agent.sessionLocked = true
        compare(deliver(["viewer"]).outcome, DeliveryRequest.Ask)
    }

    function test_emptyTagIsNotAsked() {
        const tag = deliver([])
        compare(tag.outcome, DeliveryRequest.AcceptEmpty)
        compare(tag.title, "")
    }

    function test_malformedTagIsRefused() {
        message.bytes = bytes("d1010554")
        const tag = deliver(["viewer"])
        compare(tag.outcome, DeliveryRequest.Refuse)
        compare(tag.records.length, 0)
        compare(tag.handlers.length, 0)
    }

    name: "Deliveries"

    FakeDaemon { id: daemon }
    FakeHandler { id: viewer }
    NdefMessage { id: message }
    // Sees all daemons come and go.
    NfcAdapter { id: nfc }
    Component { id: agentType; NfcAgent { adapter: nfc } }
}
