// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
import QtQuick
import QtTest
import org.connui.nfc
import org.connui.nfc.tests

TestCase {
    id: test

    function init() {
        failOnWarning(/.?/)
        message.clear()
    }

    function hex(bytes) {
        return Array.from(new Uint8Array(bytes), each => each.toString(16).padStart(2, "0")).join("")
    }

    function bytes(hex) {
        return new Uint8Array(hex.match(/../g)?.map(each => parseInt(each, 16)) ?? []).buffer
    }

    function test_emptyMessageHasNoBytes() {
        compare(message.bytes.byteLength, 0)
        compare(message.records.length, 0)
        compare(message.error, "")
    }

    function test_urisAreAbbreviatedAndFlagged() {
        message.addUri("https://a.example")
        message.addUri("tel:112")
        compare(hex(message.bytes), "9101" + "0a" + "55" + "04612e6578616d706c65" + "5101" + "04" + "55" + "05313132")
    }

    function test_writtenRecordsAreRead() {
        message.addUri("https://a.example")
        message.addText("text/plain", "grüß")
        message.addData("application/x-notes", bytes("0001ff"))
        compare(message.records.length, 3)
        compare(message.records[0].uri, "https://a.example")
        compare(message.records[1].mimeType, "text/plain")
        compare(hex(message.records[1].payload), "6772c3bcc39f")
        compare(hex(message.records[2].payload), "0001ff")
    }

    function test_recordThatCannotBeWrittenIsAnError() {
        message.addText("notype", "text")
        compare(message.bytes.byteLength, 0)
        verify(message.error !== "")
        message.clear()
        compare(message.error, "")
    }

    function test_bytesAreRead() {
        message.bytes = bytes("d101055402656e6869")
        compare(message.records.length, 1)
        compare(message.records[0].text, "hi")
    }

    function test_bytesThatAreNotOneMessageHaveNoRecords_data() {
        return [{tag: "cut", bytes: "d1010554"}, {tag: "more behind", bytes: "d101055402656e686900"}]
    }

    function test_bytesThatAreNotOneMessageHaveNoRecords(data) {
        message.bytes = bytes(data.bytes)
        compare(message.records.length, 0)
    }

    function test_addingToAReadMessageBeginsANewOne() {
        message.bytes = bytes("d101055402656e6869")
        message.addUri("tel:112")
        compare(hex(message.bytes), "d101" + "04" + "55" + "05313132")
    }

    function test_everyChangeIsTold() {
        spy.clear()
        message.addUri("tel:112")
        message.bytes = bytes("d101055402656e6869")
        message.clear()
        compare(spy.count, 3)
    }

    name: "NdefMessage"

    NdefMessage { id: message }
    SignalSpy { id: spy; target: message; signalName: "changed" }
}
