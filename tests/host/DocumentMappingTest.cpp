#include "host/DocumentMapping.h"

#include <gtest/gtest.h>

#include "host/ArtboardRenderer.h"
#include "host/MappedArtboards.h"
#include "host/SketchParts.h"

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
  for (const SketchLayerRef& layer : MappedArtboards(*document).layersInOrder()) {
    names.append(layer->name());
  }
  return names.join(u' ');
}

TEST(MappedArtboards, PutsEachLayerBeforeThoseThatShowIt) {
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

TEST(MappedArtboards, FollowsAWayOfAnyLength) {
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
  EXPECT_TRUE(MappedArtboards(*document).layersInOrder().isEmpty());
  EXPECT_EQ(MappedArtboards(*document).circle(first, first->children().first()).size(), 2);
  EXPECT_EQ(
      MappedArtboards(*document).circle(document->artboards()[1], first->children().first()).size(),
      kLength + 1);
}

TEST(DocumentMapping, RefusesCirclesAndNamesThem) {
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
    QString error;
    const bool done = DocumentMapping(document).mapArtboard(named(document, "t"),
                                                            {.isIncludedInArtboards = isIncluded},
                                                            named(document, artboard), &error);
    EXPECT_EQ(done, error.isEmpty()) << what << ": " << qPrintable(error);
    EXPECT_TRUE(error.contains(QString::fromUtf8(sentence))) << what << ": " << qPrintable(error);
    EXPECT_EQ(error.isEmpty(), *sentence == 0) << what << ": " << qPrintable(error);
  }
  const auto circle =
      parts::document({board("A", {mapped("a", "B")}), board("B", {mapped("b", "A")})});
  QString error;
  QList<SketchLayerRef> layers;
  EXPECT_FALSE(DocumentMapping(circle).refresh(&layers, &error));
  EXPECT_TRUE(error.contains(u"in a circle")) << qPrintable(error);
}

/// The colour in the middle of an artboard's picture.
QRgb middle(const SketchDocumentRef& document, const char* artboard) {
  QString error;
  const ImageRef picture = ArtboardRenderer(document).render(*named(document, artboard), 1, &error);
  EXPECT_TRUE(picture) << qPrintable(error);
  return picture ? picture->pixels().pixel(10, 10) : 0;
}

TEST(DocumentMapping, RefreshesFromTheArtboardsAsTheyAreNow) {
  const auto document =
      parts::document({board("C", {mapped("onC", "B")}), board("B", {mapped("onB", "A")}),
                       board("A", {}, 1), board("Excluding", {mapped("hidden", "A", false)}),
                       board("Last", {mapped("onLast", "Excluding")})});
  DocumentMapping mapping(document);
  QString error;
  QList<SketchLayerRef> layers;
  ASSERT_TRUE(mapping.refresh(&layers, &error)) << qPrintable(error);
  EXPECT_EQ(layers.size(), 4);
  EXPECT_EQ(middle(document, "C"), 0xffff0000) << "the design of the design";
  EXPECT_EQ(middle(document, "Excluding"), 0xffff0000) << "seen where it is";
  EXPECT_EQ(middle(document, "Last"), 0xff000000) << "and not where it is shown";

  const SketchLayerRef design = named(document, "A");
  design->edit()["backgroundColor"] = parts::color(0, 0, 1);
  ASSERT_TRUE(mapping.refresh(&layers, &error)) << qPrintable(error);
  EXPECT_EQ(middle(document, "C"), 0xff0000ff);
}

TEST(DocumentMapping, SaysWhatIsWrongWithNames) {
  const auto document = parts::document(
      {board("Board", {target("Twice"), target("Twice"), layer("triangle", "Three", {0, 0, 9, 9}),
                       group("shapeGroup", "Group", {0, 0, 9, 9}, {target("Group")})}),
       board("Board", {})});
  DocumentMapping mapping(document);
  QString error;
  EXPECT_TRUE(mapping.layer(QStringLiteral("Group"), &error)) << qPrintable(error);
  const struct {
    const char* name;
    QStringList parts;
  } cases[] = {
      {"Nobody", {QStringLiteral("no layer \"Nobody\"")}},
      {"Twice",
       {QStringLiteral("fits several layers"), QStringLiteral("rectangle Twice-id in \"Board\"")}},
      {"Twice-id", {QStringLiteral("\"Twice-id\" is the identifier of several layers")}},
      {"Three", {QStringLiteral("\"Three\" (Three-id)"), QStringLiteral("it has 3 corners")}},
  };
  for (const auto& [name, sentences] : cases) {
    EXPECT_FALSE(mapping.layer(QString::fromLatin1(name), &error)) << name;
    for (const QString& part : sentences) {
      EXPECT_TRUE(error.contains(part)) << name << ": " << qPrintable(error);
    }
  }
  EXPECT_FALSE(mapping.artboard(QStringLiteral("Board"), &error));
  EXPECT_TRUE(error.contains(u"fits several artboards")) << qPrintable(error);
  EXPECT_FALSE(mapping.artboard(QStringLiteral("Three"), &error));
}

TEST(DocumentMapping, TellsWhenADesignIsGoneOrALayerHasChanged) {
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
      QString error;
      QList<SketchLayerRef> layers;
      EXPECT_FALSE(DocumentMapping(document).refresh(&layers, &error));
      EXPECT_TRUE(error.contains(QString::fromLatin1(sentence))) << qPrintable(error);
    }
  }
  const auto thin = parts::document({flat(5e-324, 9), mapped("l", "Flat")});
  QString error;
  QList<SketchLayerRef> layers;
  EXPECT_FALSE(DocumentMapping(thin).refresh(&layers, &error));
}

}  // namespace
}  // namespace kelvar
