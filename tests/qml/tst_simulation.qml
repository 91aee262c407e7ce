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
        simulation.start()
        agent = agentType.createObject(test)
        tryCompare(agent, "registered", true)
    }

    function cleanup() {
        agent?.destroy()
        agent = null
        simulation.kill()
    }

    function test_answerEndsTheTap_data() {
        const headset = ["00:16:41:7A:0F:11", "Headset", "0x240404"]
        return [
            {tag: "link", tap: ["uri", "https://www.example.org"], type: "DeliveryRequest"},
            {tag: "number", tap: ["uri", "tel:112"], type: "DeliveryRequest"},
            {tag: "text", tap: ["text", "hello"], type: "DeliveryRequest"},
            {tag: "contact", tap: ["mime", "text/vcard", simulation.file("card.vcf", "BEGIN:VCARD\nEND:VCARD\n")], type: "DeliveryRequest"},
            {tag: "malformed", tap: ["message", simulation.file("bad.ndef", "no message")], type: "DeliveryRequest"},
            {tag: "empty", tap: ["empty"], type: "DeliveryRequest"},
            {tag: "pair", tap: ["pair", ...headset, "1234"], type: "PairingRequest"},
            {tag: "connect", tap: ["connect", ...headset], type: "ConnectionRequest"},
            {tag: "disconnect", tap: ["disconnect", ...headset], type: "ConnectionRequest"},
            {tag: "share", tap: ["share-permission", simulation.file("beach.jpg", "")], type: "SharingRequest"},
            {tag: "select", tap: ["share-selection"], type: "SharingRequest"},
        ]
    }

    function test_answerEndsTheTap(data) {
        for (const [answer, outcome] of [["accept", "granted"], ["reject", "rejected"], ["cancel", "canceled"]]) {
            simulation.tap(data.tap)
            tryCompare(agent.requests, "count", 1)
            verify(String(agent.requests.first).startsWith(data.type))
            agent.requests.first[answer]()
            tryCompare(simulation, "outcome", outcome)
            tryCompare(agent.requests, "count", 0)
        }
    }

    function test_unreadableTagIsOnlyAnnounced() {
        const spy = createTemporaryObject(spyType, test, {target: agent, signalName: "touched"})
        ignoreWarning("NfcAgent: failed touch status 'unsupported-tag-type' detected")
        simulation.tap(["unsupported"])
        tryCompare(simulation, "outcome", "announced")
        tryCompare(spy, "count", 1)
        compare(spy.signalArguments[0][0], NfcAgent.UnsupportedTag)
        compare(agent.requests.count, 0)
    }

    function test_requestExpiresWhenTheDaemonDies() {
        simulation.tap(["text", "hello"])
        tryCompare(agent.requests, "count", 1)
        simulation.kill()
        tryCompare(agent.requests, "count", 0)
        tryCompare(agent, "registered", false)
        simulation.start()
        tryCompare(agent, "registered", true)
    }

    function test_secondAgentTakesOverFromTheFirst() {
        ignoreWarning(/AlreadyExists/)
        const second = createTemporaryObject(agentType, test)
        tryCompare(nfc, "available", true)
        compare(second.registered, false)
        agent.destroy()
        tryCompare(second, "registered", true)
        simulation.tap(["text", "hello"])
        tryCompare(second.requests, "count", 1)
        second.requests.first.accept()
        tryCompare(simulation, "outcome", "granted")
    }

    function test_agentRegistersWithTheNextAdapter() {
        const page = adapterType.createObject(test)
        agent.adapter = page
        tryCompare(agent, "registered", true)
        page.destroy()
        tryCompare(agent, "registered", false)
        agent.adapter = nfc
        tryCompare(agent, "registered", true)
    }

    function test_droppedRequestEndsTheTap() {
        simulation.tap(["text", "hello"])
        tryCompare(agent.requests, "count", 1)
        agent.requests.first.destroy()
        tryCompare(simulation, "outcome", "canceled")
    }

    name: "Simulation"

    Simulation { id: simulation }
    // Sees all daemons come and go.
    NfcAdapter { id: nfc }
    Component { id: adapterType; NfcAdapter {} }
    Component { id: agentType; NfcAgent { adapter: nfc } }
    Component { id: spyType; SignalSpy {} }
}
