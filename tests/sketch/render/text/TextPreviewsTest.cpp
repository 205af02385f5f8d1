#include "sketch/render/text/TextPreviews.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include "sketch/render/TinyDocument.h"

namespace kelvar::render {
namespace {

/// Pages of 40 by 20, each with a red square of 10 at 5 from the top and at its number times 10
/// from the left.
QByteArray pdf(int pages) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setResolution(72);
  writer.setPageSize(QPageSize(QSizeF(40, 20), QPageSize::Point, {}, QPageSize::ExactMatch));
  writer.setPageMargins({});
  QPainter painter(&writer);
  for (int page = 0; page < pages; ++page) {
    if (page > 0) writer.newPage();
    painter.fillRect(page * 10, 5, 10, 10, Qt::red);
  }
  painter.end();
  return bytes;
}

SketchJson string(const char* text, const char* font, const QColor& c) {
  const SketchJson attributes = {
      {"MSAttributedStringFontAttribute", {{"attributes", {{"name", font}, {"size", 12}}}}},
      {"MSAttributedStringColorAttribute", color(c)}};
  return {{"string", text},
          {"attributes",
           SketchJson::array({{{"location", 0}, {"length", 2}, {"attributes", attributes}}})}};
}

/// Each text says which page shows it.
QByteArray metadata(const std::vector<const char*>& texts, const char* size = "{40, 20}") {
  SketchJson json;
  for (size_t page = 0; page < texts.size(); ++page) {
    json[std::to_string(page)] = {{"size", size},
                                  {"string", string(texts[page], "Nowhere-Regular", Qt::red)}};
  }
  return QByteArray::fromStdString(json.dump());
}

Drawing drawText(const char* text, const char* font, const SketchJson& frame,
                 const std::map<QString, QByteArray>& files) {
  TinyDocument tiny;
  tiny.layers = {with(layer("text", frame), {{"textBehaviour", 2},
                                             {"lineSpacingBehaviour", 2},
                                             {"attributedString", string(text, font, Qt::blue)}})};
  tiny.files = files;
  return drawDocument(tiny, 60, 40);
}

const QString kPdf = QStringLiteral("text-previews/text-previews.pdf");
const QString kMetadata = QStringLiteral("text-previews/text-previews-metadata.json");

TEST(TextPreviewsTest, ShowsMissingFontsAsSketchDrewThem) {
  const std::map<QString, QByteArray> files{{kPdf, pdf(2)},
                                            {kMetadata, metadata({"ab", "cd"}, "{39.5, 20}")}};
  const Drawing drawing = drawText("cd", "Nowhere-Regular", frame(10.5, 10, 39.5, 20), files);
  // The page begins half a unit before the frame.
  EXPECT_EQ(drawing.at(21, 16), QColor(Qt::blue)) << "in the color of the text";
  EXPECT_EQ(drawing.at(28, 23), QColor(Qt::blue));
  EXPECT_EQ(drawing.at(18, 20).alpha(), 0);
  EXPECT_EQ(drawing.at(31, 20).alpha(), 0);
  EXPECT_TRUE(drawing.warnings.isEmpty()) << qPrintable(drawing.warnings.join(u'\n'));
}

TEST(TextPreviewsTest, IgnoresPreviewsOfOtherTexts) {
  const QByteArray both = metadata({"ab", "cd"});
  const SketchJson fitting = frame(10, 10, 40, 20);
  const struct {
    const char* what;
    const char* text;
    SketchJson frame;
    std::map<QString, QByteArray> files;
  } cases[] = {
      {"another text", "ef", fitting, {{kPdf, pdf(2)}, {kMetadata, both}}},
      {"another size", "cd", frame(10, 10, 30, 20), {{kPdf, pdf(2)}, {kMetadata, both}}},
      {"a missing page", "cd", fitting, {{kPdf, pdf(1)}, {kMetadata, both}}},
      {"damaged metadata", "cd", fitting, {{kPdf, pdf(2)}, {kMetadata, "{\"1\": {\"size\""}}},
      {"metadata of another kind", "cd", fitting, {{kPdf, pdf(2)}, {kMetadata, "[1, \"1\"]"}}},
      {"a damaged PDF", "cd", fitting, {{kPdf, "%PDF-1.3\n%%EOF"}, {kMetadata, both}}},
      {"an empty PDF", "cd", fitting, {{kPdf, ""}, {kMetadata, both}}},
  };
  for (const auto& [what, text, frame, files] : cases) {
    const Drawing drawing = drawText(text, "Nowhere-Regular", frame, files);
    EXPECT_EQ(drawing.warnings.size(), 1) << what;
    EXPECT_EQ(drawing.at(28, 24).alpha(), 0) << what;
  }
}

TEST(TextPreviewsTest, PrefersInstalledFonts) {
  const std::map<QString, QByteArray> files{{kPdf, pdf(2)}, {kMetadata, metadata({"ab", "cd"})}};
  const Drawing drawing = drawText("cd", "Inter-Regular", frame(10, 10, 40, 20), files);
  EXPECT_EQ(drawing.at(28, 24).alpha(), 0);
}

/// Some versions of Sketch write images that were pasted as PDFs.
TEST(TextPreviewsTest, DrawsPdfImages) {
  TinyDocument tiny;
  tiny.layers = {with(layer("bitmap", frame(0, 0, 80, 40)),
                      {{"image", {{"_class", "MSJSONFileReference"}, {"_ref", "images/one"}}}})};
  tiny.files = {{QStringLiteral("images/one.pdf"), pdf(1)}};
  const Drawing drawing = drawDocument(tiny, 80, 40);
  EXPECT_EQ(drawing.at(2, 12), QColor(Qt::red));
  EXPECT_EQ(drawing.at(17, 27), QColor(Qt::red));
  EXPECT_EQ(drawing.at(2, 7).alpha(), 0);
  EXPECT_EQ(drawing.at(23, 20).alpha(), 0);
  EXPECT_TRUE(drawing.warnings.isEmpty());
}

}  // namespace
}  // namespace kelvar::render
