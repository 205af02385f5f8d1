"""File names, and what exists where a file is written."""

import contextlib
import os

from box import EXAMPLE, IS_ROOT, NOBODY, Ended, case
from sketch import artboard, document, png, square

NAMES = (b"caf\xe9", b"caf\xe8", b"\xff\xfe", "é".encode(), b"line\nbreak", b"\x1b[31m", b"-dash",
         b" ", b"%1 %s", b"x" * 240)


@case("file names are bytes")
def names_are_bytes(box):
    design = box.write("design.png", png())
    points = ("--points", "0,0 60,0 60,60 0,60")
    for name in NAMES:
        before = set(box.names())
        ended = box.run("map", design, *points, "-o", b"./" + name + b".png")
        made = set(box.names()) - before
        yield ended.expect(made == {name + b".png"}, f"{name!r} made {made}")

    box.make(b"caf\xe9.sketch", program=EXAMPLE)
    box.make("archive", "convert", box.write("a.json", '{"a": 1}'), "-o", b"caf\xe9.plist")
    box.write("hello.js", "log(1)").rename(os.fsdecode(os.fsencode(box.folder) + b"/caf\xe9.js"))
    box.write("arrangement.json", "{}")
    document_name, image = b"caf\xe9.sketch", b"caf\xe9.png"
    for words, output in (
            (["layers", document_name], None),
            (["render", document_name, "--artboard", "Mockup", "-o", b"r\xe9.png"], b"r\xe9.png"),
            (["map", image, *points, "-o", b"m\xe9.jpg"], b"m\xe9.jpg"),
            (["map", image, "--onto", image, *points, "-o", b"o\xe9.webp"], b"o\xe9.webp"),
            (["map", image, "--document", document_name, "--layer", "Glass", "-o",
              b"d\xe9.sketch"], b"d\xe9.sketch"),
            (["refresh", document_name, "-o", b"f\xe9.sketch"], b"f\xe9.sketch"),
            (["refresh", document_name, "--in-place"], document_name),
            (["archive", "show", b"caf\xe9.plist"], None),
            (["archive", "convert", b"caf\xe9.plist", "-o", b"c\xe9.json"], b"c\xe9.json"),
            (["run", b"caf\xe9.js"], None),
            (["run", b"caf\xe9.js", "--document", document_name], None)):
        ended = box.run(*words, statuses=(0,))
        yield ended.expect(output is None or output in box.names(), f"{output!r} is not there")


@case("file names are bytes in kelvar panel")
def names_in_the_panel(box):
    box.make(b"caf\xe9.sketch", program=EXAMPLE)
    box.write("a", png()).rename(os.fsdecode(os.fsencode(box.folder) + b"/caf\xe9.png"))
    for words in (["panel", b"caf\xe9.png"], ["panel", b"caf\xe9.png", "--design", b"caf\xe9.png"],
                  ["panel", b"caf\xe9.sketch"]):
        running = box.start(*words, env={"QT_QPA_PLATFORM": "offscreen"})
        if not running.ends_within(2):
            running.signal(15)
        # A file that cannot be opened ends the program with 1.
        yield running.wait(10, statuses=(0, -15))


def writers(box):
    """A command for each kind of output, and the output."""
    design = box.write("design.png", png(300, 300))
    archive = box.write("a.json", '{"a": 1}')
    source = box.write("d.sketch", document([artboard("Board", [square("Glass")])]))
    points = ("--points", "0,0 60,0 60,60 0,60")
    for ending in ("png", "jpg", "webp"):
        yield ["map", design, *points, "-o", f"out.{ending}"], f"out.{ending}"
    yield ["render", source, "--artboard", "Board", "-o", "r.png"], "r.png"
    yield (["map", design, "--document", source, "--layer", "Glass", "-o", "out.sketch"],
           "out.sketch")
    yield ["refresh", source, "-o", "f.sketch"], "f.sketch"
    for ending in ("plist", "bplist", "json"):
        yield ["archive", "convert", archive, "-o", f"out.{ending}"], f"out.{ending}"


@case("overwriting keeps owner, group, mode, attributes")
def overwriting(box):
    for words, output in writers(box):
        path = box.write(output, b"old")
        path.chmod(0o640)
        if IS_ROOT:
            os.chown(path, NOBODY, NOBODY)
        attribute = None
        with contextlib.suppress(OSError):  # Not every file system supports them.
            os.setxattr(path, "user.note", b"mine")
            attribute = b"mine"
        before = path.stat()
        ended = box.run(*words, statuses=(0,))
        after = path.stat()
        ended.expect(path.read_bytes() != b"old", f"{output}: nothing was written")
        ended.expect((before.st_uid, before.st_gid) == (after.st_uid, after.st_gid),
                     f"{output}: owner or group is lost")
        ended.expect(before.st_mode == after.st_mode, f"{output}: the mode is lost")
        if attribute:
            kept = "user.note" in os.listxattr(path)
            ended.expect(kept, f"{output}: an extended attribute is lost")
        yield ended


@case("overwriting through links")
def links(box):
    for words, output in writers(box):
        path = box.write(output, b"old")
        other = box.path("other-" + output)
        other.unlink(missing_ok=True)
        os.link(path, other)
        ended = box.run(*words, statuses=(0,))
        yield ended.expect(other.read_bytes() in (b"old", path.read_bytes()),
                           f"{output}: a hard link was torn")
        path.unlink()
        path.symlink_to("target-" + output)
        box.write("target-" + output, b"old")
        ended = box.run(*words, statuses=(0,))
        target = box.path("target-" + output)
        yield ended.expect(path.is_symlink() and target.read_bytes() != b"old",
                           f"{output}: a symbolic link was replaced")
        target.unlink()
        ended = box.run(*words)
        written = target.exists() or not path.is_symlink()
        yield ended.expect(written == (ended.status == 0), f"{output}: a dangling link")
        path.unlink()
        path.mkdir()
        ended = box.run(*words, statuses=(1,))
        yield ended.expect(path.is_dir(), f"{output}: a folder was replaced")
        path.rmdir()


@case("no temporary files are left beside an output")
def leftovers(box):
    for words, output in writers(box):
        before = set(box.names())
        ended = box.run(*words, statuses=(0,))
        extra = set(box.names()) - before - {output.encode()}
        yield ended.expect(not extra, f"{output}: left {sorted(extra)}")


@case("twenty programs write one file")
def one_output(box):
    design = box.write("design.png", png(300, 300))
    points = ("--points", "0,0 600,0 600,600 0,600")
    whole = set()
    for flip in ([], ["--flip"]):
        box.make("map", design, *points, *flip, "-o", "out.png")
        whole.add(box.path("out.png").read_bytes())
    for _ in range(5):
        running = [box.start("map", design, *points, *(["--flip"] if i % 2 else []), "-o",
                             "out.png") for i in range(4)]
        ends = [each.wait(30) for each in running]
        yield Ended(seconds=max(each.seconds for each in ends),
                    faults=[fault for each in ends for fault in each.faults]).expect(
                        box.path("out.png").read_bytes() in whole, "the file was torn")
