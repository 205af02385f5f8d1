"""Documents that take long to render, and two programs that change the same one."""

import random
import signal

from box import Ended, case
from sketch import (artboard, color, curve_point, document, fill, layer, page_of, path, png, square,
                    style)


def star(name, count, seed, **more):
    chance = random.Random(seed)
    return path(name, [curve_point(chance.random(), chance.random()) for _ in range(count)], **more)


def curves(count):
    chance = random.Random(1)
    def spot():
        return chance.random(), chance.random()
    return path("Curves", [curve_point(*spot(), spot(), spot()) for _ in range(count)],
                style=style(borders=[{"_class": "border", "isEnabled": True, "thickness": 40,
                                      "position": 1, "fillType": 0, "color": color()}]))


def angular():
    stops = [{"_class": "gradientStop", "position": i / 9, "color": color(i / 9, 1 - i / 9)}
             for i in range(10)]
    return fill(fillType=1, gradient={"_class": "gradient", "gradientType": 2, "from": "{0.5, 0.5}",
                                      "to": "{1, 0.5}", "elipseLength": 0, "stops": stops})


def shadow(blur, spread):
    return {"_class": "shadow", "isEnabled": True, "blurRadius": blur, "spread": spread,
            "offsetX": 5, "offsetY": 5, "color": color(alpha=0.5)}


def dashed():
    return square("Dashes", style=style(
        borders=[{"_class": "border", "isEnabled": True, "thickness": 1, "position": 0,
                  "fillType": 0, "color": color()}],
        borderOptions={"_class": "borderOptions", "isEnabled": True, "dashPattern": [0.001, 0.001],
                       "lineCapStyle": 1, "lineJoinStyle": 1}))


def boolean(count, operations=1):
    shapes = [star(f"S{i}", count, i, booleanOperation=-1 if i == 0 else i % 4)
              for i in range(operations + 1)]
    return layer("shapeGroup", "Boolean", (0, 0, 800, 800), layers=shapes, style=style(),
                 clippingMaskMode=0, hasClippingMask=False)


def text(length):
    return layer("text", "Text", (0, 0, 700, 700), attributedString={
        "_class": "attributedString", "string": "word " * length, "attributes": [
            {"_class": "stringAttribute", "location": 0, "length": 5 * length, "attributes": {
                "MSAttributedStringFontAttribute": {"_class": "fontDescriptor", "attributes": {
                    "name": "Inter-Regular", "size": 9}}}}]})


def deep_groups(count):
    inner = [square("Inner")]
    for i in range(count):
        inner = [layer("group", f"G{i}", (0, 0, 800, 800), layers=inner,
                       style={"_class": "style",
                              "contextSettings": {"_class": "graphicsContextSettings",
                                                  "blendMode": 0, "opacity": 0.99}})]
    return inner[0]


SLOW = {
    "boolean": lambda: [boolean(800)],
    "booleans": lambda: [boolean(150, 20)],
    "angular fills": lambda: [square("Fills", style=style(fills=[angular()] * 2000))],
    "curves": lambda: [curves(5000)],
    "dashes": lambda: [dashed()],
    "shadows": lambda: [star("Star", 2000, 5, style=style(
        shadows=[shadow(80, 90)] * 200, innerShadows=[shadow(80, 90)] * 200))],
    "blurs": lambda: [square(f"B{i}", style=style(
        blur={"_class": "blur", "isEnabled": True, "type": i % 4, "radius": 200, "saturation": 1,
              "motionAngle": 30, "center": "{0.5, 0.5}"})) for i in range(150)],
    "text": lambda: [text(100_000)],
    "groups": lambda: [deep_groups(150)],
    "squares": lambda: [square(f"Q{i}", (i % 700, i % 600, 90, 90)) for i in range(15_000)],
}


def slow_document(box, name):
    glass = square("Glass", (900, 100, 300, 300))
    return box.write(f"{name}.sketch", document(
        [artboard("Slow", SLOW[name]()), artboard("Mockup", [glass], (900, 0, 800, 800))]))


@case("crafted documents: render ends within 60 s")
def crafted_documents(box):
    for name in SLOW:
        ended = box.run("render", slow_document(box, name), "--artboard", "Slow", "-o", "out.png",
                        seconds=64, sentence=False)
        ended.faults = [f"{name}: {fault}" for fault in ended.faults]
        yield ended


@case("crafted documents: --timeout 3 ends all commands")
def timeouts(box):
    for name in ("boolean", "angular fills", "curves", "shadows"):
        source = slow_document(box, name)
        mapping = ["map", "artboard:Slow", "--document", source, "--layer", "Glass"]
        commands = {
            "render": ["render", source, "--artboard", "Slow", "--scale", "4", "-o", "out.png"],
            "map": [*mapping, "-o", "out.sketch"],
            "refresh": ["refresh", mapped(box, name), "-o", "out.sketch"],
        }
        for command, words in commands.items():
            ended = box.run(*words, "--timeout", "3", seconds=5, sentence=False)
            ended.faults = [f"{name}, {command}: {fault}" for fault in ended.faults]
            yield ended


def mapped(box, name):
    """A document whose refresh renders the slow artboard; made without rendering it."""
    glass = square("Glass", (100, 100, 300, 300), userInfo={"io.kelvarlabs.kelvar": {
        "quality": 1, "rotation": 0, "flip": False, "includeInArtboards": True, "image": ""}})
    slow = artboard("Slow", SLOW[name]())
    glass["userInfo"]["io.kelvarlabs.kelvar"]["artboard"] = slow["do_objectID"]
    return box.write(f"{name}-mapped.sketch", document(
        [slow, artboard("Mockup", [glass], (900, 0, 800, 800))]))


@case("crafted documents: Ctrl-C ends at once")
def interrupted(box):
    for name in ("boolean", "angular fills", "curves", "shadows"):
        source = slow_document(box, name)
        output = box.write("out.png", b"old")
        running = box.start("render", source, "--artboard", "Slow", "--scale", "4", "-o", output)
        if running.ends_within(1):
            running.wait(1)
            continue  # Already done: nothing to interrupt.
        running.signal(signal.SIGINT)
        ended = running.wait(3, statuses=(0, 1, 130, -signal.SIGINT), sentence=False)
        ended.expect(output.read_bytes() == b"old" or ended.status == 0, "the output was torn")
        yield ended


def has_design(source, name):
    artboards = page_of(source)["layers"]
    layers = [each for board in artboards for each in board["layers"] if each["name"] == name]
    return "io.kelvarlabs.kelvar" in layers[0].get("userInfo", {})


@case("two programs change one document at once")
def two_programs(box):
    design = box.write("design.png", png(600, 600))
    for _ in range(20):
        source = box.write("d.sketch", document(
            [artboard("Board", [square(name, (100, 100 + 50 * i, 300, 300))
                                for i, name in enumerate("AB")])]))
        both = [box.start("map", design, "--document", source, "--layer", name, "-o", source)
                for name in "AB"]
        ends = [running.wait(40) for running in both]
        lost = [name for name, ended in zip("AB", ends)
                if ended.status == 0 and not has_design(source, name)]
        yield Ended(seconds=max(ended.seconds for ended in ends),
                    faults=ends[0].faults + ends[1].faults).expect(not lost, "a change was lost")
