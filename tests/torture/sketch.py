"""Short ways to make Sketch documents, images and archives for the cases."""

import io
import itertools
import json
import struct
import zipfile
import zlib

_numbers = itertools.count()


def png(width=64, height=64, color=(200, 30, 90)):
    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data)))
    row = b"\0" + bytes(color) * width
    size = struct.pack(">2I5B", width, height, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", size) +
            chunk(b"IDAT", zlib.compress(row * height, 1)) + chunk(b"IEND", b""))


def color(red=0.0, green=0.0, blue=0.0, alpha=1.0):
    return {"_class": "color", "red": red, "green": green, "blue": blue, "alpha": alpha}


def frame(x, y, width, height):
    return {"_class": "rect", "x": x, "y": y, "width": width, "height": height}


def layer(kind, name, box=(0, 0, 100, 100), **more):
    return {"_class": kind, "do_objectID": f"{name}-{next(_numbers)}", "name": name,
            "isVisible": True, "frame": frame(*box)} | more


def artboard(name, layers, box=(0, 0, 800, 800)):
    return layer("artboard", name, box, layers=layers)


def style(**more):
    return {"_class": "style", "fills": [fill()]} | more


def fill(**more):
    return {"_class": "fill", "isEnabled": True, "fillType": 0,
            "color": color(0.8, 0.4, 0.1)} | more


def curve_point(x, y, before=None, after=None):
    def at(point):
        return "{%r, %r}" % point
    return {"_class": "curvePoint", "point": at((x, y)), "curveTo": at(before or (x, y)),
            "curveFrom": at(after or (x, y)), "hasCurveTo": before is not None,
            "hasCurveFrom": after is not None, "curveMode": 1, "cornerRadius": 0}


def path(name, points, box=(0, 0, 800, 800), **more):
    return layer("shapePath", name, box, isClosed=True, points=points, style=style()) | more


def square(name, box=(100, 100, 400, 400), **more):
    corners = [(0, 0), (1, 0), (1, 1), (0, 1)]
    return path(name, [curve_point(*corner) for corner in corners], box, **more)


def document(layers, images=None):
    """The bytes of a document with one page that has these layers."""
    page = layer("page", "Page", (0, 0, 0, 0), layers=layers)
    files = {"document.json": {"_class": "document", "do_objectID": "document",
                               "currentPageIndex": 0,
                               "pages": [{"_class": "MSJSONFileReference",
                                          "_ref_class": "MSImmutablePage",
                                          "_ref": "pages/one"}]},
             "meta.json": {"version": 136, "appVersion": "72.4", "build": 110199},
             "user.json": {}, "pages/one.json": page}
    return packed({name: json.dumps(each).encode() for name, each in files.items()} |
                  (images or {}))


def packed(files):
    archive = io.BytesIO()
    with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED) as writer:
        for name, content in files.items():
            writer.writestr(name, content)
    return archive.getvalue()


def page_of(path):
    """The page of a written document, as JSON."""
    with zipfile.ZipFile(path) as archive:
        if archive.testzip():
            raise zipfile.BadZipFile("a file in the document is damaged")
        name = next(name for name in archive.namelist() if name.startswith("pages/"))
        return json.loads(archive.read(name))
