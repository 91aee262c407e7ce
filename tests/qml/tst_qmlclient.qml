// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
import QtQuick
import QtTest
import org.connui.nfc
import org.connui.nfc.tests
import "../../examples/qml-client"

TestCase {
    id: test

    property var phone

    // Fails on warnings, except about a machine without a policy daemon, and daemons that live for a moment.
    function init() {
        failOnWarning(/^(?!ApplicationTracker: |NfcAdapter(Private)?: )/)
        message.clear()
        nfc.confirmationEnabled = true
        daemon.start()
        phone = phoneType.createObject(null)
        tryVerify(() => daemon.calls("RegisterUIAgent") === 1)
        wait(0)
    }

    function cleanup() {
        phone.destroy()
        daemon.kill()
        nfc.confirmationEnabled = false
        wait(0)
    }

    // All items that are visible, at any depth below one.
    function visibleItems(item) {
        return !item.visible ? [] : Array.from(item.children).reduce((all, child) => all.concat(visibleItems(child)), [item])
    }

    function shown() {
        return visibleItems(phone.contentItem.parent)
    }

    function button(text) {
        return shown().find(item => item.text === text && item.clicked)
    }

    function sheetAsks(text) {
        tryVerify(() => shown().some(item => item.text === text))
    }

    function replied() {
        tryVerify(() => daemon.replies().length === 1)
        return daemon.replies()[0]
    }

    function test_tapThatWasUnderWayDoesNotAnswer() {
        daemon.pair("/device", "Headset", "")
        sheetAsks("Headset")
        mouseClick(button("Allow"))
        compare(daemon.replies(), [])
        tryVerify(() => button("Allow").enabled)
        mouseClick(button("Allow"))
        compare(replied(), "0 granted")
    }

    function test_nextQuestionIsGuardedAnew() {
        daemon.pair("/1", "first", "")
        daemon.pair("/2", "second", "")
        sheetAsks("first")
        tryVerify(() => button("Cancel").enabled)
        mouseClick(button("Cancel"))
        sheetAsks("second")
        mouseClick(button("Allow"))
        compare(replied(), "0 Rejected")
        compare(phone.request.title, "second")
    }

    function test_hostileTextStaysPlainAndLeavesTheButtons() {
        const text = "<h1>Pay now</h1>" + "<br>line\n".repeat(1000)
        const content = [2, 0x65, 0x6e].concat(Array.from(text, letter => letter.charCodeAt(0)))
        const length = [content.length >> 24, content.length >> 16, content.length >> 8, content.length].map(part => part & 255)
        message.bytes = new Uint8Array([0xc1, 1].concat(length, [0x54], content)).buffer
        compare(message.records.length, 1)
        daemon.deliver("/tag", message.bytes, ["viewer"])
        tryVerify(() => phone.request !== null && button("Discard"))
        const label = shown().find(item => item.text === phone.tag.text)
        compare(label.textFormat, Text.PlainText)
        verify(label.lineCount <= 6)
        const corner = button("Discard").mapToItem(null, 0, button("Discard").height)
        verify(corner.y <= phone.height)
    }

    function test_emptyTagIsOnlyANotice() {
        daemon.deliver("/tag", message.bytes, [])
        compare(replied(), "0 granted")
        sheetAsks("There is nothing on this tag.")
    }

    function test_malformedTagIsRefused() {
        message.bytes = new Uint8Array([1, 2, 3]).buffer
        daemon.deliver("/tag", message.bytes, ["viewer"])
        compare(replied(), "0 Rejected")
        sheetAsks("The phone cannot open this tag.")
    }

    function test_sheetGoesWithItsDaemon() {
        daemon.pair("/device", "Headset", "")
        sheetAsks("Headset")
        daemon.kill()
        tryVerify(() => !button("Allow"))
    }

    name: "QmlClient"

    FakeDaemon { id: daemon }
    NdefMessage { id: message }
    // Sees all daemons come and go.
    NfcAdapter { id: nfc }
    Component { id: phoneType; Main {} }
}
