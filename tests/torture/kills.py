"""Kills at random times: files have the old or the new content, and later runs work."""

import random
import signal

from box import EXAMPLE, ROOT, Ended, case
from designs import svgs
from server import answering, http
from sketch import page_of, png


def killed(box, words, chance, longest, **how):
    """Starts the program and kills it within `longest` seconds; true if it had ended before."""
    running = box.start(*words, **how)
    done = running.ends_within(chance.uniform(0, longest))
    if not done:
        running.signal(signal.SIGKILL)
    ended = running.wait(10, statuses=(0, -signal.SIGKILL))
    return ended, done


def try_kills(box, words, output, count, is_whole):
    """Kills `count` runs that write `output`, then lets one finish."""
    chance = random.Random(13)
    longest = box.make(*words).seconds * 1.1
    for _ in range(count):
        ended, _ = killed(box, words, chance, longest)
        yield ended.expect(is_whole(output), f"{output} is torn")
    yield box.run(*words, statuses=(0,), seconds=30).expect(is_whole(output), f"{output} is torn")


@case("kills of map, render, archive convert")
def images(box):
    design, points = ROOT / "examples" / "design.png", "0,0 600,0 600,600 0,600"
    box.make("d.sketch", program=EXAMPLE)
    box.make("settings", "set", "k", "v")
    items = ",".join(f'{{"key": "value {i}"}}' for i in range(60_000))
    archive = box.write("a.json", f"[{items}]")
    for words, name in ((["map", design, "--points", points, "-o", "o.png"], "o.png"),
                        (["map", design, "--points", points, "-o", "o.jpg"], "o.jpg"),
                        (["render", "d.sketch", "--artboard", "Mockup", "-o", "r.png"], "r.png"),
                        (["archive", "convert", archive, "-o", "a.bplist"], "a.bplist")):
        box.make(*words)
        new = box.path(name).read_bytes()
        box.write(name, b"old")
        yield from try_kills(box, words, box.path(name), 30,
                             lambda path, new=new: path.read_bytes() in (b"old", new))


@case("kills of map and refresh on a document")
def documents(box):
    source = box.path("d.sketch")
    box.make(source, program=EXAMPLE)

    def is_whole(path):
        return page_of(path)["layers"]
    mapping = ["map", "artboard:Screen", "--document", source, "--layer", "Glass", "-o", source]
    yield from try_kills(box, mapping, source, 30, is_whole)
    yield from try_kills(box, ["refresh", source, "--in-place"], source, 30, is_whole)


@case("kills of settings set")
def settings(box):
    chance = random.Random(13)
    longest = box.make("settings", "set", "k", "0").seconds * 1.1
    kept = "0"
    for turn in range(1, 61):
        value = str(turn) * 2000
        ended, done = killed(box, ["settings", "set", "k", value], chance, longest)
        stored = box.run("settings", "get", "k", statuses=(0,)).out.decode().strip()
        ended.expect(stored in (kept, value), "the value is torn")
        yield ended.expect(stored == value or not done, "an acknowledged write is lost")
        kept = stored
    yield Ended().expect(not [name for name in box.names() if b"damaged" in name], "set aside")


@case("kills of messages, check-version, scripts")
def servers(box):
    chance = random.Random(13)
    script = box.write("s.js", "var k = Kelvar.new(); for (var i = 0; i < 20; i++) { "
                               "k.trackForEvent_properties_('e', {}); "
                               "KVPersister.new().setObject_forKey_(i, 'i') }")
    reply = http(b'{"success": true, "messages": [{"fields": {"ID": 1, "Message": "m"}}]}')
    with answering(reply) as server:
        environment = {"KELVAR_API_SERVER": server.address,
                       "KELVAR_ANALYTICS_SERVER": server.address}
        for words in (["messages"], ["check-version"], ["run", script]):
            longest = box.run(*words, env=environment).seconds * 1.1
            for _ in range(15):
                ended, _ = killed(box, words, chance, longest, env=environment)
                listed = box.run("settings", "list")
                ended.faults += listed.faults
                yield ended.expect(listed.status == 0 and not listed.err, "the store is damaged")


@case("kills while an SVG is drawn")
def drawings(box):
    """The separate process that draws them ends with its parent."""
    box.write("slow.svg", dict(svgs())["dashes"])
    for number in (signal.SIGKILL, signal.SIGTERM, signal.SIGINT):
        for words in (["map", "slow.svg", "--points", "0,0 400,60 380,600 10,560", "-o", "o.png"],
                      ["panel", box.write("photo.png", png(900, 900)), "--design", "slow.svg"]):
            running = box.start(*words, env={"QT_QPA_PLATFORM": "offscreen"})
            early = running.ends_within(1.5)
            running.signal(number)
            ended = running.wait(6, statuses=(0, 1, 128 + number, -number), sentence=False)
            ended.expect(not early, f"ended by itself: {ended.said}")
            ended.faults = [f"{words[0]}, {number.name}: {fault}" for fault in ended.faults]
            yield ended


@case("Ctrl-C and SIGTERM of all commands")
def interrupts(box):
    chance = random.Random(13)
    box.make("d.sketch", program=EXAMPLE)
    script = box.write("s.js", "for (;;);")
    design = ROOT / "examples" / "design.png"
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        for words in (["map", design, "--points", "0,0 3000,0 3000,3000 0,3000", "-o", "o.png"],
                      ["render", "d.sketch", "--artboard", "Mockup", "--scale", "3", "-o", "r.png"],
                      ["map", "artboard:Screen", "--document", "d.sketch", "--layer", "Glass", "-o",
                       "m.sketch"], ["run", script], ["panel", design]):
            running = box.start(*words, env={"QT_QPA_PLATFORM": "offscreen"})
            running.ends_within(chance.uniform(0.05, 0.5))
            running.signal(number)
            ended = running.wait(4, statuses=(0, 1, 128 + number, -number), sentence=False)
            ended.faults = [f"{words[0]}, {number.name}: {fault}" for fault in ended.faults]
            yield ended
