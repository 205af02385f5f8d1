#include "sketch/render/symbols/SymbolLayout.h"

#include <gtest/gtest.h>

#include "platform/image/OffscreenGuiApplication.h"
#include "sketch/render/TinyDocument.h"
#include "sketch/render/symbols/Resizing.h"

namespace kelvar::render {
namespace {

QRectF frameOf(const SketchJson& layer) { return getRect(layer, "frame"); }

/// A replaced text, 10 wide before, in a group at 10; a square at 25; a ground behind both.
SketchJson master(int alignment) {
  SketchJson text =
      with(layer("text", frame(0, 0, 10, 14)),
           {{"textBehaviour", 0}, {"lineSpacingBehaviour", 2}, {kHasForeignFrame, true}});
  text["attributedString"]["string"] = "a much longer text";
  text["style"]["textStyle"]["encodedAttributes"]["paragraphStyle"]["alignment"] = alignment;
  return container(
      "symbolMaster", frame(0, 0, 40, 14),
      {layer("rectangle", frame(0, 0, 40, 14)), container("group", frame(10, 0, 10, 14), {text}),
       layer("rectangle", frame(25, 0, 10, 14))});
}

TEST(SymbolLayoutTest, OverriddenTextsMoveTheirSiblings) {
  const OffscreenGuiApplication fonts;
  for (const char* const kind : {"MSImmutableInferredGroupLayout", "MSImmutableFlexGroupLayout"}) {
    // Aligned to the left, to the right and in the middle: the row begins where it did.
    for (const int alignment : {0, 1, 2}) {
      SketchJson laidOut = master(alignment);
      laidOut["groupLayout"]["_class"] = kind;
      applySmartLayout(&laidOut);
      const SketchJson& layers = laidOut["layers"];
      const double width = frameOf(layers[1]["layers"][0]).width(), more = width - 10;
      EXPECT_GT(more, 20);
      EXPECT_EQ(frameOf(layers[1]["layers"][0]).x(), 0) << alignment;
      EXPECT_EQ(frameOf(layers[1]).x(), 10) << alignment;
      EXPECT_EQ(frameOf(layers[1]).width(), width);
      EXPECT_EQ(frameOf(layers[2]).x(), 25 + more);
      EXPECT_EQ(frameOf(layers[0]).width(), 40 + more);
      EXPECT_EQ(frameOf(laidOut).width(), 40 + more);
    }
  }
  SketchJson free = master(0);
  applySmartLayout(&free);
  EXPECT_EQ(free, master(0));
}

TEST(SymbolLayoutTest, RespectsMinimumAndMaximumSize) {
  const OffscreenGuiApplication fonts;
  for (const auto& [key, size] : {std::pair{"minSize", 900}, {"maxSize", 50}}) {
    SketchJson laidOut = master(0);
    laidOut["groupLayout"] = {{"_class", "MSImmutableInferredGroupLayout"}, {key, size}};
    applySmartLayout(&laidOut);
    EXPECT_EQ(frameOf(laidOut).width(), size) << key;
  }
}

}  // namespace
}  // namespace kelvar::render
