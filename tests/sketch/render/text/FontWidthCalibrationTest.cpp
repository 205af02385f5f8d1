#include "sketch/render/text/FontWidthCalibration.h"

#include <gtest/gtest.h>

#include "mockup/SketchParts.h"
#include "platform/image/OffscreenGuiApplication.h"
#include "sketch/render/text/FontMatcher.h"
#include "sketch/render/text/TextLayout.h"

namespace kelvar::render {
namespace {

using namespace Qt::StringLiterals;

/// A document with texts in `font`, whose frames are as wide as the texts are in `widths`.
SketchDocumentRef documentOf(const QString& font, const QString& widths, int count) {
  std::vector<SketchJson> texts;
  for (int i = 0; i < count; ++i) {
    const QString characters = u"Every width %1"_s.arg(i);
    CharacterStyle style;
    style.font = widths;
    style.size = 20;
    const QSizeF size = layoutText({characters, {{0, characters.size(), style}}},
                                   {.size = {}, .fitsText = false, .ink = {}})
                            .size;
    SketchJson text = parts::layer("text", "T", {0, 0, size.width(), size.height()});
    text["textBehaviour"] = 0;
    text["attributedString"] = {{"_class", "attributedString"},
                                {"string", characters.toStdString()}};
    text["attributedString"]["attributes"] =
        SketchJson::array({{{"location", 0},
                            {"length", characters.size()},
                            {"attributes",
                             {{"MSAttributedStringFontAttribute",
                               {{"attributes", {{"name", font.toStdString()}, {"size", 20}}}}}}}}});
    texts.push_back(text);
  }
  return parts::opened(parts::packed(parts::files(texts)));
}

TEST(FontWidthCalibrationTest, ChoosesTheStandInWithTheWidthsOfTheDocument) {
  const OffscreenGuiApplication fonts;
  const struct {
    const char* font;
    const char* widths;
    int count;
    const char* standIn;
  } cases[] = {{"NoSuchFont", "DejaVuSans", 4, "DejaVu Sans"},
               {"NoSuchFont", "Cantarell-Regular", 4, "Cantarell"},
               {"NoSuchFont", "Inter-Regular", 4, "Inter"},
               {"NoSuchFont", "DejaVuSans", 2, "Inter"},
               {"NoSuchSerif", "C059-Roman", 4, "C059"},
               {"NoSuchSerif", "DejaVuSerif", 4, "DejaVu Serif"},
               {"NoSuchMono", "NimbusMonoPS-Regular", 4, "DejaVu Sans Mono"}};
  for (const auto& [font, widths, count, standIn] : cases) {
    if (!matchFont(QString::fromLatin1(widths)).isInstalled) continue;
    const QString name = QString::fromLatin1(font);
    const auto document = documentOf(name, QString::fromLatin1(widths), count);
    const FontWidthCalibration found = calibrateFontWidths(*document).value(name);
    EXPECT_EQ(matchFont(name, found.standIn).font.family().toStdString(), standIn)
        << font << " as wide as " << widths;
  }
}

TEST(FontMatcherTest, ReplacesFontsByOnesOfTheirClass) {
  const OffscreenGuiApplication fonts;
  const std::pair<const char*, const char*> cases[] = {{"NoSuchFont-Bold", "Inter"},
                                                       {"Poppins-Medium", "Inter"},
                                                       {"BrandSerif-Regular", "Liberation Serif"},
                                                       {"BrandSansSerif", "Inter"},
                                                       {"BrandMono-Light", "DejaVu Sans Mono"},
                                                       {"SignatureScript", "Z003"},
                                                       {"Helvetica", "Liberation Sans"},
                                                       {"AppleColorEmoji", "Noto Color Emoji"}};
  for (const auto& [name, family] : cases) {
    const FontMatch match = matchFont(QString::fromLatin1(name));
    EXPECT_EQ(match.font.family().toStdString(), family) << name;
    EXPECT_FALSE(match.isInstalled) << name;
  }
  EXPECT_EQ(matchFont(u"NoSuchFont"_s, u"C059"_s).font.family(), u"Inter"_s);
}

}  // namespace
}  // namespace kelvar::render
