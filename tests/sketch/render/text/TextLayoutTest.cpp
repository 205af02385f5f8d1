#include "sketch/render/text/TextLayout.h"

#include <gtest/gtest.h>

#include "platform/image/OffscreenGuiApplication.h"
#include "sketch/render/text/FontMatcher.h"

namespace kelvar::render {
namespace {

using Behavior = TextBox::Behavior;
using Vertical = TextBox::Vertical;
using Alignment = ParagraphStyle::Alignment;

/// Roboto at 100: capitals are 71.1 high; ascent and descent 93 and 24, on Windows 105 and 27.
constexpr double kCapital = 71.1;

class TextLayoutTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!matchFont(QStringLiteral("Roboto-Regular")).isInstalled) GTEST_SKIP() << "no Roboto";
  }

  static TextRuns runs(const QString& text, const CharacterStyle& style) {
    return {text, {{0, text.size(), style}}};
  }
  static CharacterStyle style() {
    CharacterStyle style;
    style.font = QStringLiteral("Roboto-Regular");
    style.size = 100;
    return style;
  }

  const OffscreenGuiApplication fonts_;
};

TEST_F(TextLayoutTest, PlacesBaselines) {
  constexpr auto kFont = TextBox::Metrics::Font, kWindows = TextBox::Metrics::Windows,
                 kFrame = TextBox::Metrics::Frame;
  const struct {
    double least, most;
    bool isOld;
    TextBox::Metrics metrics;
    double frame, baseline, height;
  } cases[] = {{0, 0, false, kFont, 132, 93, 117},    {0, 0, true, kWindows, 0, 105, 132},
               {150, 150, false, kFont, 0, 110, 150}, {150, 150, true, kWindows, 0, 123, 150},
               {80, 80, false, kFont, 0, 74, 80},     {200, 0, false, kFont, 0, 135, 200},
               {0, 0, false, kFrame, 132, 105, 132},  {0, 0, false, kFrame, 117, 93, 117},
               {0, 0, false, kFrame, 150, 93, 117}};
  for (const auto& [least, most, isOld, metrics, frame, baseline, height] : cases) {
    CharacterStyle style = this->style();
    style.paragraph.minLineHeight = least;
    style.paragraph.maxLineHeight = most;
    const TextLayout shape = layoutText(
        runs(QStringLiteral("H"), style),
        {.size = {72, frame}, .hasOldLineSpacing = isOld, .metrics = metrics, .ink = {}});
    EXPECT_NEAR(shape.outline().boundingRect().bottom(), baseline, 1.01) << least << frame;
    EXPECT_NEAR(shape.outline().boundingRect().height(), kCapital, 0.2);
    EXPECT_EQ(shape.size.height(), height);
  }
}

/// Also in fonts that have it without colors, in the font of the design's platform, and when it was
/// laid out before.
TEST_F(TextLayoutTest, SetsEmojiInTheEmojiFont) {
  if (!matchFont(QStringLiteral("NotoColorEmoji")).isInstalled) GTEST_SKIP() << "no emoji";
  const struct {
    const char* font;
    const char* text;
    int emoji;
  } cases[] = {{"Roboto-Regular", "A😀B👍🏽", 2},
               {"DejaVuSans", "😀😀", 2},
               {"AppleColorEmoji", "😀A", 1},
               {"NoSuchFont", "😀 ♥", 1},
               {"Helvetica", "AZ ⏩ ☔", 2},
               {"Roboto-Regular", "♥ ☺", 0}};
  for (const auto& [font, text, emoji] : cases) {
    CharacterStyle style = this->style();
    style.font = QString::fromLatin1(font);
    const TextRuns measured = runs(QString::fromUtf8(text), style);
    const TextLayout first = layoutText(measured, {.size = {}, .fitsText = false, .ink = {}});
    const TextLayout second = layoutText(measured, {.size = {}, .fitsText = false, .ink = {}});
    qsizetype colored = 0;
    for (const TextLayout::GlyphRun& run : first.runs) colored += run.colorGlyphs.size();
    EXPECT_EQ(colored, emoji) << text;
    EXPECT_EQ(first.size, second.size) << text;
    EXPECT_LT(first.size.height(), 160) << text;
    EXPECT_GT(first.size.width(), 100 * emoji) << text;
  }
}

TEST_F(TextLayoutTest, BeginsBaselinesAtWholePixels) {
  const TextLayout text = layoutText(runs(QStringLiteral("H\nH"), style()),
                                     {.size = {72, 234}, .fitsText = false, .ink = {}});
  const double scale = 0.7;
  // Baselines at 93 and 210, and what they become.
  const struct {
    QTransform toImage;
    double first, second;
  } cases[] = {{QTransform(), 93, 210},
               {QTransform::fromTranslate(0, 0.3), 94, 211},
               {QTransform::fromTranslate(5, -1e-5), 93, 210},
               {QTransform::fromScale(scale, scale), 66, 147},
               {QTransform(1, 0, 0, -1, 0, 300.5), 207.5, 90.5},
               {QTransform(1, 0.1, -0.1, 1, 0, 0.5), 93.5, 210.5}};
  for (const auto& [toImage, first, second] : cases) {
    const TextLayout moved = text.onPixels(toImage);
    const auto baseline = [&](qsizetype i) {
      const QPointF corner(0, moved.runs[i].path.boundingRect().bottom());
      return toImage.map(corner).y();
    };
    ASSERT_EQ(moved.runs.size(), 2);
    EXPECT_NEAR(baseline(0), first, 0.02);
    EXPECT_NEAR(baseline(1), second, 0.02);
  }
}

TEST_F(TextLayoutTest, BeginsGlyphsAtPartsOfPixels) {
  // Where a glyph begins whose place is 0.9.
  const struct {
    double size, scale, begin;
  } cases[] = {{6, 1, 0.875}, {8, 1, 0.875}, {12, 1, 0.75}, {16, 1, 0.75},    {20, 1, 0.5},
               {32, 1, 0.5},  {33, 1, 0},    {200, 1, 0},   {100, 0.1, 0.75}, {4, 4, 0.75}};
  for (const auto& [size, scale, begin] : cases) {
    CharacterStyle style = this->style();
    style.size = size;
    const TextLayout text =
        layoutText(runs(QStringLiteral("HI"), style), {.size = {}, .fitsText = false, .ink = {}});
    const QTransform toImage(scale, 0, 0, scale, 0.9, 0);
    const TextLayout moved = text.onPixels(toImage);
    const auto left = [&](const QPainterPath& path) { return path.boundingRect().left() * scale; };
    EXPECT_NEAR(left(moved.outline()) + 0.9, left(text.outline()) + begin, 1e-3) << size;
    // The next glyph by itself.
    const QPainterPath before = text.outline(), after = moved.outline();
    const int last = before.elementCount() - 1;
    const double gap = (before.elementAt(last).x - after.elementAt(last).x) * scale;
    EXPECT_GE(gap, -1e-3) << size;
    EXPECT_LT(gap, 1) << size;
  }
}

TEST_F(TextLayoutTest, AlignsLines) {
  const struct {
    Alignment alignment;
    double middle;
  } cases[] = {{Alignment::Left, 35.7},
               {Alignment::Natural, 35.7},
               {Alignment::Center, 200},
               {Alignment::Right, 364.3}};
  for (const auto& [alignment, middle] : cases) {
    CharacterStyle style = this->style();
    style.paragraph.alignment = alignment;
    for (const Behavior behavior : {Behavior::AutoWidth, Behavior::AutoHeight}) {
      const TextLayout shape =
          layoutText(runs(QStringLiteral("H"), style),
                     {.size = {400, 117}, .behavior = behavior, .fitsText = false, .ink = {}});
      EXPECT_NEAR(shape.outline().boundingRect().center().x(), middle, 0.3) << int(alignment);
    }
  }
}

TEST_F(TextLayoutTest, BreaksLinesAtFrameAndLineFeeds) {
  CharacterStyle style = this->style();
  style.paragraph.spacing = 10;
  const QString words = QStringLiteral("Hi Hi Hi");
  const struct {
    QString text;
    double width;
    Behavior behavior;
    double height;
  } cases[] = {{words, 250, Behavior::AutoHeight, 2 * 117},
               {words, 250, Behavior::AutoWidth, 117},
               {words, 1000, Behavior::AutoHeight, 117},
               {QStringLiteral("a\nb"), 1000, Behavior::AutoWidth, 2 * 117 + 10},
               {QStringLiteral("a\n\nb\n"), 1000, Behavior::AutoWidth, 4 * 117 + 30},
               {QString(), 1000, Behavior::AutoWidth, 117}};
  for (const auto& [text, width, behavior, height] : cases) {
    const TextLayout shape =
        layoutText(runs(text, style),
                   {.size = {width, 100}, .behavior = behavior, .fitsText = false, .ink = {}});
    EXPECT_EQ(shape.size.height(), height) << qPrintable(text);
  }
}

/// As lists of old documents have them: two lines in a frame of 300.
TEST_F(TextLayoutTest, IndentsLines) {
  const TextLayout word = layoutText(runs(QStringLiteral("Hi"), style()),
                                     {.size = {0, 0}, .fitsText = false, .ink = {}});
  const double width = word.size.width(), bearing = word.outline().boundingRect().left();
  const struct {
    ParagraphStyle paragraph;
    double first, second, height;
  } cases[] = {{{.firstIndent = 40, .indent = 80}, 40, 80, 2 * 117},
               {{.alignment = Alignment::Right, .tail = -20}, 280 - width, 280 - width, 2 * 117},
               {{.alignment = Alignment::Right, .tail = 200}, 200 - width, 200 - width, 2 * 117},
               {{.lineHeightMultiple = 2, .lineSpacing = 10}, 0, 0, 2 * 244}};
  for (const auto& [paragraph, first, second, height] : cases) {
    CharacterStyle style = this->style();
    style.paragraph = paragraph;
    const TextLayout shape = layoutText(
        runs(QStringLiteral("Hi\u2028Hi"), style),
        {.size = {300, 100}, .behavior = Behavior::AutoHeight, .fitsText = false, .ink = {}});
    ASSERT_EQ(shape.runs.size(), 2);
    EXPECT_NEAR(shape.runs[0].path.boundingRect().left(), first + bearing, 0.1) << first;
    EXPECT_NEAR(shape.runs[1].path.boundingRect().left(), second + bearing, 0.1) << second;
    EXPECT_EQ(shape.size.height(), height);
  }
}

TEST_F(TextLayoutTest, AlignsInFixedFrame) {
  for (const auto& [vertical, top] :
       {std::pair{Vertical::Top, 0.0}, {Vertical::Middle, 92.0}, {Vertical::Bottom, 183.0}}) {
    const TextLayout shape = layoutText(
        runs(QStringLiteral("H"), style()),
        {.size = {400, 300}, .behavior = Behavior::Fixed, .vertical = vertical, .ink = {}});
    EXPECT_NEAR(shape.outline().boundingRect().bottom(), top + 93, 0.2);
  }
}

TEST_F(TextLayoutTest, HidesLinesBelowFixedFrame) {
  const struct {
    Behavior behavior;
    double height;
    int lines;
  } cases[] = {{Behavior::Fixed, 10, 1},
               {Behavior::Fixed, 2 * 117 - 50, 2},
               {Behavior::Fixed, 2 * 117 + 50, 2},
               {Behavior::AutoHeight, 10, 3}};
  for (const auto& [behavior, height, lines] : cases) {
    const TextLayout shape = layoutText(runs(QStringLiteral("H\nH\nH"), style()),
                                        {.size = {400, height}, .behavior = behavior, .ink = {}});
    EXPECT_EQ(shape.outline().toSubpathPolygons().size(), lines) << height;
    EXPECT_EQ(shape.size.height(), 3 * 117);
  }
}

TEST_F(TextLayoutTest, StylesCharacters) {
  const auto outline = [&](const CharacterStyle& style, const QString& text) {
    return layoutText(runs(text, style), {.size = {0, 0}, .fitsText = false, .ink = {}})
        .outline()
        .boundingRect();
  };
  const QString text = QStringLiteral("no");
  const QRectF plain = outline(style(), text);
  CharacterStyle spaced = style(), upper = style(), underlined = style(), struck = style(),
                 raised = style(), bold = style();
  spaced.kerning = 20;
  upper.letters = CharacterStyle::Case::Upper;
  underlined.underline = true;
  struck.strikethrough = true;
  raised.baselineOffset = 30;
  bold.font = QStringLiteral("Roboto-Bold");
  EXPECT_NEAR(outline(spaced, text).width(), plain.width() + 20, 0.2);
  EXPECT_EQ(outline(upper, text), outline(style(), QStringLiteral("NO")));
  EXPECT_GT(outline(underlined, text).bottom(), plain.bottom() + 5);
  EXPECT_GT(outline(struck, text).width(), plain.width());
  EXPECT_NEAR(outline(raised, text).y(), plain.y() - 30, 0.01);
  EXPECT_GT(outline(bold, text).width(), plain.width() + 1);
}

TEST_F(TextLayoutTest, FillsFrameThatSketchMeasured) {
  const TextRuns text = runs(QStringLiteral("Hamburg"), style());
  const double width = layoutText(text, {.size = {0, 0}, .ink = {}}).size.width();
  const auto widthIn = [&](const TextRuns& runs, double frame, const QRectF& ink) {
    return layoutText(runs, {.size = {frame, 117}, .ink = ink}).outline().boundingRect();
  };
  const double same = widthIn(text, std::ceil(width), {}).width();
  EXPECT_NEAR(widthIn(text, width + 10, {}).width() - same, 8.5, 1.5);  // But for the last gap.
  EXPECT_EQ(widthIn(text, width + 100, {}).width(), same);

  TextRuns missing = text;
  missing.runs[0].style.font = QStringLiteral("Nowhere-Regular");
  const QRectF ink(10, 20, 400, 90);
  const QRectF got = widthIn(missing, 420, ink);
  EXPECT_NEAR(got.x(), 10.25, 0.1);
  EXPECT_NEAR(got.width(), 399.5, 0.1);
  EXPECT_NEAR(got.height(), 89.5, 0.1);
  EXPECT_EQ(layoutText(missing, {.size = {0, 0}, .ink = {}}).missingFonts.size(), 1);
  // What could have been measured so is left alone.
  const QRectF natural = widthIn(missing, 420, {});
  const QRectF near = widthIn(missing, 420, QRectF(natural.toAlignedRect()));
  EXPECT_NEAR(near.x(), natural.x(), 1e-6);
  EXPECT_NEAR(near.width(), natural.width(), 1e-6);
}

TEST_F(TextLayoutTest, KeepsSketchLineBreaks) {
  const TextRuns text = runs(QStringLiteral("Hamburg Hamburg"), style());
  const double one =
      layoutText(runs(QStringLiteral("Hamburg Hamburg"), style()), {.size = {0, 0}, .ink = {}})
          .size.width();
  const auto linesIn = [&](double width, int recorded, const FontWidthCalibrations& measures = {}) {
    const TextBox box{
        .size = {width, 117.0 * recorded}, .behavior = Behavior::AutoHeight, .ink = {}};
    return int(std::round(layoutText(text, box, measures).size.height() / 117));
  };
  EXPECT_EQ(linesIn(one * 0.98, 1), 1);
  EXPECT_EQ(linesIn(one * 0.98, 2), 2);
  EXPECT_EQ(linesIn(one * 1.02, 2), 2);
  EXPECT_EQ(linesIn(one * 0.7, 1), 2);  // Its frame was changed since.
  const FontWidthCalibrations wide{{QStringLiteral("Roboto-Regular"), {.spacing = 0.1}}};
  EXPECT_EQ(linesIn(one * 1.1, 1), 1);
  EXPECT_EQ(linesIn(one * 1.1, 2, wide), 2);
}

/// The stem of "I", by the width of its outline, at unchanged height.
TEST_F(TextLayoutTest, SynthesizesWeightsThatFallbacksLack) {
  const auto shapeOf = [&](const char* font) {
    CharacterStyle style = this->style();
    style.font = QString::fromLatin1(font);
    return layoutText(runs(QStringLiteral("I"), style), {.size = {0, 0}, .ink = {}})
        .outline()
        .boundingRect();
  };
  const QRectF plain = shapeOf("HelveticaNeue"), light = shapeOf("HelveticaNeue-Light"),
               medium = shapeOf("HelveticaNeue-Medium");
  EXPECT_NEAR(plain.width() - light.width(), 2.4, 0.05);
  EXPECT_NEAR(medium.width() - plain.width(), 2.4, 0.05);
  EXPECT_NEAR(light.height(), plain.height(), 0.3);
  EXPECT_NEAR(light.bottom(), plain.bottom(), 0.1);
}

/// Capitals are 0.729 high in the one, 0.688 in the other, whose widths and kerning count.
TEST_F(TextLayoutTest, DrawsHelveticaWithItsOwnGlyphs) {
  const FontMatch chosen = matchFont(QStringLiteral("Helvetica"));
  if (chosen.isInstalled || chosen.outlines.isEmpty()) GTEST_SKIP() << "no Nimbus Sans";
  const auto shapeOf = [&](const char* font, const QString& text) {
    CharacterStyle style = this->style();
    style.font = QString::fromLatin1(font);
    return layoutText(runs(text, style), {.size = {0, 0}, .fitsText = false, .ink = {}});
  };
  const QString text = QStringLiteral("Teflon");
  const TextLayout helvetica = shapeOf("Helvetica", text), arial = shapeOf("ArialMT", text);
  EXPECT_NEAR(helvetica.size.width(), arial.size.width(), 1e-6);
  EXPECT_NEAR(shapeOf("Helvetica", QStringLiteral("H")).outline().boundingRect().height(), 72.9,
              0.2);
  EXPECT_NEAR(shapeOf("ArialMT", QStringLiteral("H")).outline().boundingRect().height(), 68.8, 0.2);
}

TEST_F(TextLayoutTest, ChoosesFonts) {
  const struct {
    const char* name;
    const char* family;
    int weight;
    bool isItalic, isInstalled;
  } cases[] = {{"Roboto-Medium", "Roboto", 500, false, true},
               {"Roboto-BlackItalic", "Roboto", 900, true, true},
               {"RobotoCondensed-Light", "Roboto Condensed", 300, false, true},
               {"SFProText-Semibold", "Inter", 600, false, false},
               {".SFNSText", "Inter", 400, false, false},
               {"HelveticaNeue-Bold", "Liberation Sans", 700, false, false},
               {"HelveticaNeue-Light", "Liberation Sans", 300, false, false},
               {"Nowhere-Bold", "Inter", 700, false, false},
               {"TimesNewRomanPS-BoldItalicMT", "Liberation Serif", 700, true, false}};
  for (const auto& [name, family, weight, isItalic, isInstalled] : cases) {
    const FontMatch chosen = matchFont(QString::fromLatin1(name));
    EXPECT_EQ(chosen.font.family(), QString::fromLatin1(family)) << name;
    EXPECT_EQ(int(chosen.font.weight()), weight) << name;
    EXPECT_EQ(chosen.font.italic(), isItalic) << name;
    EXPECT_EQ(chosen.isInstalled, isInstalled) << name;
  }
}

}  // namespace
}  // namespace kelvar::render
