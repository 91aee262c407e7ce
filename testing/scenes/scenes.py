# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""The scenes of the demo, in the order in which they are played.

A scene is a function with a stage and a transcript. Every step says in words what happens, and fails the scene when it
does not.
"""

SCENES = []

PEER = "00:1A:7D:DA:71:13"
HEADSET = ("00:16:41:7A:0F:11", "Headset", "0x240404")


def scene(function):
    """Adds a function to the demo; the first line of its docstring is the scene's title."""
    function.face = "--console"
    SCENES.append(function)
    return function


def uri_record(code, rest, flags=0xD1):
    """A URI record as a tag holds it: the identifier code, then the rest of the URI."""
    payload = bytes([code]) + rest.encode()
    return bytes([flags, 1, len(payload)]) + b"U" + payload


def text_record(text, flags=0xD1):
    payload = b"\x02en" + text.encode()
    return bytes([flags, 1, len(payload)]) + b"T" + payload


def handler_gets(stage, step, data):
    step(f"the handler gets exactly these bytes: {data.hex()}",
         lambda: stage.handler.says(f": {data.hex()}"))


def decided(tap, step, outcome, code):
    """The end of every tap: nfctap tells what the daemon has learnt."""
    def ends():
        tap.says(outcome)
        tap.leaves(code)
    step(f"nfctap says: {outcome} (exit code {code})", ends)


@scene
def accepted_link(stage, step):
    """A web link on a tag is opened"""
    tap = stage.tap("uri", "https://www.example.org/nfc")
    step("a tag with a web link touches the phone", lambda: stage.client.says("something touched"))
    step("the client asks whether to open it", lambda: stage.client.says("Open https://www.example.org/nfc? [y/n]"))
    step("the person says yes", lambda: stage.client.hears("y"))
    handler_gets(stage, step, uri_record(2, "example.org/nfc"))
    step("the handler reads the link", lambda: stage.handler.says("record: uri https://www.example.org/nfc"))
    step("then it is launched", lambda: stage.handler.says("launched"))
    decided(tap, step, "granted", 0)


@scene
def rejected_link(stage, step):
    """A web link is refused"""
    tap = stage.tap("uri", "http://ads.example.com/win")
    step("the client asks", lambda: stage.client.says("Open http://ads.example.com/win? [y/n]"))
    step("the person says no", lambda: stage.client.hears("n"))
    decided(tap, step, "rejected", 1)

    def heard_nothing():
        assert stage.handler.lines == ["waiting for tags"], stage.handler.lines
    step("the handler has heard nothing", heard_nothing)


@scene
def raw_message(stage, step):
    """A message read from a real tag goes through untouched"""
    data = text_record("Museum", flags=0x91) + uri_record(3, "museum.example", flags=0x51)
    tap = stage.tap("message", stage.file("museum.ndef", data))
    step("the client shows both records",
         lambda: stage.client.says("Open text 'Museum' and http://museum.example? [y/n]"))
    step("the person takes the first application", lambda: stage.client.hears("1"))
    handler_gets(stage, step, data)
    step("then it is launched", lambda: stage.handler.says("launched"))
    decided(tap, step, "granted", 0)


@scene
def malformed_tag(stage, step):
    """A malformed tag is announced"""
    tap = stage.tap("malformed")
    step("the client says so", lambda: stage.client.says("the tag's content is malformed"))
    decided(tap, step, "announced", 0)


@scene
def granted_pairing(stage, step):
    """A headset is paired"""
    tap = stage.tap("pair", *HEADSET, "1234")
    step("the client asks for the headset, with its PIN",
         lambda: stage.client.says(f"Pair with Headset ({HEADSET[0]}), PIN 1234? [y/n]"))
    step("the person says yes", lambda: stage.client.hears("y"))
    decided(tap, step, "granted", 0)


@scene
def granted_sharing(stage, step):
    """A picture may be sent to the phone that touches this one"""
    picture = stage.file("beach.jpg", b"\xff\xd8\xff\xe0")
    tap = stage.tap("share-permission", picture)
    step("the client names the picture and the phone that the handover data tells of",
         lambda: stage.client.says(f"Send {picture} over bluetooth to {PEER}? [y/n]"))
    step("the person says yes", lambda: stage.client.hears("y"))
    decided(tap, step, "granted", 0)
    handover = stage.tap("handover", "bluetooth")
    step("the phones go on over Bluetooth", lambda: stage.client.says("handover started"))
    step("both agree on the carrier", lambda: stage.client.says("handover goes on over bluetooth"))
    step("the handover is complete", lambda: stage.client.says(f"handover to bluetooth of {PEER} completed"))
    decided(handover, step, "completed", 0)


@scene
def hostile_text(stage, step):
    """A tag's text cannot take over the terminal"""
    tap = stage.tap("text", "\x1b[2Jgone\u202etxt\nOpen all? [y/n]")
    step("control characters are shown as what they are not",
         lambda: stage.client.says("Open text '\ufffd[2Jgone\ufffdtxt\ufffdOpen all? [y/n]'? [y/n]"))
    step("the person says no", lambda: stage.client.hears("n"))
    decided(tap, step, "rejected", 1)


@scene
def waiting_questions(stage, step):
    """Two touches in a row are answered one after the other"""
    first = stage.tap("connect", *HEADSET)
    step("the client asks for the first", lambda: stage.client.says("Connect to Headset"))
    second = stage.tap("text", "Welcome")
    step("the second waits, visibly", lambda: stage.client.says("waiting (1): Open text 'Welcome'"))
    step("the person refuses the first", lambda: stage.client.hears("n"))
    decided(first, step, "rejected", 1)
    step("the client asks for the second", lambda: stage.client.says("Open text 'Welcome'? [y/n]"))
    step("the person says yes", lambda: stage.client.hears("y"))
    handler_gets(stage, step, text_record("Welcome"))
    decided(second, step, "granted", 0)


@scene
def started_daemon(stage, step):
    """The bus starts the daemon for a client that misses it"""
    step("there is no daemon, and no client", lambda: (stage.client.is_killed(), stage.daemon.is_killed()))
    decided(stage.tap("empty"), step, "no simulated daemon", 3)
    stage.lets_the_bus_start_the_daemon()
    step("a client comes, and with it the daemon", stage.client_comes)
    tap = stage.tap("disconnect", *HEADSET)
    step("the client asks", lambda: stage.client.says("Disconnect from Headset"))
    step("the person says yes", lambda: stage.client.hears("y"))
    decided(tap, step, "granted", 0)
    step("the person closes the client", lambda: stage.client.hears_the_end())
    step("the client has left in good order", lambda: stage.client.leaves())
    decided(stage.tap("crash"), step, "done", 0)


@scene
def killed_daemon(stage, step):
    """The daemon dies in mid request and comes back"""
    lost = stage.tap("uri", "tel:+15550100")
    step("the client asks", lambda: stage.client.says("Open tel:+15550100? [y/n]"))
    step("the daemon is killed with -9", lambda: stage.daemon.is_killed())
    step("the client notices", lambda: stage.client.says("the NFC daemon has left"))
    step("its question is off the table", lambda: stage.client.says("dropped: Open tel:+15550100"))
    decided(lost, step, "the daemon has died", 3)
    step("the daemon is started again", stage.daemon_comes)
    step("the client registers anew", lambda: stage.client.says("the NFC daemon is here"))
    again = stage.tap("uri", "tel:+15550100")
    step("the tag is held there once more", lambda: stage.client.says("Open tel:+15550100? [y/n]"))
    step("the person says yes", lambda: stage.client.hears("y"))
    handler_gets(stage, step, uri_record(5, "+15550100"))
    decided(again, step, "granted", 0)


@scene
def leaving_client(stage, step):
    """The client leaves with requests open"""
    link = stage.tap("uri", "https://www.example.org/")
    step("the client asks about a tag", lambda: stage.client.says("Open https://www.example.org/? [y/n]"))
    pairing = stage.tap("pair", *HEADSET)
    step("and a pairing waits", lambda: stage.client.says("waiting (1): Pair with Headset"))
    step("the person closes the client", lambda: stage.client.hears_the_end())
    decided(link, step, "canceled", 2)
    decided(pairing, step, "canceled", 2)
    step("the client has left in good order", lambda: stage.client.leaves())
    decided(stage.tap("empty"), step, "no agent is registered", 3)


@scene
def killed_client(stage, step):
    """The client is killed with a request open"""
    tap = stage.tap("share-selection")
    step("the client asks", lambda: stage.client.says(f"Select something to send over bluetooth to {PEER}? [y/n]"))
    step("the client is killed with -9", lambda: stage.client.is_killed())
    decided(tap, step, "canceled", 2)
    step("a new client comes", stage.client_comes)
    empty = stage.tap("empty")
    step("an empty tag is told to it", lambda: stage.client.says("the tag is empty"))
    decided(empty, step, "granted", 0)
