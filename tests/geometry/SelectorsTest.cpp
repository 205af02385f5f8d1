#include <gtest/gtest.h>

#include <QSet>

#include "geometry/KVImageTransform.h"
#include "geometry/KVShape.h"
#include "geometry/Points.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

QStringList words(const char* text) { return QString::fromLatin1(text).split(u' '); }

TEST(SelectorsTest, DescribesEverySelector) {
  const struct {
    const char* name;
    const char* selectors;
  } classes[] = {
      {"KVRect", "init x setX: y setY: width setWidth: height setHeight: CGRect"},
      {"KVBezierPath",
       "pointsFromBezierPath: bezierPathWithPoints: edgesLengthPoint1:point2: sumPoints: "
       "bezierPathIsClockwise: bezierPathReversed:"},
      {"KVLayerIterator", "init extractPointsFromLayer:"},
      {"KVShape",
       "init initWithBounds:path: bounds setBounds: path setPath: scale setScale: realSize "
       "scaledSize croppingRect scaledCroppingRect normalizedPoints edgesLengthPoint1:point2: "
       "sumPoints: pointsAreClockwised: reversedPoints:"},
      {"KVImageTransform",
       "init input setInput: scale setScale: rotation setRotation: flipped setFlipped: tl setTl: "
       "tr setTr: br setBr: bl setBl: sampling setSampling: extent setExtent: points createOutput "
       "getCIImageFromNSImage: getNSImage:"},
      {"KVImage",
       "getCGImage: scaleImage:size: fillImage:insideBounds:scale:shouldTrimTransparent: "
       "fillImage:insideBounds:scale:shouldTrimTransparent:shadow: cropImage:withBounds:"},
  };
  for (const auto& [name, selectors] : classes) {
    const ClassInfo* const found = ClassInfo::find(QString::fromLatin1(name));
    ASSERT_TRUE(found) << name;
    QStringList described;
    for (const auto& operation : found->operations()) described.append(operation.selector);
    described.sort();
    QStringList wanted = words(selectors);
    wanted.sort();
    EXPECT_EQ(described, wanted) << name;
  }
}

TEST(SelectorsTest, MapsDesignThroughSelectors) {
  const ClassInfo& shapes = *ClassInfo::find(u"KVShape"_s);
  const QVariantList path{u"{10, 0}"_s, u"{110, 0}"_s, u"{110, 40}"_s, u"{10, 40}"_s};
  const QVariant bounds = QVariant::fromValue<ObjectRef>(KVRectMake(5, 6, 100, 40));
  const ObjectRef shape = shapes.create(u"initWithBounds:path:"_s, {bounds, path});
  ASSERT_TRUE(shape);
  EXPECT_TRUE(shape->setValueForKey(2.0, u"scale"_s));
  EXPECT_EQ(shapes.call(*shape, u"scaledSize"_s), QVariant(QSizeF(220, 80)));
  EXPECT_EQ(shape->valueForKeyPath(u"bounds.width"_s), QVariant(100.0));
  const auto cropping = shapes.call(*shape, u"croppingRect"_s).value();
  EXPECT_EQ(cropping.value<ObjectRef>()->description(), u"{5, 6, 100, 40}"_s);
  EXPECT_FALSE(shapes.create(u"initWithBounds:path:"_s, {QVariant::fromValue(shape), path}));

  const ClassInfo& transforms = *ClassInfo::find(u"KVImageTransform"_s);
  const ObjectRef transform = transforms.create(u"init"_s);
  QImage pixels(8, 4, QImage::Format_ARGB32_Premultiplied);
  pixels.fill(Qt::red);
  const QVariant input = QVariant::fromValue(std::make_shared<Image>(pixels));
  EXPECT_TRUE(transforms.call(*transform, u"setInput:"_s, {input}));
  EXPECT_TRUE(transforms.call(*transform, u"setFlipped:"_s, {1}));
  EXPECT_EQ(transforms.call(*transform, u"points"_s)->toStringList().first(), u"{8, 0}"_s);
  const QVariant output = transforms.call(*transform, u"createOutput"_s).value();
  EXPECT_EQ(output.value<ImageRef>()->size(), QSizeF(8, 4));
  const QVariantList fill{output, bounds, 1, false};
  const auto filled =
      ClassInfo::find(u"KVImage"_s)
          ->callClass(u"fillImage:insideBounds:scale:shouldTrimTransparent:"_s, fill);
  EXPECT_EQ(filled->value<ImageRef>()->size(), QSizeF(100, 40));
}

}  // namespace
}  // namespace kelvar
