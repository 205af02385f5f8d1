"""Scripts that never end, start programs, or build reference cycles."""

import json

from box import case

KNOTS = {
    "itself": "var a = manager(); a.trackers = [a];",
    "around a corner": "var a = manager(), b = manager(); a.trackers = [b]; b.trackers = [a];",
    "around two": "var a = manager(), b = manager(), c = manager(); a.trackers = [b]; "
                  "b.trackers = [c]; c.trackers = [c, a];",
    "at its making": "var a = manager(); a.trackers = [TrackerManager.alloc()"
                     ".initWithTrackers_identifier_([a], 'x')];",
    "in the shared one": "var k = Kelvar.new(), a = k.tracker(); a.trackers = [a];",
}
USES = ("a.track_properties_('e', {})", "a.setSuperProperties_({x: 1})",
        "a.addSuperProperties_({})", "a.setEmail_('a@example.com')", "a.setUuid_('u')",
        "a.identifyEmail_('a@example.com')",
        "a.aliasFromUUIDTo_('u')", "a.configureChild()")


@case("a tracker manager that contains itself")
def knots(box):
    for name, knot in KNOTS.items():
        for use in USES:
            # Rejected in the log when it is set: analytics never bother the user.
            script = box.write("knot.js", "function manager() { return TrackerManager.alloc()"
                               ".initWithTrackers_identifier_([], 'x') }\n"
                               f"{knot}\ntry {{ {use} }} catch (e) {{}}\n")
            ended = box.run("run", "--verbose", script, statuses=(0,))
            ended.expect(b"a manager cannot be among its own trackers" in ended.err,
                         "it is not refused")
            ended.faults = [f"{name}, {use}: {fault}" for fault in ended.faults]
            yield ended


@case("a script that does not end")
def endless(box):
    for name, script in {
            "loop": "for (;;);", "timers": "setInterval(() => {}, 1)",
            "sleep": "CMD.new().exec_('sleep 60')", "memory": "var a = []; for (;;) a.push([a])",
            "recursion": "function f() { f() } f(); setInterval(() => {}, 1)",
            "expression": "/(a+)+$/.test('a'.repeat(40) + 'b')",
            "text": "var s = 'x'; for (;;) s += s"}.items():
        ended = box.run("run", box.write("s.js", script), "--timeout", "1", seconds=8,
                        memory=6 << 30, statuses=(1,), sentence=False)
        ended.faults = [f"{name}: {fault}" for fault in ended.faults]
        yield ended


@case("--timeout ends a script's child processes")
def children(box):
    for command in ("exec sleep 60", "sleep 60", "sleep 60 | cat", "trap '' TERM; sleep 60"):
        note = box.path("child")
        note.unlink(missing_ok=True)
        box.write("child.sh", f"#!/bin/sh\necho $$ > {note}\n{command}\n").chmod(0o755)
        script = box.write("s.js", "var c = CMD.new(); c.cd = %s; c.exec_('child.sh')" %
                           json.dumps(str(box.folder)))
        running = box.start("run", script, "--timeout", "1")
        yield running.wait(8, statuses=(1,), sentence=False).expect(note.exists(), "never ran")


@case("control characters do not reach the terminal")
def control_characters(box):
    evil = "\x1b]0;evil\x07\x1b[31m\x9b31m\r\x08"
    command = {"identifier": evil, "name": evil, "script": "s.js"}
    box.write("p/Contents/Sketch/manifest.json", json.dumps(
        {"identifier": evil, "name": evil, "version": evil, "commands": [command, command]}))
    box.write("p/Contents/Sketch/s.js", "")
    box.write("q/Contents/Sketch/manifest.json", json.dumps(
        {"commands": [{"name": evil, "script": "s.js"}]}))
    box.write("r/Contents/Sketch/manifest.json", json.dumps(
        {"commands": [command | {"script": evil + ".js"}]}))
    box.write("t/Contents/Sketch/manifest.json", json.dumps(
        {"commands": [command | {"handler": evil}]}))
    box.write("t/Contents/Sketch/s.js", "")
    box.write("e.js", "throw new Error(%s)" % json.dumps(evil))
    for words in (["run", "--list", "p"], ["run", "p"], ["run", "p", "--command", "x"],
                  ["run", "q", "--list"], ["run", "r"], ["run", "t"], ["run", "e.js"],
                  ["run", evil], ["archive", "show", evil], ["archive", "show", "p/Contents/Sketch/"
                                                              "manifest.json"],
                  ["layers", evil], ["map", evil, "--points", evil, "-o", "a.png"],
                  ["map", "a.png", "--rotation", evil, "--points", "0,0 1,0 1,1 0,1", "-o",
                   "a.png"],
                  ["settings", "get", evil], ["settings", "set", "k", evil],
                  ["settings", "list"], ["panel", evil], ["panel", "--" + evil]):
        ended = box.run(*words, statuses=(0, 1, 2), sentence=False,
                        env={"QT_QPA_PLATFORM": "offscreen"})
        seen = {byte for byte in (ended.out + ended.err) if byte < 32 and byte not in b"\n\t"}
        text = (ended.out + ended.err).decode(errors="replace")
        yield ended.expect(not seen and "\x9b" not in text, f"{words[:2]!r} shows {seen}")
