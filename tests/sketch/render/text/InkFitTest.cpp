#include "sketch/render/text/InkFit.h"

#include <gtest/gtest.h>

#include "platform/image/OffscreenGuiApplication.h"
#include "sketch/render/text/FontMatcher.h"
#include "sketch/render/text/TextLayout.h"

namespace kelvar::render {
namespace {

using Behavior = TextBox::Behavior;
using Vertical = TextBox::Vertical;
using Alignment = ParagraphStyle::Alignment;

/// Texts of size 100 in a font that nobody has, in lines 120 high.
class InkFitTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!matchFont(QStringLiteral("Inter-Regular")).isInstalled) GTEST_SKIP() << "no Inter";
  }

  static QRectF inkOf(const QString& text, const TextBox& box,
                      Alignment alignment = Alignment::Left) {
    CharacterStyle style;
    style.font = QStringLiteral("Nowhere-Regular");
    style.size = 100;
    style.paragraph = {.alignment = alignment, .minLineHeight = 120, .maxLineHeight = 120};
    return layoutText({text, {{0, text.size(), style}}}, box).outline().boundingRect();
  }

  const OffscreenGuiApplication fonts_;
};

TEST_F(InkFitTest, UsesInkThatAgreesWithFrame) {
  const QString word = QStringLiteral("Hamburg"), twoLines = QStringLiteral("Hamburg\nHamburg");
  const QSizeF wide(1000, 120), high(1000, 300);
  const struct {
    const char* what;
    QString text;
    QSizeF frame;
    Alignment alignment = Alignment::Left;
    Vertical vertical = Vertical::Top;
    /// What Sketch measured, and what is expected of it, from the ink without it.
    QRectF add, expected;
  } cases[] = {
      {"a little larger", word, wide, {}, {}, {4, -4, 12, 10}, {4, -4, 12, 10}},
      {"two lines", twoLines, high, {}, {}, {4, -4, 12, 10}, {4, -4, 12, 10}},
      {"rounding", word, wide, {}, {}, {-0.4, -0.4, 0.8, 0.8}, {}},
      {"the height of the line", word, wide, {}, {}, {0, -30, 0, 60}, {}},
      {"another size", word, wide, {}, {}, {0, 0, 400, 0}, {}},
      {"far above the frame", word, wide, {}, {}, {0, -700, 0, 0}, {}},
      {"far beside the frame", word, wide, {}, {}, {-900, 0, 0, 0}, {}},
      {"centered, measured at the left", word, wide, Alignment::Center, {}, {-250, 0, 0, 0}, {}},
      {"centered", word, wide, Alignment::Center, {}, {-5, 0, 10, 0}, {-5, 0, 10, 0}},
      {"right", word, wide, Alignment::Right, {}, {-20, 0, 10, 0}, {-20, 0, 10, 0}},
      {"in the middle, measured at the top",
       word,
       high,
       {},
       Vertical::Middle,
       {0, -85, 0, 0},
       {0, 5, 0, 0}},
      {"empty lines at the end",
       word + QStringLiteral("\n\n"),
       QSizeF(1000, 360),
       {},
       {},
       {0, 6, 0, 220},
       {0, 6, 0, 0}},
  };
  const auto sum = [](const QRectF& a, const QRectF& b) {
    return QRectF(a.topLeft() + b.topLeft(), a.size() + b.size());
  };
  for (const auto& [what, text, frame, alignment, vertical, add, expected] : cases) {
    TextBox box{.size = frame, .behavior = Behavior::Fixed, .vertical = vertical, .ink = {}};
    const QRectF natural = inkOf(text, box, alignment);
    box.ink = sum(natural, add);
    const QRectF got = inkOf(text, box, alignment), wanted = sum(natural, expected);
    EXPECT_NEAR(got.left(), wanted.left(), 0.6) << what;
    EXPECT_NEAR(got.top(), wanted.top(), 0.6) << what;
    EXPECT_NEAR(got.right(), wanted.right(), 0.6) << what;
    EXPECT_NEAR(got.bottom(), wanted.bottom(), 0.6) << what;
  }
}

TEST_F(InkFitTest, SpacesLettersBeforeItStretchesThem) {
  CharacterStyle style;
  style.font = QStringLiteral("Nowhere-Regular");
  style.size = 100;
  const TextRuns runs{QStringLiteral("HHHH"), {{0, 4, style}}};
  const double width =
      layoutText(runs, {.size = {0, 0}, .fitsText = false, .ink = {}}).size.width();
  const auto letterIn = [&](double factor) {
    const TextLayout layout = layoutText(runs, {.size = {width * factor, 120}, .ink = {}});
    EXPECT_NEAR(layout.size.width(), width * factor, 1);
    return layout.runs[0].path.toSubpathPolygons()[0].boundingRect().width();
  };
  const double natural = letterIn(1);
  EXPECT_NEAR(letterIn(1.02) / natural, 1, 0.005);
  EXPECT_NEAR(letterIn(1.3) / natural, 1.3 / 1.03, 0.01);
}

TEST_F(InkFitTest, TakesLineHeightsFromFrame) {
  CharacterStyle style;
  style.font = QStringLiteral("Nowhere-Regular");
  style.size = 100;
  const QString text = QStringLiteral("H\nH");
  const auto heightIn = [&](double frame) {
    return layoutText({text, {{0, text.size(), style}}}, {.size = {80, frame}, .ink = {}})
        .size.height();
  };
  const double natural = heightIn(0);
  EXPECT_EQ(heightIn(2 * 150), 300);
  EXPECT_EQ(heightIn(2 * 100), 200);
  EXPECT_EQ(heightIn(2 * 400), natural) << "nobody's line height";
}

/// Breaks where the widest line is as wide as Sketch measured it.
TEST_F(InkFitTest, BreaksLinesAsWideAsInk) {
  const QString text = QStringLiteral("HHHH HH HHH HH");
  const auto widthOf = [&](const QString& line) {
    return inkOf(line, {.size = {0, 0}, .ink = {}}).width();
  };
  const double longer = widthOf(QStringLiteral("HHHH HH HHH"));
  for (const double factor : {0.93, 1.0}) {
    const TextBox box{
        .size = {longer * 0.96, 240},
        .behavior = Behavior::AutoHeight,
        .ink = {0, 20, factor == 1 ? widthOf(QStringLiteral("HHHH HH")) : factor * longer, 190}};
    EXPECT_NEAR(inkOf(text, box).width(), box.ink.width(), 3) << factor;
  }
}

}  // namespace
}  // namespace kelvar::render
