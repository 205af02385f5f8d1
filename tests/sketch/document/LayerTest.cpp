#include "sketch/document/Layer.h"

#include <gtest/gtest.h>

namespace kelvar {
namespace {

SketchJson parsed(const char* text) {
  size_t values = 1000;
  const auto json = readSketchJson(text, &values);
  EXPECT_TRUE(json) << text;
  return json.value_or(SketchJson::object());
}

TEST(LayerTest, IsWrittenAsItWasRead) {
  const struct {
    const char* json;
    size_t children;
  } cases[] = {
      {R"({})", 0},
      {R"({"a":1.0,"layers":[],"b":null})", 0},
      {R"({"a":1,"layers":[{"layers":[{"x":"\"ü"},{}]},{"y":[{}]}],"b":{"layers":[{}]}})", 2},
      {R"({"layers":[{"a":1}],"layers":[{"a":2},{"a":3}],"layers":7})", 1},
      {R"({"layers":[{"a":1},2]})", 0},
      {R"({"layers":{"a":1}})", 0},
  };
  for (const auto& [json, children] : cases) {
    const Layer layer(parsed(json));
    EXPECT_EQ(layer.children().size(), children) << json;
    std::string text;
    layer.appendTo(&text);
    EXPECT_EQ(text, json);
    EXPECT_EQ(layer.toJson().dump(), json);
  }
}

TEST(LayerTest, DecodesAgainAfterAChange) {
  Layer layer(parsed(R"({"_class":"oval","name":"a","style":{"fills":[{}]},"layers":[{}]})"));
  const Layer* const child = layer.children()[0].get();
  EXPECT_EQ(&layer.properties(), &layer.properties());
  EXPECT_EQ(layer.properties().kind, LayerKind::Oval);
  EXPECT_EQ(layer.style().fills.size(), 1);
  layer.change()["name"] = "b";
  layer.change()["style"]["fills"] = SketchJson::array();
  EXPECT_EQ(layer.properties().name, u"b");
  EXPECT_TRUE(layer.style().fills.isEmpty());
  EXPECT_EQ(layer.children()[0].get(), child);
}

TEST(LayerTest, ReadsArchivedNames) {
  const QByteArray archive = R"(<plist version="1.0"><dict><key>$objects</key><array>
      <string>$null</string><string>Home</string></array><key>$top</key><dict><key>root</key>
      <dict><key>CF$UID</key><integer>1</integer></dict></dict></dict></plist>)";
  const struct {
    SketchJson name;
    const char* expected;
  } cases[] = {{"Home", "Home"},
               {{{"_archive", archive.toBase64().toStdString()}}, "Home"},
               {{{"_archive", "AAAA"}}, ""},
               {{{"_archive", 7}}, ""},
               {7, ""}};
  for (const auto& [name, expected] : cases) {
    EXPECT_EQ(Layer(SketchJson::object({{"name", name}})).properties().name,
              QString::fromLatin1(expected))
        << name;
  }
}

TEST(LayerTest, TellsKindsApart) {
  const struct {
    const char* json;
    bool isShape, isArtboard, isFrame, clips;
  } cases[] = {
      {R"({"_class":"star"})", true, false, false, false},
      {R"({"_class":"shapeGroup"})", false, false, false, false},
      {R"({"_class":"symbolMaster"})", false, true, false, true},
      {R"({"_class":"artboard","clippingBehavior":2})", false, true, false, false},
      {R"({"_class":"group"})", false, false, false, false},
      {R"({"_class":"group","groupBehavior":1})", false, false, true, true},
      {R"({"_class":"layerOfTheFuture"})", false, false, false, false},
  };
  for (const auto& [json, isShape, isArtboard, isFrame, clips] : cases) {
    const Layer layer(parsed(json));
    const LayerProperties& properties = layer.properties();
    EXPECT_EQ(properties.isShape(), isShape) << json;
    EXPECT_EQ(properties.isArtboard(), isArtboard) << json;
    EXPECT_EQ(properties.isFrame, isFrame) << json;
    EXPECT_EQ(properties.clipsContent, clips) << json;
  }
}

}  // namespace
}  // namespace kelvar
