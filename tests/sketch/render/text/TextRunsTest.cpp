#include "sketch/render/text/TextRuns.h"

#include <gtest/gtest.h>

#include "sketch/document/KeyedArchive.h"
#include "sketch/document/SketchJson.h"

namespace kelvar::render {
namespace {

QByteArray archive(const char* objects) {
  return QByteArray(
             "<plist><dict><key>$archiver</key><string>NSKeyedArchiver</string>"
             "<key>$top</key><dict><key>root</key><dict><key>CF$UID</key>"
             "<integer>1</integer></dict></dict><key>$objects</key><array>"
             "<string>$null</string>") +
         objects + "</array></dict></plist>";
}

QByteArray reference(int number) {
  return "<dict><key>CF$UID</key><integer>" + QByteArray::number(number) + "</integer></dict>";
}

TEST(KeyedArchiveTest, FollowsReferences) {
  const QByteArray cyclic = "<dict><key>self</key>" + reference(1) + "</dict>";
  const QByteArray list = "<dict><key>NS.objects</key><array>" + reference(2) + reference(2) +
                          "</array></dict><dict><key>NS.string</key><string>a</string></dict>";
  EXPECT_EQ(readKeyedArchive(archive(list)),
            (QVariantList{QStringLiteral("a"), QStringLiteral("a")}));
  EXPECT_TRUE(readKeyedArchive(archive(cyclic)).isValid());  // And comes to an end.
  EXPECT_FALSE(readKeyedArchive(archive("")).isValid());
  EXPECT_FALSE(readKeyedArchive("no archive").isValid());
}

/// A string of two runs: bold red "Hi " and black "you", of four characters and three.
TEST(TextRunsTest, ReadsArchivedTexts) {
  const QByteArray font =
      "<dict><key>NSName</key><string>A-Bold</string><key>NSSize</key>"
      "<real>20</real></dict>";
  const QByteArray objects =
      "<dict><key>NSString</key><string>Hey you</string><key>NSAttributes</key>" + reference(2) +
      "<key>NSAttributeInfo</key><data>" + QByteArray("\x04\x00\x03\x01", 4).toBase64() +
      "</data></dict><dict><key>NS.objects</key><array>" + reference(3) + reference(4) +
      "</array></dict><dict><key>NS.keys</key><array><string>NSFont</string>"
      "<string>NSColor</string><string>NSParagraphStyle</string></array><key>NS.objects</"
      "key><array>" +
      font + "<dict><key>NSColorSpace</key><integer>1</integer><key>NSRGB</key><data>" +
      QByteArray("1 0 0 0.5\0", 10).toBase64() +
      "</data></dict><dict><key>NSAlignment</key><integer>2</integer><key>NSMinLineHeight</key>"
      "<real>30</real><key>NSHeadIndent</key><real>12</real></dict></array></"
      "dict><dict><key>NS.keys</key><array>"
      "<string>NSColor</string></array><key>NS.objects</key><array><dict><key>NSWhite</key><data>" +
      QByteArray("0.2\0", 4).toBase64() + "</data></dict></array></dict>";
  SketchJson layer;
  layer["attributedString"]["archivedAttributedString"]["_archive"] =
      archive(objects).toBase64().toStdString();
  const TextRuns runs = readTextRuns(layer);
  EXPECT_EQ(runs.text, QStringLiteral("Hey you"));
  ASSERT_EQ(runs.runs.size(), 2);
  const CharacterStyle& first = runs.runs[0].style;
  EXPECT_EQ(runs.runs[0].length, 4);
  EXPECT_EQ(first.font, QStringLiteral("A-Bold"));
  EXPECT_EQ(first.size, 20);
  EXPECT_EQ(first.color.name(QColor::HexArgb), QStringLiteral("#80ff0000"));
  EXPECT_EQ(first.paragraph.alignment, ParagraphStyle::Alignment::Center);
  EXPECT_EQ(first.paragraph.minLineHeight, 30);
  EXPECT_EQ(first.paragraph.indent, 12);
  EXPECT_EQ(runs.runs[1].style.color.name(), QStringLiteral("#333333"));
}

/// Runs may overlap, reach out or leave gaps in damaged documents.
TEST(TextRunsTest, CoversEveryCharacterOnce) {
  const struct {
    std::vector<std::pair<int, int>> given;
    QList<std::pair<int, int>> expected;
  } cases[] = {{{{0, 5}}, {{0, 5}}},
               {{}, {{0, 5}}},
               {{{2, 1}}, {{0, 2}, {2, 1}, {3, 2}}},
               {{{0, 4}, {2, 9}}, {{0, 4}, {4, 1}}},
               {{{3, 2}, {0, 3}}, {{0, 3}, {3, 2}}},
               {{{-7, 2}, {90, 3}}, {{0, 2}, {2, 3}}}};
  for (const auto& [given, expected] : cases) {
    SketchJson layer;
    layer["attributedString"]["string"] = "abcde";
    for (const auto& [location, length] : given) {
      layer["attributedString"]["attributes"].push_back(
          {{"location", location}, {"length", length}});
    }
    QList<std::pair<int, int>> got;
    for (const TextRun& run : readTextRuns(layer).runs) {
      got.append({int(run.start), int(run.length)});
    }
    EXPECT_EQ(got, expected);
  }
}

}  // namespace
}  // namespace kelvar::render
