#include "sketch/classes/MSLayerArray.h"

#include "runtime/ClassInfo.h"
#include "runtime/raise.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Self = MSLayerArray;

const ClassInfo::Registration kRegistered(&MSLayerArray::staticClassInfo);

MSLayerArrayRef made(const QVariant& layers) {
  return std::make_shared<Self>(Self::layersFrom(layers, "arrayWithLayers:"));
}

SketchLayerRef layerAt(const Self& self, int index) {
  if (index < 0 || index >= self.layers().size()) {
    raise(u"the list has no layer at %1, only %2 in all"_s.arg(index).arg(self.layers().size()));
  }
  return self.layers()[index];
}

QVariantList list(const Self& self) { return Self::toList(self.layers()); }
int count(const Self& self) { return int(self.layers().size()); }
SketchLayerRef first(const Self& self) { return self.layers().value(0); }
SketchLayerRef last(const Self& self) { return self.layers().value(self.layers().size() - 1); }

/// Steps through a list of layers.
class LayerEnumerator : public Object {
 public:
  static const ClassInfo& staticClassInfo() {
    static const ClassInfo kClass =
        ClassInfoBuilder<LayerEnumerator>("MSLayerEnumerator")
            .operation("nextObject", &LayerEnumerator::next, "Returns the next layer, or nil.");
    return kClass;
  }
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  explicit LayerEnumerator(const QList<SketchLayerRef>& layers) : layers_(layers) {}
  SketchLayerRef next() { return layers_.value(next_++); }

 private:
  const QList<SketchLayerRef> layers_;
  qsizetype next_ = 0;
};

}  // namespace

const ClassInfo& MSLayerArray::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSLayerArray")
          .classOperation("arrayWithLayers:", made, "Creates a list of these layers.")
          .classOperation("arrayWithLayer:", made, "Creates a list of this layer.")
          .operation("layers", list, "Returns the layers as an ordinary list.")
          .operation("containedLayers", list, "Returns the layers as an ordinary list.")
          .operation("count", count, "Returns how many layers there are.")
          .operation("containedLayersCount", count, "Returns how many layers there are.")
          .operation("objectAtIndex:", layerAt, "Returns a layer by its index.")
          .operation("layerAtIndex:", layerAt, "Returns a layer by its index.")
          .operation("firstObject", first, "Returns the first layer, or nil.")
          .operation("firstLayer", first, "Returns the first layer, or nil.")
          .operation("lastObject", last, "Returns the last layer, or nil.")
          .operation("lastLayer", last, "Returns the last layer, or nil.")
          .operation(
              "containsObject:",
              [](const Self& self, const SketchLayerRef& layer) {
                return self.layers().contains(layer);
              },
              "Returns whether the layer is in the list.")
          .operation(
              "isEmpty", [](const Self& self) { return self.layers().isEmpty(); },
              "Returns whether there are no layers.")
          .operation(
              "objectEnumerator",
              [](const Self& self) { return std::make_shared<LayerEnumerator>(self.layers()); },
              "Returns an object whose nextObject steps through the layers.");
  return kClass;
}

QList<SketchLayerRef> MSLayerArray::layersFrom(const QVariant& value, const char* what) {
  const ObjectRef object = value.value<ObjectRef>();
  if (const auto layer = std::dynamic_pointer_cast<SketchLayer>(object)) return {layer};
  if (const auto array = std::dynamic_pointer_cast<MSLayerArray>(object)) return array->layers();
  const QString wanted = u"%1 takes a list of layers"_s.arg(QString::fromLatin1(what));
  if (value.typeId() != QMetaType::QVariantList) raise(wanted);
  QList<SketchLayerRef> layers;
  for (const QVariant& element : value.toList()) {
    layers.append(std::dynamic_pointer_cast<SketchLayer>(element.value<ObjectRef>()));
    if (!layers.last()) raise(wanted + u", with nothing else in it"_s);
  }
  return layers;
}

QVariantList MSLayerArray::toList(const QList<SketchLayerRef>& layers) {
  QVariantList list;
  list.reserve(layers.size());
  for (const SketchLayerRef& layer : layers) list.append(toVariant(layer));
  return list;
}

QString MSLayerArray::description() const {
  return u"<MSLayerArray of %1 layers>"_s.arg(layers_.size());
}

}  // namespace kelvar
