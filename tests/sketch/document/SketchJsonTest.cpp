#include "sketch/document/SketchJson.h"

#include <gtest/gtest.h>

namespace kelvar {
namespace {

/// The text as read and written again; the refusal in its place.
std::string reread(const QByteArray& text) {
  size_t left = 100;
  const Result<SketchJson> value = readSketchJson(text, &left);
  if (!value) return "refused: " + value.error().message;
  return writeSketchJson(*value).toStdString();
}

/// Against the library that holds the values, whose own reader is slower.
TEST(SketchJsonTest, AcceptsOnlyValidJson) {
  const char* const good[] = {
      "{}",
      R"( {"a" : [ 1 , 1.0, -0, 0.1, 1e3, 1E-3, -12.5e+2 ] } )",
      R"([9223372036854775807, -9223372036854775808, 18446744073709551615])",
      R"([18446744073709551616, -9223372036854775809, 123456789012345678901234567890])",
      R"([200.3333333333333, 5e-324, 1.7976931348623157e308, 0.30000000000000004])",
      R"([184467.44073709551616, -9.2233720368547758079e-304, 0.1000000000000000055511151231257827])",
      R"([1e-400, -1e-400, -0.0])",
      R"([true, false, null, "", [], {}, [[]], {"":{}}])",
      R"(["\"\\\/\b\f\n\r\t\u00e9\ud83d\ude00", "é😀"])",
      R"({"z":1,"a":{"z":2,"a":[{"b":null}]},"m":"é"})",
  };
  for (const char* text : good) {
    EXPECT_EQ(reread(text), SketchJson::parse(text).dump()) << text;
  }
  const char* const bad[] = {"",
                             " ",
                             "{",
                             "[1",
                             "[1,]",
                             "[,1]",
                             "[1 2]",
                             "{} {}",
                             "[] 1",
                             "[1]]",
                             "{\"a\"}",
                             "{\"a\":}",
                             "{\"a\":1,}",
                             "{a:1}",
                             "['a']",
                             "[01]",
                             "[1.]",
                             "[.5]",
                             "[+1]",
                             "[-]",
                             "[1e]",
                             "[NaN]",
                             "[1e999]",
                             "[truE]",
                             "[tru]",
                             "[truely]",
                             "[nul]",
                             "[nulls]",
                             "[\"a]",
                             "[\"\t\"]",
                             "[\"\\x\"]",
                             "[\"\\u12\"]",
                             "[\"\\ud83d\"]",
                             "[\"\xff\"]",
                             "[\"\xed\xa0\x80\"]",
                             "[1}",
                             "{\"a\":1]",
                             "[1\x01]",
                             "[\"a\" \"b\"]",
                             "{\"a\" 1}",
                             "{\"a\":1 \"b\":2}",
                             "[1.5x]",
                             "[99999999999999999999x]"};
  for (const char* text : bad) {
    EXPECT_FALSE(SketchJson::accept(text)) << text;
    EXPECT_EQ(reread(text).rfind("refused: it is not JSON", 0), 0) << text << ": " << reread(text);
  }
}

TEST(SketchJsonTest, KeepsDuplicateMembers) {
  EXPECT_EQ(reread(R"({"a":1,"b":2,"a":3})"), R"({"a":1,"b":2,"a":3})");
}

}  // namespace
}  // namespace kelvar
