#include "sketch/render/text/DocumentFonts.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "sketch/render/TinyDocument.h"

namespace kelvar::render {
namespace {

/// A font of a family that nobody has: Roboto under another name, in both of the encodings that its
/// names have. Empty without Roboto.
QByteArray robotx() {
  for (const char* folder : {"unhinted/RobotoTTF", "hinted/RobotoTTF", "."}) {
    QFile file(QStringLiteral("/usr/share/fonts/truetype/roboto/%1/Roboto-Regular.ttf")
                   .arg(QLatin1StringView(folder)));
    if (!file.open(QIODevice::ReadOnly)) continue;
    QByteArray bytes = file.readAll();
    bytes.replace("Roboto", "Robotx");
    bytes.replace(QByteArray("R\0o\0b\0o\0t\0o", 11), QByteArray("R\0o\0b\0o\0t\0x", 11));
    return bytes;
  }
  return {};
}

QStringList warningsWith(const SketchJson& references,
                         const std::map<QString, QByteArray>& files = {}) {
  const SketchJson attributes = {
      {"MSAttributedStringFontAttribute", {{"attributes", {{"name", "Robotx-Regular"}}}}}};
  TinyDocument tiny;
  tiny.layers = {with(
      layer("text", frame(0, 0, 90, 20)),
      {{"attributedString",
        {{"string", "a"},
         {"attributes",
          SketchJson::array({{{"location", 0}, {"length", 1}, {"attributes", attributes}}})}}}})};
  tiny.document["fontReferences"] = references;
  tiny.files = files;
  return drawDocument(tiny, 90, 20).warnings;
}

TEST(DocumentFontsTest, UsesEmbeddedFontsForTheirDocument) {
  const QByteArray font = robotx();
  if (font.isEmpty()) GTEST_SKIP() << "no Roboto";
  const SketchJson references = SketchJson::array(
      {{{"fontFamilyName", "Robotx"}, {"fontData", {{"_ref", "fonts/one"}}}}, 7, nullptr});
  const QString name = QStringLiteral("fonts/one");
  EXPECT_TRUE(warningsWith(references, {{name, font}}).isEmpty());
  EXPECT_EQ(warningsWith(SketchJson::array()).size(), 1) << "of another document";
  EXPECT_EQ(warningsWith(references).size(), 1) << "missing";
  EXPECT_EQ(warningsWith(references, {{name, font.first(1000)}}).size(), 1) << "damaged";
}

TEST(DocumentFontsTest, UsesFoldersThatWereAdded) {
  const QTemporaryDir folder;
  EXPECT_FALSE(ArtboardRenderer::addFonts(folder.path()));
  EXPECT_FALSE(ArtboardRenderer::addFonts(folder.filePath(QStringLiteral("missing"))));
  QFile file(folder.filePath(QStringLiteral("Robotx.ttf")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(robotx());
  file.close();
  if (file.size() == 0) GTEST_SKIP() << "no Roboto";
  EXPECT_EQ(warningsWith({}).size(), 1);
  ASSERT_TRUE(ArtboardRenderer::addFonts(folder.path()));
  EXPECT_TRUE(warningsWith({}).isEmpty());
}

}  // namespace
}  // namespace kelvar::render
