"""Designs and archives crafted, or damaged, to cost far more than their size suggests."""

import pathlib
import random

from box import EXAMPLE, ROOT, case
from sketch import png

SEEDS = ROOT / "tests" / "fuzz" / "seeds"
POINTS = "0,0 400,60 380,600 10,560"


def svg(content, head=""):
    return (f'<?xml version="1.0"?>{head}<svg xmlns="http://www.w3.org/2000/svg" '
            f'xmlns:xlink="http://www.w3.org/1999/xlink" viewBox="0 0 600 600">{content}</svg>')


def zigzag(count):
    return " ".join(f"{'M' if i == 0 else 'L'}{i * 7 % 600} {i * 13 % 600}" for i in range(count))


def entities(depth, width):
    """Each refers `width` times to the previous one."""
    lines = ['<!ENTITY e0 "xxxxxxxxxx">']
    lines += [f'<!ENTITY e{i} "{f"&e{i - 1};" * width}">' for i in range(1, depth)]
    return "<!DOCTYPE svg [" + "".join(lines) + "]>", f"&e{depth - 1};"


def nested_uses(depth):
    groups = '<g id="u0"><rect width="9" height="9"/></g>'
    for i in range(1, depth):
        groups += f'<g id="u{i}">' + f'<use xlink:href="#u{i - 1}"/>' * 10 + "</g>"
    return f'<defs>{groups}</defs><use xlink:href="#u{depth - 1}"/>'


def stroked(path, more):
    return f'<path d="{path}" fill="none" stroke="black" {more}/>'


def svgs():
    long = f'<!DOCTYPE svg [<!ENTITY a "{"x" * 4000}">]>'
    head, name = entities(12, 10)
    yield "entity", svg(f"<text>{'&a;' * 200_000}</text>", long)
    yield "entity in attributes", svg('<g id="&a;&a;"/>' * 20_000, long)
    yield "entities of entities", svg(f"<text>{name}</text>", head)
    yield "dashes", svg(stroked(zigzag(10_000), 'stroke-dasharray="0.1"'))
    yield "uneven dashes", svg(stroked("M-1e9 300 L1e9 300", 'stroke-dasharray="0.001 0.002"'))
    yield "round joins", svg(stroked(zigzag(60_000), 'stroke-width="300" stroke-linejoin="round" '
                                     'stroke-linecap="round"'))
    yield "attributes", svg("<g " + " ".join(f'a{i}="{i}"' for i in range(80_000)) + "/>")
    yield "uses", svg(nested_uses(12))
    yield "depth", svg("<g>" * 200_000 + "</g>" * 200_000)
    yield "stops", svg('<linearGradient id="g">' + '<stop offset="0.5"/>' * 100_000 +
                       '</linearGradient><rect width="600" height="600" fill="url(#g)"/>')
    yield "points", svg(f'<path d="{zigzag(300_000)}" fill-rule="evenodd"/>')
    yield "many layers", svg('<rect width="600" height="600" opacity="0.5"/>' * 50_000)
    yield "huge numbers", svg(stroked("M0 0 L1e38 1e38 C1e38 0 0 1e38 1 1", 'stroke-width="1e30"'))
    yield "text", svg(f'<text font-size="9">{"wide " * 400_000}</text>')
    yield "text as large as can be", svg('<text font-size="1e7">W</text>' * 100)


@case("crafted SVG")
def crafted_svg(box):
    for name, content in svgs():
        design = box.write(name + ".svg", content)
        for more in ([], ["--onto", box.write("photo.png", png(640, 640))])[:1 + (name == "uses")]:
            ended = box.run("map", design, "--points", POINTS, *more, "-o", "out.png", seconds=12)
            ended.faults = [f"{name}: {fault}" for fault in ended.faults]
            yield ended


def dotted(depth):
    """Keys with dots on the path of an unresolvable alias."""
    tree = {}
    for _ in range(depth):
        tree = {"a": tree, "a.a": {}}
    return tree


def written(tree):
    """JSON, without the recursion limit of Python's encoder."""
    parts, stack = [], [tree]
    while stack:
        item = stack.pop()
        if isinstance(item, str):
            parts.append(item)
        elif isinstance(item, dict):
            stack.append("}")
            for index, (key, value) in enumerate(reversed(item.items())):
                stack += [",", value] if index else [value]
                stack.append(f'"{key}":')
            stack.append("{")
    return "".join(parts)


def archives():
    def alias(to):
        return '{"$alias":"%s"}' % to
    dots = "." * 2000
    yield "empty keys", '{"":' * 400 + f"[{','.join([alias(dots)] * 20)}]" + "}" * 400
    yield "dots", '{"a":' * 400 + f"[{','.join([alias('a.' * 900)] * 30)}]" + "}" * 400
    yield "keys with dots", written({"x": alias("a." * 900), "y": dotted(250)})
    yield "many", "[" + ",".join(alias(i + 1) for i in range(20_000)) + "]"
    yield "circle", "[" + ",".join(alias((i + 1) % 20_000) for i in range(20_000)) + "]"
    yield "long", "[" + ",".join([alias("a" * 200_000)] * 50) + "]"
    yield "far", '{"a":' * 300 + "1" + "}" * 300 + ""
    yield "data in data", '{"$data":' * 300 + '""' + "}" * 300
    yield "wide", '{"l":[%s],"a":[%s]}' % (",".join(["1"] * 3000),
                                           ",".join(alias(f"l.{i}") for i in range(3000)))
    yield "index", "[" * 400 + alias("0." * 399 + "0") + "]" * 400
    yield "lists of aliases", "[" * 200 + ",".join([alias("0." * 400 + "1")] * 200) + "]" * 200


@case("crafted archives")
def crafted_archives(box):
    for name, content in archives():
        path = box.write(name + ".json", content)
        for words in (["show", path], ["convert", path, "-o", "out.plist"],
                      ["convert", path, "-o", "out.json"]):
            ended = box.run("archive", *words)
            ended.faults = [f"{name}, {words[0]}: {fault}" for fault in ended.faults]
            yield ended


@case("fuzz seeds, through the program")
def seeds(box):
    for folder in ("Archive", "Json", "OpenStepPlist", "PropertyList"):
        for seed in sorted((SEEDS / folder).iterdir()):
            ended = box.run("archive", "show", seed)
            ended.faults = [f"{seed.name}: {fault}" for fault in ended.faults]
            yield ended


def damaged(original, chance):
    """One to eight bytes or ranges changed, removed or doubled, or the end truncated."""
    data = bytearray(original)
    for _ in range(chance.randint(1, 8)):
        at = chance.randrange(max(len(data), 1))
        length = chance.choice((1, 1, 1, 4, 64, len(data) // 4))
        kind = chance.randrange(5)
        if kind == 0:
            data[at:at + length] = b""
        elif kind == 1:
            data[at:at] = data[at:at + length]
        elif kind == 2 and chance.random() < 0.3:
            del data[at:]
        else:
            data[at:at + 1] = bytes([chance.choice((0, 255, 127, chance.randrange(256)))])
    return bytes(data)


@case("damaged images, documents, archives, settings")
def damaged_files(box):
    design = box.write("design.png", png())
    for name in ("a.jpg", "a.webp"):
        box.make("map", design, "--points", "0,0 60,0 60,60 0,60", "-o", name)
    box.write("a.svg", svg(stroked(zigzag(20), "")))
    box.make("a.sketch", program=EXAMPLE)
    box.make("settings", "set", "some.key", "some value")
    originals = {"a.png": design, "a.jpg": box.path("a.jpg"), "a.webp": box.path("a.webp"),
                 "a.svg": box.path("a.svg"), "a.sketch": box.path("a.sketch"),
                 "a.bplist": SEEDS / "Archive" / "all.bplist",
                 "a.plist": SEEDS / "Archive" / "all.xml",
                 "a.json": SEEDS / "Archive" / "cycle.json",
                 "a.sqlite": box.path("settings.sqlite")}
    chance = random.Random(13)
    for name, original in originals.items():
        content = pathlib.Path(original).read_bytes()
        for turn in range(30):
            path = box.write("damaged-" + name, damaged(content, chance))
            yield box.run(*command_for(path, turn), env={"KELVAR_DEFAULTS": str(path)}
                          if name == "a.sqlite" else {}, sentence=name != "a.sketch")


def command_for(path, turn):
    if path.suffix == ".sketch":
        return [["layers", path], ["render", path, "-o", "out.png"],
                ["render", path, "--artboard", "Mockup", "-o", "out.png"]][turn % 3]
    if path.suffix == ".sqlite":
        return [["settings", "list"], ["settings", "set", "k", "v"]][turn % 2]
    if path.suffix in (".bplist", ".plist", ".json"):
        return [["archive", "show", path], ["archive", "convert", path, "-o", "out.json"]][turn % 2]
    return ["map", path, "--points", POINTS, "-o", "out.png"]
