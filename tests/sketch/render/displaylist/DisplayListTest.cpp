#include "sketch/render/displaylist/DisplayList.h"

#include <gtest/gtest.h>

#include "sketch/render/TinyDocument.h"

namespace kelvar::render {
namespace {

/// A page with an instance of a symbol that holds a square.
SketchDocumentRef instanceDocument(const char* symbolID) {
  TinyDocument tiny;
  tiny.layers = {with(container("symbolMaster", frame(0, 0, 10, 10),
                                {rectangle(5, 5, 20, 20, filled(Qt::red))}),
                      {{"symbolID", "S"}}),
                 with(layer("symbolInstance", frame(100, 50, 10, 10)), {{"symbolID", symbolID}})};
  return tiny.open();
}

TEST(DisplayListTest, WritesASymbolOutOnceForItsBoundsAndItsPainter) {
  const SketchDocumentRef document = instanceDocument("S");
  RenderWarnings warnings;
  const QSet<QString> withoutImages;
  DisplayList list(*document, withoutImages, &warnings, {});
  DisplayItem page = list.itemOf(document->pages()[0]->node());
  DisplayItem& instance = list.contentsOf(&page)[1];
  EXPECT_EQ(list.boundsOf(&instance), QRectF(99, 49, 28, 28));
  const DisplayItem* const master = list.masterOf(&instance);
  ASSERT_TRUE(master);
  EXPECT_EQ(list.masterOf(&instance), master);
  EXPECT_EQ(master->symbolStack, QStringList{QStringLiteral("S")});
  list.release(&instance);
  EXPECT_FALSE(instance.contents);
  EXPECT_TRUE(list.masterOf(&instance)) << "is written out again when it is painted twice";
  EXPECT_TRUE(warnings.list().isEmpty());
}

TEST(DisplayListTest, KnowsMissingSymbols) {
  const SketchDocumentRef document = instanceDocument("gone");
  RenderWarnings warnings;
  const QSet<QString> withoutImages;
  DisplayList list(*document, withoutImages, &warnings, {});
  DisplayItem page = list.itemOf(document->pages()[0]->node());
  DisplayItem& instance = list.contentsOf(&page)[1];
  EXPECT_FALSE(list.masterOf(&instance));
  EXPECT_FALSE(DisplayList::isRecursive(instance));
}

TEST(DisplayListTest, WarnsOncePerFont) {
  const auto text = [](const char* name, const char* characters) {
    const SketchJson attributes = {
        {"MSAttributedStringFontAttribute", {{"attributes", {{"name", "Nowhere-Bold"}}}}}};
    return with(
        layer("text", frame(0, 0, 90, 20)),
        {{"name", name},
         {"attributedString",
          {{"string", characters},
           {"attributes",
            SketchJson::array({{{"location", 0}, {"length", 9}, {"attributes", attributes}}})}}}});
  };
  // Nobody has characters of the last plane for private use.
  const Drawing drawing =
      draw({text("one", "a\U0010FFF0"), text("two", "b\U0010FFF1"), text("three", "c")}, 90, 20);
  ASSERT_EQ(drawing.warnings.size(), 2) << qPrintable(drawing.warnings.join(u'\n'));
  EXPECT_EQ(drawing.warnings[0], u"The font Nowhere-Bold is not installed; Inter is used instead.");
  EXPECT_EQ(drawing.warnings[1],
            u"Characters in Nowhere-Bold, such as some of \"one\", are missing from all installed "
            u"fonts.");
}

}  // namespace
}  // namespace kelvar::render
