"""Full disks, few threads, little memory, no display."""

import re

from box import BUILD, EXAMPLE, IS_ROOT, case
from server import answering, http
from sketch import artboard, document, png, square

# Runs a command in the folder `full`, a private disk of 48 kB.
SMALL_DISK = ("unshare", "--mount", "sh", "-ec",
              'mount -t tmpfs -o size=48k torture "$PWD/full"; "$@" && s=0 || s=$?; ls -A full; '
              "exit $s", "sh")
READ_ONLY_DISK = ("unshare", "--mount", "sh", "-ec",
                  'mount -t tmpfs -o size=48k,ro torture "$PWD/full"; exec "$@"', "sh")
FULL = re.compile(rb"No space left|disk is full|Disk quota")
TOO_LARGE = re.compile(rb"File too large|too large|limit")
READ_ONLY = re.compile(rb"[Rr]ead-only|[Pp]ermission")


def noise(count):
    """Incompressible text."""
    state, parts = 1, []
    for _ in range(count // 8):
        state = state * 6364136223846793005 + 1442695040888963407 & (1 << 64) - 1
        parts.append(f"{state >> 32:08x}")
    return "".join(parts)


def writing(box, folder):
    """A command for each kind of output; each output takes more than 48 kB."""
    design = BUILD.parents[1] / "examples" / "design.png"
    archive = box.write("a.json", '{"a": "%s"}' % noise(400_000))
    source = box.write("d.sketch", document(
        [artboard("Board", [square("Glass", (0, 0, 600, 600))])], {"images/x": noise(200_000)}))
    points = ("--points", "0,0 600,0 600,600 0,600")
    for ending in ("png", "jpg", "webp"):
        yield ["map", design, *points, "-o", f"{folder}out.{ending}"]
    yield ["map", design, "--document", source, "--layer", "Glass", "-o", f"{folder}out.sketch"]
    yield ["map", design, "--document", source, "--layer", "Glass", "-o", f"{folder}out.png"]
    yield ["refresh", source, "-o", f"{folder}f.sketch"]
    for ending in ("plist", "bplist", "json"):
        yield ["archive", "convert", archive, "-o", f"{folder}out.{ending}"]


def store(box, path):
    return {"KELVAR_DEFAULTS": str(box.path(path))}


SETTING = ("settings", "set", "k", noise(100_000))


@case("a full disk is reported, nothing is left on it")
def full_disk(box):
    box.path("full").mkdir()
    if not IS_ROOT or box.run(program="true", prefix=SMALL_DISK).status != 0:
        return  # Requires permission to mount; the next case does not.
    for words in writing(box, "full/"):
        ended = box.run(*words, prefix=SMALL_DISK, statuses=(1,))
        ended.expect(FULL.search(ended.err), f"{words[-1]}: not named: {ended.said}")
        yield ended.expect(not ended.out.strip(), f"{words[-1]}: left {ended.out[:80]!r}")
    ended = box.run(*SETTING, prefix=SMALL_DISK, statuses=(1,), env=store(box, "full/s.sqlite"))
    yield ended.expect(FULL.search(ended.err), f"settings: not named: {ended.said}")


@case("a file size limit is reported")
def file_limit(box):
    for words in writing(box, ""):
        before = set(box.names()) | {b"a.json", b"d.sketch"}
        ended = box.run(*words, limits=["--fsize=20000"], statuses=(1,))
        ended.expect(TOO_LARGE.search(ended.err), f"{words[-1]}: not named: {ended.said}")
        left = set(box.names()) - before
        yield ended.expect(not left, f"{words[-1]}: left {sorted(left)}")
    ended = box.run(*SETTING, limits=["--fsize=20000"], statuses=(1,))
    yield ended.expect(TOO_LARGE.search(ended.err), f"settings: not named: {ended.said}")


@case("a read-only disk or folder is reported")
def read_only(box):
    box.path("full").mkdir()
    for words in writing(box, "full/"):
        if IS_ROOT and box.run(program="true", prefix=READ_ONLY_DISK).status == 0:
            ended = box.run(*words, prefix=READ_ONLY_DISK, statuses=(1,))
            yield ended.expect(READ_ONLY.search(ended.err), f"{words[-1]}: not named: {ended.said}")
        box.path("full").chmod(0o555)
        ended = box.run(*words, nobody=True, statuses=(1,))
        box.path("full").chmod(0o755)
        yield ended.expect(READ_ONLY.search(ended.err), f"{words[-1]}: not named: {ended.said}")


@case("a full standard output is reported")
def standard_output(box):
    archive = box.write("a.json", '{"a": "%s"}' % noise(400_000))
    box.make("d.sketch", program=EXAMPLE)
    box.make("settings", "set", "k", "v")
    script = box.write("s.js", "log('x'.repeat(100000))")
    into_full = ("sh", "-c", 'exec "$@" > /dev/full', "sh")
    for words in (["map", BUILD.parents[1] / "examples" / "design.png", "--points",
                   "0,0 60,0 60,60 0,60", "-o", "-"],
                  ["render", "d.sketch", "--artboard", "Screen", "-o", "-"],
                  ["render", "d.sketch", "--artboard", "Screen", "--json", "-o", "r.png"],
                  ["archive", "show", archive], ["archive", "convert", archive, "--to", "xml",
                                                 "-o", "-"],
                  ["layers", "d.sketch"], ["layers", "d.sketch", "--json"], ["settings", "list"],
                  ["settings", "get", "k"], ["analytics"], ["run", script],
                  ["--help"], ["--version"]):
        ended = box.run(*words, prefix=into_full, statuses=(1,), sentence=words[0] != "run")
        yield ended.expect(FULL.search(ended.err), f"{' '.join(map(str, words[:2]))}: not named: "
                                                   f"{ended.said}")


@case("no threads available")
def no_threads(box):
    box.make("d.sketch", program=EXAMPLE)
    design = box.write("design.png", png(1200, 1200))
    points = ("--points", "0,0 1500,0 1500,1500 0,1400")
    script = box.write("s.js", "log(1)")
    with answering(http(b'{"success": true, "messages": []}')) as server:
        for words, statuses in (
                (["map", design, *points, "-o", "o.png"], (0,)),
                (["map", design, *points, "--threads", "4", "-o", "o.webp"], (0,)),
                (["map", design, *points, "-o", "o.jpg"], (0,)),
                (["layers", "d.sketch"], (0,)),
                (["render", "d.sketch", "--artboard", "Mockup", "-o", "r.png"], (0,)),
                (["map", "artboard:Screen", "--document", "d.sketch", "--layer", "Glass", "-o",
                  "m.sketch"], (0,)),
                (["refresh", "d.sketch", "-o", "f.sketch"], (0,)),
                (["settings", "set", "k", "v"], (0,)),
                (["messages"], (0, 1)), (["check-version"], (0, 1)),
                (["run", script], (0, 1)), (["panel", design], (1,))):
            ended = box.run(*words, nobody=True, limits=["--nproc=1"], statuses=statuses,
                            env={"KELVAR_API_SERVER": server.address}, seconds=20)
            ended.faults = [f"{words[0]}: {fault}" for fault in ended.faults]
            yield ended


@case("no display, a display that is gone, an unknown platform")
def displays(box):
    photo = box.write("a.png", png())
    script = box.write("s.js", "log(1)")
    for environment in ({}, {"DISPLAY": ":987"}, {"DISPLAY": "nowhere:0"},
                        {"WAYLAND_DISPLAY": "wayland-987", "XDG_RUNTIME_DIR": str(box.folder)},
                        {"QT_QPA_PLATFORM": "nonsense"}):
        for words, statuses in ((["panel", photo], (1,)), (["panel"], (1,)),
                                (["run", script], (0, 1))):
            ended = box.run(*words, env=environment, statuses=statuses)
            ended.faults = [f"{words[0]}, {environment}: {fault}" for fault in ended.faults]
            yield ended


@case("too little address space")
def address_space(box):
    box.make("d.sketch", program=EXAMPLE)
    design = box.write("design.png", png(1500, 1500))
    script = box.write("s.js", "var a = []; for (var i = 0; i < 1e6; i++) a.push([i]); log(1)")
    large = box.write("a.json", "[%s]" % ",".join(["{}"] * 500_000))
    for words, start in (
            (["map", design, "--points", "0,0 4000,0 4000,4000 0,3900", "-o", "o.png"], "kelvar"),
            (["map", design, "--points", "0,0 4000,0 4000,4000 0,3900", "-o", "o.webp"], "kelvar"),
            (["render", "d.sketch", "--artboard", "Screen", "--scale", "8", "-o", "r.png"],
             "kelvar"),
            (["map", "artboard:Screen", "--document", "d.sketch", "--layer", "Glass", "--scale",
              "4", "-o", "m.sketch"], "kelvar"),
            (["layers", "d.sketch"], "kelvar"), (["archive", "show", large], "kelvar"),
            (["messages"], "kelvar"), (["run", script], "kelvar-run"),
            (["panel", "missing.png"], "kelvar-panel")):
        least = least_to_start(box, start)
        for more in (4, 16, 40, 80, 160, 320):
            ended = box.run(*words, limits=[f"--as={least + (more << 20)}"], sentence=False,
                            env={"QT_QPA_PLATFORM": "offscreen"},
                            seconds=20, statuses=(0, 1))
            lines = [line for line in ended.err.splitlines() if line]
            ended.expect(ended.status == 0 or len(lines) == 1, f"{len(lines)} lines: {ended.said}")
            ended.faults = [f"{words[0]}, {more} MiB: {fault}" for fault in ended.faults]
            yield ended


def least_to_start(box, name):
    """The smallest address space in which the program loads, to within 4 MiB."""
    low, high = 0, 1 << 36
    while high - low > 4 << 20:
        middle = (low + high) // 2
        ended = box.run("--version", program=str(BUILD / name), limits=[f"--as={middle}"],
                        env={"QT_QPA_PLATFORM": "offscreen"})
        low, high = (low, middle) if ended.status == 0 else (middle, high)
    return high
