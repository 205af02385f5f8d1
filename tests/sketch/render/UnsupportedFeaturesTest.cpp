#include "sketch/render/UnsupportedFeatures.h"

#include <gtest/gtest.h>

#include "sketch/render/TinyDocument.h"

namespace kelvar::render {
namespace {

TEST(UnsupportedFeaturesTest, NamesUnknownFeaturesInUse) {
  const struct {
    const char* style;
    QStringList unread;
  } cases[] = {
      {R"({"_class":"style","do_objectID":"A","windingRule":1,"miterLimit":10,"fills":[]})", {}},
      {R"({"_class":"style","fills":[{"_class":"fill","fillType":5,"noiseIndex":3}]})", {}},
      {R"({"_class":"style","borders":[{"_class":"border","sides":[1,0,0,0],"thickness":2}]})",
       {QStringLiteral("borders.sides")}},
      {R"({"_class":"style","borders":[{"_class":"border","isEnabled":false,"sides":[1]}]})", {}},
      {R"({"_class":"style","blurs":[{"_class":"blur","type":4,"gradient":{"stops":[]}}]})",
       {QStringLiteral("blurs.type 4"), QStringLiteral("blurs.gradient")}},
      {R"({"_class":"style","contextSettings":{"_class":"graphicsContextSettings",
          "blendMode":18,"opacity":1}})",
       {QStringLiteral("contextSettings.blendMode 18")}},
      {R"({"_class":"style","fills":[{"_class":"fill","gradient":{"_class":"gradient",
          "gradientType":2,"from":"{0, 0}","mesh":[1]}}]})",
       {QStringLiteral("fills.gradient.mesh")}},
      {R"({"_class":"style","blur":{"_class":"blur","isProgressive":false,"later":{}}})", {}},
      {R"({"_class":"style","glow":{"isEnabled":false},"halo":{"isEnabled":true}})",
       {QStringLiteral("halo")}},
  };
  for (const auto& [style, unread] : cases) {
    EXPECT_EQ(unsupportedProperties(SketchJson::parse(style)), unread) << style;
  }
}

TEST(UnsupportedFeaturesTest, NamesHowBitmapsAreCutAndStretched) {
  SketchJson bitmap = layer("bitmap", frame(0, 0, 9, 9));
  bitmap["nineSliceScale"] = "{0, 0}";
  bitmap["topLeftCornerRadius"] = 0;
  EXPECT_EQ(draw({bitmap}, 9, 9).warnings.filter(QStringLiteral("left out")), QStringList());
  bitmap["nineSliceScale"] = "{1, 1}";
  bitmap["topRightCornerRadius"] = 3;
  EXPECT_EQ(draw({bitmap}, 9, 9).warnings.filter(QStringLiteral("left out")).size(), 2);
}

TEST(UnsupportedFeaturesTest, NamesEachFeatureOncePerLayerType) {
  const SketchJson style = SketchJson::parse(
      R"({"_class":"style","fills":[{"_class":"fill","mesh":1,"color":{"red":1}}]})");
  const Drawing drawing =
      draw({rectangle(0, 0, 10, 10, style), rectangle(9, 9, 9, 9, style)}, 20, 20);
  EXPECT_EQ(drawing.at(15, 15), QColor(Qt::red));
  ASSERT_EQ(drawing.warnings.size(), 1);
  EXPECT_TRUE(drawing.warnings[0].contains(QStringLiteral("\"fills.mesh\"")));
}

TEST(UnsupportedFeaturesTest, NamesFeaturesOfFramesThemselves) {
  TinyDocument tiny;
  tiny.layers = {with(container("group", frame(0, 0, 9, 9), {}), {{"groupBehavior", 1}})};
  tiny.layers[0]["style"] = SketchJson::parse(R"({"_class":"style","halo":1})");
  const SketchDocumentRef document = tiny.open();
  ArtboardRenderer renderer(document);
  ASSERT_TRUE(renderer.render(*document->artboards()[0], 1));
  EXPECT_EQ(renderer.warnings().size(), 1);
}

/// What is behind the layer is blurred, not what is in it.
TEST(UnsupportedFeaturesTest, UnknownBlurTypesLeaveLayerSharp) {
  const SketchJson style =
      with(filled(Qt::red),
           {{"_class", "style"},
            {"blurs", SketchJson::array({{{"_class", "blur"}, {"type", 7}, {"radius", 9}}})}});
  const Drawing drawing = draw({rectangle(10, 10, 20, 20, style)}, 40, 40);
  EXPECT_EQ(drawing.at(10, 10), QColor(Qt::red));
  EXPECT_EQ(drawing.at(9, 9).alpha(), 0);
}

}  // namespace
}  // namespace kelvar::render
