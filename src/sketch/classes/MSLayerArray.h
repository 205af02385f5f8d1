#pragma once

#include "sketch/document/SketchLayer.h"

namespace kelvar {

class MSLayerArray;
using MSLayerArrayRef = std::shared_ptr<MSLayerArray>;

/// A list of layers as the host's scripts receive and pass it.
class MSLayerArray : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  explicit MSLayerArray(const QList<SketchLayerRef>& layers) : layers_(layers) {}
  /// From a layer, a list of layers, or one of these. Raises for anything else; `what` is the
  /// operation.
  static QList<SketchLayerRef> layersFrom(const QVariant& value, const char* what);
  static QVariantList toList(const QList<SketchLayerRef>& layers);

  const QList<SketchLayerRef>& layers() const { return layers_; }
  QString description() const override;

 private:
  const QList<SketchLayerRef> layers_;
};

}  // namespace kelvar
