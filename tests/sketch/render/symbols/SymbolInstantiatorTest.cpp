#include "sketch/render/symbols/SymbolInstantiator.h"

#include <gtest/gtest.h>

#include "platform/image/OffscreenGuiApplication.h"
#include "sketch/render/TinyDocument.h"
#include "sketch/render/text/TextRuns.h"

namespace kelvar::render {
namespace {

/// The text of a symbol, in Inter-Regular at 12, with this override.
SketchJson changed(const char* property, const SketchJson& value) {
  SketchJson run = {{"location", 0}, {"length", 1}};
  run["attributes"]["MSAttributedStringFontAttribute"]["attributes"] = {{"name", "Inter-Regular"},
                                                                        {"size", 12}};
  SketchJson text = with(layer("text", frame(0, 0, 10, 14)), {{"do_objectID", "T"}});
  text["attributedString"]["string"] = "a";
  text["attributedString"]["attributes"] = SketchJson::array({run});
  TinyDocument tiny;
  tiny.layers = {with(container("symbolMaster", frame(0, 0, 40, 14), {text}), {{"symbolID", "S"}})};
  const SketchJson change = {{"overrideName", std::string("T_") + property}, {"value", value}};
  QStringList warnings;
  int measures = 1;
  const SketchJson result =
      instantiateSymbol(with(layer("symbolInstance", frame(0, 0, 40, 14)),
                             {{"symbolID", "S"}, {"overrideValues", SketchJson::array({change})}}),
                        *tiny.open(), &measures, &warnings);
  EXPECT_EQ(warnings, QStringList()) << property;
  return result["layers"][0];
}

TEST(SymbolInstantiatorTest, OverridesSingleTextAttributes) {
  const OffscreenGuiApplication fonts;
  const auto styleOf = [](const char* property, const SketchJson& value) {
    return readTextRuns(changed(property, value)).runs[0].style;
  };
  for (const SketchJson& size : {SketchJson(20), SketchJson("20")}) {
    EXPECT_EQ(styleOf("textSize", size).size, 20);
    EXPECT_EQ(styleOf("fontSize", size).size, 20);
    EXPECT_EQ(styleOf("textLetterSpacing", size).kerning, 20);
    EXPECT_EQ(styleOf("textLineHeight", size).paragraph.maxLineHeight, 20);
    EXPECT_EQ(styleOf("textParagraphSpacing", size).paragraph.spacing, 20);
  }
  EXPECT_EQ(styleOf("textSize", 20).font, QStringLiteral("Inter-Regular"));
  EXPECT_EQ(styleOf("textWeight", "Bold").font, QStringLiteral("Inter-Bold"));
  EXPECT_EQ(styleOf("textColor", color(QColor(255, 0, 0))).color, QColor(255, 0, 0));
  EXPECT_EQ(styleOf("textHorizontalAlignment", 2).paragraph.alignment,
            ParagraphStyle::Alignment::Center);
  EXPECT_EQ(styleOf("textTransform", 1).letters, CharacterStyle::Case::Upper);
  for (const SketchJson& hidden : {SketchJson(false), SketchJson("0"), SketchJson("false")}) {
    EXPECT_FALSE(getBool(changed("isVisible", hidden), "isVisible", true)) << hidden;
  }
  EXPECT_TRUE(getBool(changed("isVisible", "1"), "isVisible", true));
}

}  // namespace
}  // namespace kelvar::render
