#include "sketch/render/text/emojiLength.h"

#include <gtest/gtest.h>

#include <QString>

namespace kelvar::render {
namespace {

TEST(emojiLengthTest, CoversWhatBelongsToAnEmoji) {
  const struct {
    const char* text;
    qsizetype length;
  } cases[] = {
      {"a", 0},         {"", 0},
      {"日", 0},        {"😀😀", 2},
      {"⌚x", 1},        {"♥", 0},
      {"♥\uFE0F!", 2},  {"😀\uFE0E", 0},
      {"👍🏽!", 4}, {"🇩🇪🇫🇷", 4},
      {"🇩x", 2},        {"👩\u200D🚀!", 5},
      {"👩\u200D", 3},   {"1\uFE0F\u20E3 2", 3},
      {"1\u20E3", 0},   {"🏴\U000E0067\U000E007F.", 6},
  };
  for (const auto& [text, length] : cases) {
    EXPECT_EQ(emojiLength(QString::fromUtf8(text), 0), length) << text;
  }
  EXPECT_EQ(emojiLength(u"a\xD83D", 1), 0);
  EXPECT_EQ(emojiLength(u"a\xDE00z", 1), 0);
}

}  // namespace
}  // namespace kelvar::render
