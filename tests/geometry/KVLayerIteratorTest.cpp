#include "geometry/KVLayerIterator.h"

#include <gtest/gtest.h>

#include "geometry/KVBezierPath.h"
#include "geometry/Points.h"

namespace kelvar {
namespace {

/// A layer with children, or a child with a path.
class Layer : public Object {
 public:
  QVariant valueForKey(const QString& key) const override {
    if (key == u"layers") return layers;
    return key == u"bezierPath" ? path : QVariant();
  }
  QVariant layers;
  QVariant path;
};

QVariant child(const char* text) {
  auto layer = std::make_shared<Layer>();
  layer->path = QVariant::fromValue(KVBezierPath::bezierPathWithPoints(points(text)));
  return QVariant::fromValue<ObjectRef>(layer);
}

TEST(KVLayerIteratorTest, ReadsFirstChildClockwise) {
  const QVariantMap bare{{QStringLiteral("name"), QStringLiteral("a child without a path")}};
  const struct {
    const char* what;
    QVariant layers;
    const char* points;
  } cases[] = {
      {"clockwise", QVariantList{child("1,1 9,1 9,9 1,9")}, "1,1 9,1 9,9 1,9"},
      {"counter-clockwise", QVariantList{child("1,1 1,9 9,9 9,1")}, "1,1 9,1 9,9 1,9"},
      {"two children", QVariantList{child("0,0 5,0 5,5"), child("1,1 9,1 9,9 1,9")}, "0,0 5,0 5,5"},
      {"no path", QVariantList{bare}, ""},
      {"no children", QVariantList{}, ""},
      {"no layers", {}, ""},
      {"not a list", 5, ""},
  };
  for (const auto& [what, layers, expected] : cases) {
    auto layer = std::make_shared<Layer>();
    layer->layers = layers;
    EXPECT_EQ(KVLayerIterator().extractPointsFromLayer(layer), points(expected)) << what;
  }
  EXPECT_EQ(KVLayerIterator().extractPointsFromLayer(nullptr), PointList());
}

}  // namespace
}  // namespace kelvar
