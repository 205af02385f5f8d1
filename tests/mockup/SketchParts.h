#pragma once

#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "geometry/PointList.h"
#include "platform/files/ZipArchive.h"
#include "sketch/document/DocumentFiles.h"
#include "sketch/document/SketchDocument.h"

/// Small in-memory documents. They contain only what the tests look at.
namespace kelvar::parts {

inline SketchJson layer(const char* kind, const std::string& name, const QRectF& frame,
                        const SketchJson& more = SketchJson::object()) {
  SketchJson layer{{"_class", kind},
                   {"do_objectID", name + "-id"},
                   {"name", name},
                   {"isVisible", true},
                   {"frame",
                    {{"_class", "rect"},
                     {"x", frame.x()},
                     {"y", frame.y()},
                     {"width", frame.width()},
                     {"height", frame.height()}}}};
  layer.update(more);
  return layer;
}

inline SketchJson group(const char* kind, const std::string& name, const QRectF& frame,
                        const std::vector<SketchJson>& layers,
                        const SketchJson& more = SketchJson::object()) {
  SketchJson group = layer(kind, name, frame, more);
  group["layers"] = layers;
  return group;
}

inline SketchJson color(double red, double green, double blue) {
  return {{"_class", "color"}, {"red", red}, {"green", green}, {"blue", blue}, {"alpha", 1}};
}

/// An artboard of 20 by 20 with a background that is black or as red as given.
inline SketchJson board(const std::string& name, const std::vector<SketchJson>& layers,
                        double red = 0) {
  return group("artboard", name, {0, 0, 20, 20}, layers,
               {{"hasBackgroundColor", true},
                {"includeBackgroundColorInExport", true},
                {"backgroundColor", color(red, 0, 0)}});
}

inline SketchJson filled(const SketchJson& color) {
  return {
      {"style",
       {{"_class", "style"},
        {"fills",
         SketchJson::array(
             {{{"_class", "fill"}, {"isEnabled", true}, {"fillType", 0}, {"color", color}}})}}}};
}

/// `points`: each is "x, y" in the unit square, optionally followed by a radius.
inline SketchJson points(const std::vector<std::array<double, 3>>& points) {
  SketchJson list = SketchJson::array();
  for (const auto& [x, y, radius] : points) {
    const std::string at = stringFromPoint({x, y}).toStdString();
    list.push_back({{"_class", "curvePoint"},
                    {"point", at},
                    {"curveFrom", at},
                    {"curveTo", at},
                    {"hasCurveFrom", false},
                    {"hasCurveTo", false},
                    {"cornerRadius", radius}});
  }
  return list;
}

inline QByteArray packed(const std::map<QString, QByteArray>& files) {
  return *ZipArchive::read({}).value()->written(files, {});
}

/// document.json, meta.json and a page "Page" with these layers.
inline std::map<QString, QByteArray> files(const std::vector<SketchJson>& layers) {
  const SketchJson document{
      {"_class", "document"},
      {"currentPageIndex", 0},
      {"pages", SketchJson::array({{{"_class", "MSJSONFileReference"}, {"_ref", "pages/one"}}})}};
  const SketchJson meta{{"version", 136}, {"appVersion", "72.4"}, {"build", 110199}};
  return {{QStringLiteral("document.json"), writeSketchJson(document)},
          {QStringLiteral("meta.json"), writeSketchJson(meta)},
          {QStringLiteral("pages/one.json"),
           writeSketchJson(group("page", "Page", {0, 0, 0, 0}, layers))}};
}

inline SketchDocumentRef opened(const QByteArray& bytes) {
  const auto document = SketchDocument::read(bytes, QStringLiteral("test"));
  EXPECT_TRUE(document) << document.error().message;
  return document.value_or(nullptr);
}

inline SketchDocumentRef document(const std::vector<SketchJson>& layers) {
  return opened(packed(files(layers)));
}

/// The only layer with that name.
inline SketchLayerRef named(const SketchDocumentRef& document, const char* name) {
  const auto found = document->layersNamed(QString::fromUtf8(name));
  EXPECT_EQ(found.size(), 1) << name;
  return found.value(0);
}

}  // namespace kelvar::parts
