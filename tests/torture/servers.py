"""Servers that are silent, slow, wrong or hostile."""

import json
import time
import zlib

from box import case
from server import Server, answering, http, silent, trickle

DEADLINE = 30  # Seconds that a request may take.
AT_EXIT = 2  # Seconds that unsent events get at exit.
START = 3  # Additional seconds for the program itself on a busy machine.

VERSION = json.dumps({"success": True, "records": [{"fields": {"Expired": False}}]}).encode()
MESSAGES = json.dumps({"messages": [{"fields": {"ID": 1, "Message": "m"}}]}).encode()
LOCATION = json.dumps({"city": "Lisbon", "query": "192.0.2.1"}).encode()
COMMANDS = (["check-version"], ["messages"])
EVENTS = ("var k = Kelvar.new(); for (var i = 0; i < 5; i++) "
          "k.trackForEvent_properties_('event ' + i, {})")


def bomb(mebibytes):
    """Compressed spaces, in parts: the peak memory of this process counts for its children."""
    packer = zlib.compressobj(9, wbits=31)
    parts = [packer.compress(b" " * (1 << 20)) for _ in range(mebibytes)]
    return b"".join(parts) + packer.flush()


def sending(data):
    return lambda connection, _request: connection.sendall(data)


def slowly(head, byte, pause):
    """A response that never ends: one byte every `pause` seconds."""
    def behave(connection, _request):
        connection.sendall(head)
        trickle(connection, byte * 1000, pause)
    return behave


ENDLESS = b"HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n"
SLOW = {
    "says nothing": lambda connection, _request: connection.recv(1),
    "a byte of the body every 2 s": slowly(ENDLESS, b" ", 2),
    "a byte of the head every 2 s": slowly(b"HTTP/1.1 200 OK\r\nX: ", b"x", 2),
    "a chunk every 2 s": lambda connection, _request: (
        connection.sendall(b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"),
        [(connection.sendall(b"1\r\n \r\n"), time.sleep(2)) for _ in range(100)]),
    "a redirection every 2 s": lambda connection, _request: (
        time.sleep(2), connection.sendall(http(status="302 Found", headers="Location: /x\r\n"))),
    "100 Continue every 2 s": lambda connection, _request: [
        (connection.sendall(b"HTTP/1.1 100 Continue\r\n\r\n"), time.sleep(2)) for _ in range(100)],
}


@case("a slow server: 30 s at most")
def slow(box):
    with_servers = [(name, command, Server(behave)) for name, behave in SLOW.items()
                    for command in COMMANDS]
    # All at once: they only wait.
    running = [box.start(*command, env={"KELVAR_API_SERVER": server.address,
                                        "KELVAR_DEFAULTS": str(box.path(f"{i}.sqlite"))})
               for i, (_, command, server) in enumerate(with_servers)]
    for (name, command, server), each in zip(with_servers, running):
        ended = each.wait(DEADLINE + START + 5, statuses=(1,))
        server.__exit__()
        ended.faults = [f"{name}, {command[0]}: {fault}" for fault in ended.faults]
        yield ended


WRONG = {
    "hangs up": sending(b""),
    "no HTTP": sending(b"SSH-2.0-OpenSSH\r\n"),
    "zeros": sending(b"\0" * 100_000),
    "endless head": sending(b"HTTP/1.1 200 OK\r\n" + b"X: y\r\n" * 200_000),
    "one long line": sending(b"HTTP/1.1 200 " + b"O" * 5_000_000),
    "less than announced": sending(ENDLESS + b"{"),
    "negative length": sending(b"HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\n{}"),
    "length beyond numbers": sending(b"HTTP/1.1 200 OK\r\nContent-Length: " + b"9" * 20 +
                                     b"\r\n\r\n{}"),
    "two lengths": sending(b"HTTP/1.1 200 OK\r\nContent-Length: 2\r\nContent-Length: 9\r\n\r\n{}"),
    "bad chunks": sending(b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n{}"),
    "status 999": sending(http(status="999 What")),
    "status 204": sending(b"HTTP/1.1 204 No Content\r\n\r\n"),
    "empty": sending(http(b"")),
    "no JSON": sending(http(b"<html>")),
    "a number": sending(http(b"12")),
    "null": sending(http(b"null")),
    "wrong kinds": sending(http(b'{"success":[],"messages":{"a":1},"records":"x"}')),
    "messages of wrong kinds": sending(http(b'{"messages":[1,null,"x",[],{},{"fields":[]}]}')),
    "deep": sending(http(b"[" * 500_000)),
    "half a surrogate": sending(http(rb'{"messages":[{"fields":{"ID":1,"Message":"\ud800"}}]}')),
    "9 MiB": sending(http(b" " * (9 << 20))),
    "a bomb": sending(http(bomb(300), headers="Content-Encoding: gzip\r\n")),
    "broken gzip": sending(http(b"\x1f\x8b\x08nothing", headers="Content-Encoding: gzip\r\n")),
    "a circle": sending(http(status="302 Found", headers="Location: /again\r\n")),
    "to a file": sending(http(status="302 Found", headers="Location: file:///etc/hostname\r\n")),
    "to another scheme": sending(http(status="302 Found",
                                      headers="Location: https://127.0.0.1:1/\r\n")),
    "to nowhere": sending(http(status="302 Found", headers="Location: \r\n")),
    "401": sending(http(status="401 No", headers='WWW-Authenticate: Basic realm="x"\r\n')),
    "101": sending(b"HTTP/1.1 101 Switching Protocols\r\nUpgrade: x\r\n\r\n"),
}


@case("a server that is wrong")
def wrong(box):
    script = box.write("s.js", EVENTS)
    for name, behave in WRONG.items():
        with Server(behave) as server:
            for command in (*COMMANDS, ["run", script]):
                ended = box.run(*command, env={"KELVAR_API_SERVER": server.address,
                                               "KELVAR_ANALYTICS_SERVER": server.address,
                                               "KELVAR_LOCATION_SERVER": server.address},
                                seconds=DEADLINE + START)
                ended.faults = [f"{name}, {command[0]}: {fault}" for fault in ended.faults]
                yield ended


@case("GET follows 301, 302, 303, 307, 308")
def redirections(box):
    for status in (301, 302, 303, 307, 308):
        for command, body in zip(COMMANDS, (VERSION, MESSAGES)):
            with answering(http(status=f"{status} Go", headers="Location: /there\r\n"),
                           http(body)) as server:
                ended = box.run(*command, env={"KELVAR_API_SERVER": server.address}, statuses=(0,))
                yield ended.expect(len(server.requests) == 2, f"{status} is not followed")


@case("events: a silent or slow server never holds a script")
def events_at_exit(box):
    script = box.write("s.js", EVENTS)
    behaviors = {name: SLOW[name] for name in list(SLOW)[:4]}
    for name, behave in behaviors.items():
        for location in (None, answering(http(LOCATION)), silent()):
            with Server(behave) as server:
                environment = {"KELVAR_ANALYTICS_SERVER": server.address}
                if location:
                    environment["KELVAR_LOCATION_SERVER"] = location.address
                ended = box.run("run", "--verbose", script, env=environment, statuses=(0,),
                                seconds=DEADLINE + START, sentence=False)
                ended.expect(ended.seconds <= AT_EXIT + START,
                             f"the end takes {ended.seconds:.0f} s")
                if location:
                    location.__exit__()
                ended.faults = [f"{name}: {fault}" for fault in ended.faults]
                yield ended


@case("events: 307 and 308 are not followed")
def posts_are_not_redirected(box):
    script = box.write("s.js", EVENTS)
    for status in (307, 308):
        with answering(http(status=f"{status} Go", headers="Location: /there\r\n")) as server:
            ended = box.run("run", "--verbose", script, env={"KELVAR_ANALYTICS_SERVER":
                                                             server.address}, sentence=False)
            yield ended.expect(b"Connection closed" not in ended.err, "taken for no answer")


@case("events: a keep-alive server that closes silently")
def silent_closes(box):
    """Answers, keeps the connection open for a moment and closes it silently."""
    def behave(connection, request):
        connection.sendall(http(connection="keep-alive"))
        received.append(request)
        time.sleep(chance[len(received) % len(chance)])
        return len(received) % 3

    chance = (0, 0.001, 0, 0.003, 0.0005)
    count = 60
    script = box.write("s.js", EVENTS.replace("< 5", f"< {count}"))
    for _ in range(4):
        received = []
        with Server(behave) as server:
            ended = box.run("run", script, env={"KELVAR_ANALYTICS_SERVER": server.address},
                            seconds=DEADLINE)
            names = [json.loads(request.partition(b"\r\n\r\n")[2]).get("event")
                     for request in received]
            lost = [i for i in range(count) if names.count(f"event {i}") == 0]
            twice = [i for i in range(count) if names.count(f"event {i}") > 1]
            ended.expect(not lost, f"{len(lost)} of {count} events are lost")
            yield ended.expect(not twice, f"{len(twice)} of {count} events came twice")


@case("--verbose hides the server's password")
def passwords(box):
    with answering(http(VERSION)) as server:
        address = server.address.replace("//", "//someone:hunter2@")
        for name in ("KELVAR_API_SERVER", "KELVAR_ANALYTICS_SERVER", "KELVAR_LOCATION_SERVER",
                     "KELVAR_WEB_SITE"):
            for command in (["check-version", "--verbose"], ["messages", "--verbose"],
                            ["analytics", "--verbose"],
                            ["run", "--verbose", box.write("s.js", EVENTS)]):
                ended = box.run(*command, env={name: address}, sentence=False)
                yield ended.expect(b"hunter2" not in ended.out + ended.err,
                                   f"{command[0]} shows {name}'s")


@case("at most 1,000 messages are kept")
def many_messages(box):
    def reply(first, count):
        return http(json.dumps({"messages": [{"fields": {"ID": i, "Message": f"m{i}"}} for i in
                                             range(first, first + count)]}).encode())
    with answering(reply(1, 5000), reply(1, 5000), reply(6001, 10)) as server:
        for _ in range(3):
            ended = box.run("messages", "--json", env={"KELVAR_API_SERVER": server.address},
                            statuses=(0,))
            count = len(json.loads(ended.out or b"[]"))
            yield ended.expect(count <= 1000, f"{count} are kept")
    kept = [{"id": i, "message": "m", "action": "", "read": i % 2 == 0} for i in range(1, 1001)]
    box.make("settings", "set", "io.kelvarlabs.kelvar.servermessage", "--type", "json",
             json.dumps(kept))
    with answering(reply(2001, 100)) as server:
        ended = box.run("messages", "--json", env={"KELVAR_API_SERVER": server.address})
        ids = {each["id"] for each in json.loads(ended.out or b"[]")}
        ended.expect(ids.issuperset(range(2001, 2101)), "new messages are not kept")
        ended.expect(ids.issuperset(range(1, 1001, 2)), "unread messages went before read ones")
        yield ended.expect(not ids & set(range(2, 201, 2)), "the oldest read ones did not go first")
