#pragma once

#include <gtest/gtest.h>

#include <QColor>
#include <vector>

#include "mockup/SketchParts.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar::render {

/// Makes a JSON array even of a single element, where JSON's own braces would make a copy.
using List = std::vector<SketchJson>;

/// Short ways to write layers of Sketch documents.
inline SketchJson color(const QColor& c) {
  return {{"_class", "color"},
          {"red", c.redF()},
          {"green", c.greenF()},
          {"blue", c.blueF()},
          {"alpha", c.alphaF()}};
}

inline SketchJson frame(double x, double y, double width, double height) {
  return {{"_class", "rect"}, {"x", x}, {"y", y}, {"width", width}, {"height", height}};
}

inline SketchJson fill(const QColor& c) { return {{"fillType", 0}, {"color", color(c)}}; }

inline SketchJson filled(const QColor& c) {
  SketchJson style;
  style["fills"] = SketchJson::array({fill(c)});
  return style;
}

inline SketchJson layer(const char* kind, const SketchJson& frame, const SketchJson& style = {}) {
  SketchJson layer = {{"_class", kind}, {"name", kind}, {"frame", frame}};
  layer["style"] = style.is_null() ? SketchJson::object() : style;
  return layer;
}

inline SketchJson rectangle(double x, double y, double width, double height,
                            const SketchJson& style) {
  return layer("rectangle", frame(x, y, width, height), style);
}

/// `layer` with additional members, which replace existing ones.
inline SketchJson with(SketchJson layer, const SketchJson& members) {
  for (const auto& [key, value] : members.items()) layer[key] = value;
  return layer;
}

inline SketchJson container(const char* kind, const SketchJson& frame, const List& layers) {
  return with(layer(kind, frame), {{"layers", layers}});
}

/// Teeth across a square of `side`, horizontally or vertically.
inline SketchJson comb(int teeth, double side, bool isAcross) {
  SketchJson points = SketchJson::array();
  for (int i = 0; i < 2 * teeth; ++i) {
    const double along = 0.05 + 0.45 * i / teeth, end = i % 2 == 0 ? 0.05 : 0.95;
    const QPointF at = isAcross ? QPointF(end, along) : QPointF(along, end);
    points.push_back({{"point", stringFromPoint(at).toStdString()}});
  }
  return with(layer("shapePath", frame(0, 0, side, side)),
              {{"isClosed", true}, {"points", points}});
}

struct TinyDocument {
  /// On one page.
  List layers;
  SketchJson document = {{"layerStyles", {{"objects", SketchJson::array()}}}};
  int version = 130;
  /// The version of Sketch, such as "95.3".
  const char* appVersion = "";
  std::map<QString, QByteArray> files;

  SketchDocumentRef open() const {
    const SketchJson page = {{"_class", "page"},
                             {"name", "Page"},
                             {"do_objectID", "PAGE"},
                             {"frame", frame(0, 0, 0, 0)},
                             {"layers", layers}};
    SketchJson json = document;
    json["_class"] = "document";
    json["pages"] = SketchJson::array({{{"_class", "MSJSONFileReference"},
                                        {"_ref_class", "MSImmutablePage"},
                                        {"_ref", "pages/PAGE"}}});
    std::map<QString, QByteArray> all = files;
    const auto add = [&](const char* name, const SketchJson& value) {
      all[QString::fromLatin1(name)] = QByteArray::fromStdString(value.dump());
    };
    add("document.json", json);
    add("meta.json", {{"version", version}, {"appVersion", appVersion}});
    add("user.json", SketchJson::object());
    add("pages/PAGE.json", page);
    return parts::opened(parts::packed(all));
  }
};

/// Draws an artboard of this size with the document's layers.
struct Drawing {
  QImage image;
  QStringList warnings;

  QColor at(int x, int y) const { return image.pixelColor(x, y); }
};

inline Drawing drawDocument(TinyDocument tiny, double width, double height, double scale = 1) {
  tiny.layers = {container("artboard", frame(0, 0, width, height), tiny.layers)};
  const SketchDocumentRef document = tiny.open();
  if (!document) return {};
  ArtboardRenderer renderer(document);
  const auto image = renderer.render(*document->artboards().last(), scale);
  EXPECT_TRUE(image) << image.error().message;
  return {image ? (*image)->pixels() : QImage(), renderer.warnings()};
}

inline Drawing draw(const List& layers, double width, double height) {
  TinyDocument tiny;
  tiny.layers = layers;
  return drawDocument(tiny, width, height);
}

}  // namespace kelvar::render
