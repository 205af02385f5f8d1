#include "mockup/DocumentMapping.h"

#include <gtest/gtest.h>

#include "mockup/ArtboardDependencyGraph.h"
#include "mockup/SketchParts.h"
#include "sketch/document/Layer.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar {
namespace {

using parts::board;
using parts::group;
using parts::layer;
using parts::named;

SketchJson target(const std::string& name) { return layer("rectangle", name, {5, 5, 10, 10}); }

/// A layer onto which an artboard was mapped.
SketchJson mapped(const std::string& name, const std::string& artboard, bool isIncluded = true) {
  SketchJson json = target(name);
  json["userInfo"]["io.kelvarlabs.kelvar"] = {{"artboard", artboard + "-id"},
                                              {"includeInArtboards", isIncluded}};
  return json;
}

SketchJson instance(const std::string& symbolID) {
  return layer("symbolInstance", "of " + symbolID, {0, 0, 9, 9}, {{"symbolID", symbolID}});
}

QString order(const SketchDocumentRef& document) {
  QStringList names;
  for (const SketchLayerRef& layer : ArtboardDependencyGraph(*document).topologicalOrder()) {
    names.append(layer->name());
  }
  return names.join(u' ');
}

TEST(ArtboardDependencyGraphTest, SortsTopologically) {
  SketchJson master = board("M", {mapped("onM", "A")});
  master["_class"] = "symbolMaster";
  master["symbolID"] = "m";
  const struct {
    const char* what;
    std::vector<SketchJson> layers;
    const char* order;
  } cases[] = {
      {"none", {board("A", {target("t")})}, ""},
      {"a chain, drawn backwards",
       {board("C", {mapped("onC", "B")}), board("B", {mapped("onB", "A")}), board("A", {})},
       "onB onC"},
      {"through a symbol",
       {board("C", {mapped("onC", "B")}), board("B", {instance("m")}), master, board("A", {})},
       "onM onC"},
      {"on the page itself last",
       {mapped("onPage", "B"), board("B", {mapped("onB", "A")}), board("A", {})},
       "onB onPage"},
      {"excluded last",
       {board("B", {mapped("onB", "A", false)}), board("A", {mapped("onA", "B")})},
       "onA onB"},
      {"a circle ends",
       {board("A", {mapped("onA", "B")}), board("B", {mapped("onB", "A")})},
       "onB onA"},
      {"a design that is gone", {board("A", {mapped("onA", "Gone")})}, "onA"},
  };
  for (const auto& [what, layers, expected] : cases) {
    EXPECT_EQ(order(parts::document(layers)), QString::fromLatin1(expected)) << what;
  }
}

TEST(ArtboardDependencyGraphTest, FollowsPathsOfAnyLength) {
  constexpr int kLength = 100'000;
  std::vector<SketchJson> layers;
  for (int i = 0; i < kLength; ++i) {
    SketchJson master{{"_class", "symbolMaster"}, {"symbolID", std::to_string(i)}, {"name", "M"}};
    master["layers"] = {
        {{"_class", "symbolInstance"}, {"symbolID", std::to_string((i + 1) % kLength)}}};
    layers.push_back(master);
  }
  const auto document = parts::document(layers);
  const SketchLayerRef first = document->artboards().first();
  EXPECT_TRUE(ArtboardDependencyGraph(*document).topologicalOrder().isEmpty());
  EXPECT_EQ(ArtboardDependencyGraph(*document).findCycle(first, first->children().first()).size(),
            2);
  EXPECT_EQ(ArtboardDependencyGraph(*document)
                .findCycle(document->artboards()[1], first->children().first())
                .size(),
            kLength + 1);
}

/// Empty for a success.
template <class T>
std::string messageIn(const Result<T>& result) {
  return result ? std::string() : result.error().message;
}

TEST(DocumentMappingTest, RejectsCyclesAndNamesThem) {
  const struct {
    const char* what;
    std::vector<SketchJson> layers;
    const char* artboard;
    bool isIncluded;
    const char* sentence;
  } cases[] = {
      {"itself", {board("A", {target("t")})}, "A", true, "in a circle: \"A\" shows \"A\""},
      {"itself, excluded", {board("A", {target("t")})}, "A", false, ""},
      {"of three",
       {board("A", {target("t")}), board("B", {mapped("b", "A")}), board("C", {mapped("c", "B")})},
       "C",
       true,
       "\"C\" shows \"B\" shows \"A\" shows \"C\""},
      {"of three, one of them excluded",
       {board("A", {target("t")}), board("B", {mapped("b", "A", false)}),
        board("C", {mapped("c", "B")})},
       "C",
       true,
       ""},
      {"on no artboard", {target("t"), board("A", {})}, "A", true, ""},
      {"mapped there already", {board("A", {mapped("t", "B")}), board("B", {})}, "B", true, ""},
  };
  for (const auto& [what, layers, artboard, isIncluded, sentence] : cases) {
    const auto document = parts::document(layers);
    const LayerSettings settings{.options = {.includedInArtboards = isIncluded}};
    const Result<void> mapped = DocumentMapping(document).mapArtboard(
        named(document, "t"), settings, named(document, artboard));
    const std::string message = messageIn(mapped);
    EXPECT_EQ(mapped.has_value(), *sentence == 0) << what << ": " << message;
    EXPECT_NE(message.find(sentence), std::string::npos) << what << ": " << message;
  }
  const auto circle =
      parts::document({board("A", {mapped("a", "B")}), board("B", {mapped("b", "A")})});
  const std::string message = messageIn(DocumentMapping(circle).refresh());
  EXPECT_NE(message.find("in a circle"), std::string::npos) << message;
}

/// The color in the middle of an artboard's image.
QRgb middle(const SketchDocumentRef& document, const char* artboard) {
  const auto image = ArtboardRenderer(document).render(*named(document, artboard), 1);
  EXPECT_TRUE(image) << image.error().message;
  return image ? (*image)->pixels().pixel(10, 10) : 0;
}

TEST(DocumentMappingTest, RefreshesFromCurrentArtboards) {
  const auto document =
      parts::document({board("C", {mapped("onC", "B")}), board("B", {mapped("onB", "A")}),
                       board("A", {}, 1), board("Excluding", {mapped("hidden", "A", false)}),
                       board("Last", {mapped("onLast", "Excluding")})});
  DocumentMapping mapping(document);
  const auto refreshed = mapping.refresh();
  ASSERT_TRUE(refreshed) << messageIn(refreshed);
  EXPECT_EQ(refreshed->size(), 4);
  EXPECT_EQ(middle(document, "C"), 0xffff0000) << "the design of the design";
  EXPECT_EQ(middle(document, "Excluding"), 0xffff0000) << "seen where it is";
  EXPECT_EQ(middle(document, "Last"), 0xff000000) << "and not where it is shown";

  const SketchLayerRef design = named(document, "A");
  design->edit().change()["backgroundColor"] = parts::color(0, 0, 1);
  ASSERT_TRUE(mapping.refresh());
  EXPECT_EQ(middle(document, "C"), 0xff0000ff);
}

TEST(DocumentMappingTest, ReportsUnknownAndAmbiguousNames) {
  const auto document = parts::document(
      {board("Board", {target("Twice"), target("Twice"), layer("triangle", "Three", {0, 0, 9, 9}),
                       group("shapeGroup", "Group", {0, 0, 9, 9}, {target("Group")})}),
       board("Board", {})});
  DocumentMapping mapping(document);
  EXPECT_TRUE(mapping.layer(QStringLiteral("Group")));
  const struct {
    const char* name;
    std::vector<const char*> parts;
  } cases[] = {
      {"Nobody", {"no layer \"Nobody\""}},
      {"Twice", {"fits several layers", "rectangle Twice-id in \"Board\""}},
      {"Twice-id", {"\"Twice-id\" is the identifier of several layers"}},
      {"Three", {"\"Three\" (Three-id)", "it has 3 corners"}},
  };
  for (const auto& [name, sentences] : cases) {
    const std::string message = messageIn(mapping.layer(QString::fromLatin1(name)));
    for (const char* part : sentences) {
      EXPECT_NE(message.find(part), std::string::npos) << name << ": " << message;
    }
  }
  const std::string message = messageIn(mapping.artboard(QStringLiteral("Board")));
  EXPECT_NE(message.find("fits several artboards"), std::string::npos) << message;
  EXPECT_FALSE(mapping.artboard(QStringLiteral("Three")));
}

TEST(DocumentMappingTest, ReportsMissingDesignsAndChangedLayers) {
  const auto flat = [](double width, double height) {
    SketchJson board = parts::board("Flat", {});
    board["frame"] = {{"width", width}, {"height", height}};
    return board;
  };
  SketchJson round = mapped("round", "A");
  round["fixedRadius"] = 3;
  const struct {
    SketchJson layer;
    const char* sentence;
  } cases[] = {{mapped("l", "Gone"), "the design of the layer \"l\" (l-id) cannot be found"},
               {round, "the layer \"round\" (round-id) cannot take a design"},
               {mapped("l", "Flat"),
                "\"l\" (l-id) cannot take a design: there is nothing to draw in \"Flat\""}};
  for (const auto& [json, sentence] : cases) {
    for (const SketchJson& other : {flat(0, 0), flat(1e-300, 0), flat(-5, 9)}) {
      const auto document = parts::document({board("A", {}), other, json});
      const std::string message = messageIn(DocumentMapping(document).refresh());
      EXPECT_NE(message.find(sentence), std::string::npos) << message;
    }
  }
  const auto thin = parts::document({flat(5e-324, 9), mapped("l", "Flat")});
  EXPECT_FALSE(DocumentMapping(thin).refresh());
}

}  // namespace
}  // namespace kelvar
