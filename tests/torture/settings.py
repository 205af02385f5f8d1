"""The settings file: foreign, damaged, newer, read-only; its location without HOME."""

import pwd
import sqlite3

from box import IS_ROOT, NOBODY, Ended, case
from sketch import png

COMMANDS = (["settings", "list"], ["settings", "get", "k"], ["settings", "set", "k", "v"],
            ["settings", "remove", "k"], ["messages"], ["analytics"], ["analytics", "reset"])


def database(path, *statements):
    with sqlite3.connect(path) as connection:
        for statement in statements:
            connection.execute(statement)
    connection.close()
    return path


def foreign(box):
    """Files that are not settings files."""
    yield "an image", box.write("f/image.png", png())
    yield "a text", box.write("f/text", "This is not a settings file.\n" * 200)
    yield "another application's", database(
        box.write("f/other.sqlite", b""), "PRAGMA application_id = 0x0f055112",
        "CREATE TABLE notes (text)", "INSERT INTO notes VALUES ('mine')")
    yield "a database of nobody's", database(
        box.write("f/nobody.sqlite", b""), "CREATE TABLE notes (text)",
        "INSERT INTO notes VALUES ('mine')")
    yield "a newer one", database(
        box.write("f/newer.sqlite", b""), "PRAGMA application_id = 0x4b565344",
        "PRAGMA user_version = 2",
        "CREATE TABLE settings (key TEXT NOT NULL PRIMARY KEY, value BLOB NOT NULL) WITHOUT ROWID")


@case("other files are rejected and left alone")
def foreign_stores(box):
    for name, path in foreign(box):
        before = box.tree()
        for command in COMMANDS[:4]:
            ended = box.run(*command, env={"KELVAR_DEFAULTS": str(path)}, statuses=(1,))
            ended.expect(box.tree() == before, "something was changed")
            ended.faults = [f"{name}, {' '.join(command)}: {fault}" for fault in ended.faults]
            yield ended


def damage(path):
    content = bytearray(path.read_bytes())
    for page in range(1024, len(content), 512):
        content[page:page + 64] = b"\xa5" * 64
    path.write_bytes(content)


@case("a damaged settings file is reported once")
def damaged_store(box):
    # The default location.
    own = {"KELVAR_DEFAULTS": None, "XDG_CONFIG_HOME": str(box.path("config"))}
    path = box.path("config/kelvar/settings.sqlite")
    script = box.write("s.js", "var p = KVPersister.new(); for (var i = 0; i < 5; i++) "
                               "p.setObject_forKey_(i, 'k' + i)")
    for command in (*COMMANDS, ["run", script]):
        box.make("settings", "set", "k", "v" * 9000, env=own)
        damage(path)
        ended = box.run(*command, env=own, sentence=False)
        named = ended.err.count(b".damaged-")
        yield ended.expect(named == 1, f"{' '.join(map(str, command))}: named {named} times")
        ended = box.run("settings", "list", env=own, statuses=(0,))
        yield ended.expect(b".damaged-" not in ended.err, "named again")
    kept = list(path.parent.glob("*.damaged-*"))
    yield Ended().expect(len(kept) == len(COMMANDS) + 1, f"{len(kept)} damaged files are kept")


@case("an unwritable settings file is reported once")
def read_only_store(box):
    folder = box.path("store")
    folder.mkdir(mode=0o555)
    folder.chmod(0o555)
    writes = box.write("w.js", "var p = KVPersister.new(); for (var i = 0; i < 5; i++) "
                               "p.setObject_forKey_(i, 'k' + i)")
    starts = box.write("k.js", "var k = Kelvar.new(); k.trackForEvent_properties_('e', {})")
    for path in ("store/s.sqlite", "/proc/s.sqlite"):
        for command in (["run", writes], ["run", starts], ["settings", "set", "k", "v"]):
            ended = box.run(*command, nobody=True, sentence=False,
                            env={"KELVAR_DEFAULTS": str(box.path(path))})
            lines = ended.err.count(b"\n")
            yield ended.expect(lines == 1, f"{command[0]}: {lines} lines: {ended.said}")


@case("without HOME, the home folder on record is used")
def no_home(box):
    if not IS_ROOT:
        return  # It would be the home folder of the user who runs this.
    home = pwd.getpwuid(NOBODY).pw_dir
    ended = box.run("settings", "set", "k", "v", nobody=True, statuses=(1,),
                    env={"HOME": None, "KELVAR_DEFAULTS": None})
    yield ended.expect(home.encode() + b"/.config" in ended.err, f"not in {home}: {ended.said}")


@case("many programs write the settings at once")
def many_writers(box):
    for turn in range(5):
        keys = [f"t{turn}.{i}" for i in range(8)]
        running = [box.start("settings", "set", key, key) for key in keys]
        ends = [each.wait(40, statuses=(0,)) for each in running]
        for key, ended in zip(keys, ends):
            value = box.run("settings", "get", key).out.strip()
            yield ended.expect(value == key.encode(), "an acknowledged write is lost")
