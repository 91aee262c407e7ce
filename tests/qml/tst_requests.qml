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
        daemon.start()
        agent = agentType.createObject(test)
        tryCompare(agent, "registered", true)
    }

    function cleanup() {
        agent?.destroy()
        agent = null
        daemon.kill()
    }

    // Waits until so many requests are pending, and returns the last one.
    function request(count) {
        tryCompare(agent.requests, "count", count)
        return agent.requests.get(count - 1)
    }

    function expectReplies(replies) {
        tryVerify(() => daemon.replies().length >= replies.length)
        compare(daemon.replies(), replies)
    }

    function test_pairingNamesTheDevice() {
        daemon.pair("/device", "Headset\n\u202egnissim", "1234")
        const pairing = request(1)
        verify(pairing instanceof PairingRequest)
        compare(pairing.target, "/device")
        compare(pairing.title, "Headset \ufffdgnissim")
        compare(pairing.address, "00:16:41:7A:0F:11")
        compare(pairing.deviceClass, 0x240404)
        compare(pairing.pin, "1234")
    }

    function test_pinIsOneLineWithEveryCharacterVisible() {
        daemon.pair("/device", "Headset", "1234\n\u202esafe")
        compare(request(1).pin, "1234 \ufffdsafe")
    }

    function test_deviceWithoutANameIsNamedByItsAddress() {
        daemon.pair("/device", "", "")
        compare(request(1).title, "00:16:41:7A:0F:11")
    }

    function test_connectionSaysInWhichDirection() {
        daemon.connectDevice("/device", "Headset")
        verify(request(1) instanceof ConnectionRequest)
        verify(!request(1).disconnects)
        daemon.disconnectDevice("/device", "Headset")
        verify(request(2) instanceof ConnectionRequest)
        verify(request(2).disconnects)
    }

    function test_sharingNamesWhatIsSent() {
        daemon.share("peer", ["file:///home/user/beach.jpg", "contact:7"])
        const sharing = request(1)
        verify(sharing instanceof SharingRequest)
        compare(sharing.title, "beach.jpg")
        compare(sharing.carrier, "bluetooth")
        compare(sharing.resources, ["file:///home/user/beach.jpg", "contact:7"])
        verify(!sharing.selects)
    }

    function test_selectionHasNothingToSendYet() {
        daemon.select("peer")
        verify(request(1).selects)
        compare(request(1).resources, [])
    }

    function test_answerReachesTheDaemon_data() {
        return [
            {tag: "pairing", ask: () => daemon.pair("/device", "Headset", "")},
            {tag: "connection", ask: () => daemon.connectDevice("/device", "Headset")},
            {tag: "disconnection", ask: () => daemon.disconnectDevice("/device", "Headset")},
            {tag: "delivery", ask: () => daemon.deliver("/tag", new ArrayBuffer(0), [])},
            {tag: "sharing", ask: () => daemon.share("peer", ["/beach.jpg"])},
            {tag: "selection", ask: () => daemon.select("peer")},
        ]
    }

    function test_answerReachesTheDaemon(data) {
        data.ask()
        request(1).accept()
        tryCompare(agent.requests, "count", 0)
        data.ask()
        request(1).reject()
        tryCompare(agent.requests, "count", 0)
        data.ask()
        request(1).cancel()
        tryCompare(agent.requests, "count", 0)
        expectReplies(["0 granted", "1 Rejected", "2 Canceled"])
    }

    function test_firstAnswerIsTheOnlyOne() {
        daemon.pair("/device", "Headset", "")
        daemon.pair("/device", "Other", "")
        const first = request(2) && agent.requests.first
        first.accept()
        first.accept()
        first.reject()
        first.cancel()
        first.destroy()
        tryCompare(agent.requests, "count", 1)
        expectReplies(["0 granted"])
        compare(agent.requests.first.title, "Other")
    }

    function test_answersForATargetKeepTheirOrder() {
        daemon.pair("/device", "Headset", "")
        daemon.connectDevice("/device", "Headset")
        daemon.pair("/other", "Other", "")
        request(3).accept()
        agent.requests.get(1).reject()
        expectReplies(["2 granted"])
        agent.requests.first.accept()
        expectReplies(["2 granted", "0 granted", "1 Rejected"])
    }

    function test_waitingAnswerStays() {
        daemon.pair("/device", "Headset", "")
        daemon.pair("/device", "Headset", "")
        const second = request(2)
        second.accept()
        second.reject()
        agent.requests.first.reject()
        expectReplies(["0 Rejected", "1 granted"])
    }

    function test_modelHasTheOldestFirst() {
        daemon.pair("/1", "first", "")
        daemon.connectDevice("/2", "second")
        daemon.select("third")
        request(3)
        compare(agent.requests.first.title, "first")
        compare(agent.requests.get(1).title, "second")
        compare(agent.requests.get(3), null)
        compare(agent.requests.get(-1), null)
        agent.requests.first.accept()
        tryVerify(() => agent.requests.first.title === "second")
    }

    function test_delegatesFollowTheModel() {
        const view = createTemporaryObject(viewType, test, {model: agent.requests})
        daemon.pair("/1", "first", "")
        daemon.pair("/2", "second", "")
        tryCompare(view, "count", 2)
        compare(view.objectAt(1).request.title, "second")
        agent.requests.first.accept()
        tryCompare(view, "count", 1)
        compare(view.objectAt(0).request.title, "second")
    }

    function test_delegateMayAnswerAtOnce() {
        const view = createTemporaryObject(eagerType, test, {model: agent.requests})
        daemon.pair("/1", "first", "")
        daemon.pair("/2", "second", "")
        expectReplies(["0 granted", "1 granted"])
        tryCompare(view, "count", 0)
    }

    function test_droppedRequestIsCanceled() {
        daemon.pair("/device", "Headset", "")
        daemon.share("peer", ["/beach.jpg"])
        request(2)
        agent.requests.first.destroy()
        tryCompare(agent.requests, "count", 1)
        agent.requests.first.destroy()
        tryCompare(agent.requests, "count", 0)
        expectReplies(["0 Canceled", "1 Canceled"])
    }

    function test_requestThatNobodyHoldsWaits() {
        daemon.pair("/device", "Headset", "")
        request(1)
        gc()
        gc()
        agent.requests.first.accept()
        expectReplies(["0 granted"])
    }

    function test_requestsOfADroppedAgentAreCanceled() {
        daemon.pair("/device", "Headset", "")
        daemon.share("peer", ["/beach.jpg"])
        request(2)
        agent.destroy()
        expectReplies(["0 Canceled", "1 Canceled"])
    }

    function test_requestsExpireWithTheirDaemon() {
        daemon.pair("/device", "Headset", "")
        const spy = createTemporaryObject(spyType, test, {target: request(1), signalName: "expiredChanged"})
        let expired = false
        request(1).expiredChanged.connect(() => expired = agent.requests.first.expired)
        daemon.kill()
        tryCompare(spy, "count", 1)
        verify(expired)
        tryCompare(agent.requests, "count", 0)
        compare(agent.registered, false)
    }

    function test_answeredRequestDoesNotExpire() {
        daemon.pair("/device", "Headset", "")
        const pairing = request(1)
        pairing.accept()
        verify(!pairing.expired)
    }

    name: "Requests"

    FakeDaemon { id: daemon }
    // Sees all daemons come and go.
    NfcAdapter { id: nfc }
    Component { id: agentType; NfcAgent { adapter: nfc } }
    Component { id: spyType; SignalSpy {} }
    Component {
        id: viewType
        Instantiator { delegate: QtObject { required property NfcRequest request } }
    }
    Component {
        id: eagerType
        Instantiator {
            delegate: QtObject {
                required property NfcRequest request
                Component.onCompleted: request.accept()
            }
        }
    }
}
