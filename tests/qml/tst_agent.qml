// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
import QtQuick
import QtTest
import org.connui.nfc
import org.connui.nfc.tests

TestCase {
    id: test

    property NfcAdapter nfc
    property NfcAgent agent

    // Fails on warnings, except about a machine without a policy daemon, and daemons that live for a moment.
    function init() {
        failOnWarning(/^(?!ApplicationTracker: |NfcAdapter(Private)?: )/)
        nfc = adapterType.createObject(test)
        agent = agentType.createObject(test)
    }

    function cleanup() {
        agent?.destroy()
        nfc?.destroy()
        agent = null
        nfc = null
        daemon.kill()
        wait(0)
    }

    function registered() {
        daemon.start()
        agent.adapter = nfc
        tryCompare(agent, "registered", true)
    }

    // Has the daemon answer the agent with an error, and another attempt not at all.
    function refused(error) {
        daemon.fail("RegisterUIAgent", error)
        daemon.hold("RegisterUIAgent")
        ignoreWarning(/RegisterUIAgent/)
        daemon.start()
        tryCompare(nfc, "powered", true)
        agent.adapter = nfc
        tryVerify(() => daemon.calls("RegisterUIAgent") === 1)
        daemon.answerHeld("RegisterUIAgent")
        // Comes behind the answer.
        daemon.setState("off")
        tryCompare(nfc, "powered", false)
    }

    function test_adapterFollowsTheDaemon() {
        compare(nfc.available, false)
        compare(nfc.powered, false)
        daemon.start()
        tryCompare(nfc, "available", true)
        tryCompare(nfc, "powered", true)
        daemon.kill()
        tryCompare(nfc, "available", false)
        tryCompare(nfc, "powered", false)
    }

    function test_powerFollowsTheDaemon() {
        daemon.start()
        tryCompare(nfc, "powered", true)
        daemon.setState("off")
        tryCompare(nfc, "powered", false)
        daemon.setState("on")
        tryCompare(nfc, "powered", true)
    }

    function test_writtenPowerIsAskedOfTheDaemon() {
        daemon.start()
        tryCompare(nfc, "powered", true)
        nfc.powered = false
        compare(nfc.powered, true)
        tryVerify(() => daemon.calls("SetProperty") === 1)
    }

    function test_secondAdapterKnowsTheDaemonAtOnce() {
        daemon.start()
        tryCompare(nfc, "powered", true)
        const second = createTemporaryObject(adapterType, test)
        compare(second.available, true)
        tryCompare(second, "powered", true)
    }

    function test_confirmationIsASetting() {
        const spy = createTemporaryObject(spyType, test, {target: nfc, signalName: "confirmationEnabledChanged"})
        compare(nfc.confirmationEnabled, false)
        nfc.confirmationEnabled = true
        nfc.confirmationEnabled = true
        compare(nfc.confirmationEnabled, true)
        compare(spy.count, 1)
        nfc.confirmationEnabled = false
    }

    function test_agentWithoutAnAdapterDoesNothing() {
        daemon.start()
        tryCompare(nfc, "available", true)
        compare(daemon.calls("RegisterUIAgent"), 0)
        compare(agent.registered, false)
    }

    function test_agentRegistersAgainWhenTheDaemonReturns() {
        registered()
        daemon.kill()
        tryCompare(agent, "registered", false)
        daemon.start()
        tryCompare(agent, "registered", true)
        compare(daemon.calls("RegisterUIAgent"), 1)
    }

    function test_refusedAgentTriesAgain() {
        daemon.fail("RegisterUIAgent")
        ignoreWarning(/RegisterUIAgent/)
        daemon.start()
        agent.adapter = nfc
        tryVerify(() => daemon.calls("RegisterUIAgent") === 1)
        compare(agent.registered, false)
        daemon.recover("RegisterUIAgent")
        tryCompare(agent, "registered", true)
        compare(daemon.calls("RegisterUIAgent"), 2)
    }

    function test_agentLeavesAnAdapterThatItLoses() {
        registered()
        agent.adapter = null
        compare(agent.registered, false)
        tryVerify(() => daemon.calls("UnregisterUIAgent") === 1)
        agent.adapter = nfc
        tryCompare(agent, "registered", true)
    }

    function test_slotMayDeleteTheAgentThatLosesItsAdapter() {
        registered()
        const doomed = agent
        agent.registeredChanged.connect(() => daemon.destroyNow(doomed))
        agent.adapter = null
        tryVerify(() => daemon.calls("UnregisterUIAgent") === 1)
        compare(nfc.available, true)
    }

    function test_adapterThatASlotSetsStays() {
        registered()
        const next = createTemporaryObject(adapterType, test)
        const takeNext = () => agent.adapter = next
        agent.registeredChanged.connect(takeNext)
        agent.adapter = null
        agent.registeredChanged.disconnect(takeNext)
        compare(agent.adapter, next)
        tryCompare(agent, "registered", true)
        compare(daemon.calls("UnregisterUIAgent"), 1)
        next.destroy()
        tryCompare(agent, "adapter", null)
        tryVerify(() => daemon.calls("UnregisterUIAgent") === 2)
    }

    function test_agentOutlivesItsAdapter() {
        registered()
        daemon.pair("/device", "Headset", "")
        tryCompare(agent.requests, "count", 1)
        nfc.destroy()
        tryCompare(agent, "adapter", null)
        compare(agent.registered, false)
        tryCompare(agent.requests, "count", 0)
        tryVerify(() => daemon.calls("UnregisterUIAgent") === 1)
    }

    function test_unansweredRegistrationIsTakenBack_data() {
        return [
            {tag: "no adapter", leave: () => agent.adapter = null},
            {tag: "dead adapter", leave: () => nfc.destroy()},
            {tag: "dead agent", leave: () => agent.destroy()},
        ]
    }

    function test_unansweredRegistrationIsTakenBack(data) {
        daemon.hold("RegisterUIAgent")
        daemon.start()
        agent.adapter = nfc
        tryVerify(() => daemon.calls("RegisterUIAgent") === 1)
        data.leave()
        tryVerify(() => daemon.calls("UnregisterUIAgent") === 1)
    }

    function test_lateRegistrationIsTakenBack() {
        refused("org.freedesktop.DBus.Error.NoReply")
        agent.adapter = null
        tryVerify(() => daemon.calls("UnregisterUIAgent") === 1)
    }

    function test_refusedRegistrationIsNotTakenBack() {
        refused()
        agent.adapter = null
        // Comes behind all other calls.
        nfc.powered = false
        tryVerify(() => daemon.calls("SetProperty") === 1)
        // On a slow machine there may have been another attempt.
        verify(daemon.calls("UnregisterUIAgent") < daemon.calls("RegisterUIAgent"))
    }

    function test_droppedAgentUnregisters() {
        registered()
        agent.destroy()
        tryVerify(() => daemon.calls("UnregisterUIAgent") === 1)
    }

    function test_releasedAgentIsNotRegistered() {
        registered()
        daemon.release()
        tryCompare(agent, "registered", false)
        compare(daemon.replies(), ["0 granted"])
    }

    function test_touchIsAnnounced_data() {
        return [
            {tag: "ok", status: NfcAgent.Ok},
            {tag: "unsupported-tag-type", status: NfcAgent.UnsupportedTag},
            {tag: "malformed-content", status: NfcAgent.MalformedTag},
            {tag: "unknown", status: NfcAgent.UnknownError},
        ]
    }

    function test_touchIsAnnounced(data) {
        registered()
        const spy = createTemporaryObject(spyType, test, {target: agent, signalName: "touched"})
        if (data.tag !== "ok")
            ignoreWarning("NfcAgent: failed touch status '" + data.tag + "' detected")
        daemon.touch(data.tag)
        tryCompare(spy, "count", 1)
        compare(spy.signalArguments[0][0], data.status)
    }

    name: "Agent"

    FakeDaemon { id: daemon }
    // Sees all daemons come and go.
    NfcAdapter {}
    Component { id: adapterType; NfcAdapter {} }
    Component { id: agentType; NfcAgent {} }
    Component { id: spyType; SignalSpy {} }
}
