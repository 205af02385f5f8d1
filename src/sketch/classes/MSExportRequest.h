#pragma once

#include "sketch/document/SketchLayer.h"

namespace kelvar {

/// Something that is to be exported: a layer, and how.
class KELVAR_EXPORT MSExportRequest : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  MSExportRequest(SketchLayerRef layer, double scale, const QString& format, const QString& name)
      : layer(std::move(layer)), scale(scale), format(format), name(name) {}
  /// One for each of the layer's export formats, or for a PNG in its natural size.
  static QVariantList forLayer(const SketchLayerRef& layer);

  const SketchLayerRef layer;
  /// Pixels per unit.
  double scale;
  /// The extension of the file.
  QString format;
  QString name;
};

/// A layer in its place, as newer scripts name what is to be exported.
class MSImmutableLayerAncestry : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  explicit MSImmutableLayerAncestry(SketchLayerRef layer) : layer(std::move(layer)) {}
  const SketchLayerRef layer;
};

}  // namespace kelvar
