#include <gtest/gtest.h>

#include "mockup/SketchParts.h"
#include "platform/QtError.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using parts::document;
using parts::group;
using parts::layer;
using parts::named;

/// The names of the layers below one, in drawing order, with brackets around groups.
QString tree(const SketchLayer& container) {
  QString names;
  for (const SketchLayerRef& child : container.children()) {
    names += child->name() + (child->isGroup() ? u'(' + tree(*child) + u')' : QString());
  }
  return names;
}

SketchDocumentRef sample() {
  return document({group("group", "A", {0, 0, 9, 9}, {layer("oval", "b", {0, 0, 1, 1})}),
                   group("group", "C", {0, 0, 9, 9}, {}), layer("rectangle", "d", {0, 0, 1, 1})});
}

TEST(SketchLayerTreeTest, ChangesSurviveASave) {
  const SketchDocumentRef doc = sample();
  const SketchLayerRef page = doc->pages()[0];
  ASSERT_TRUE(named(doc, "C")->insert(named(doc, "b"), 0));
  ASSERT_TRUE(page->insert(named(doc, "d"), 0));
  const SketchLayerRef copy = named(doc, "C")->copy();
  copy->setName(u"E"_s);
  ASSERT_TRUE(page->insert(copy, 99));
  EXPECT_EQ(tree(*page), u"dA()C(b)E(b)");
  EXPECT_NE(copy->children()[0]->objectID(), u"b-id");
  EXPECT_EQ(copy->children()[0]->page(), page);

  const SketchDocumentRef read = parts::opened(*doc->bytes());
  EXPECT_EQ(tree(*read->pages()[0]), u"dA()C(b)E(b)");
  const SketchLayerRef removed = named(doc, "A");
  removed->removeFromParent();
  EXPECT_EQ(tree(*parts::opened(*doc->bytes())->pages()[0]), u"dC(b)E(b)");
  EXPECT_EQ(removed->name(), u"A");
  EXPECT_EQ(removed->document(), nullptr);
  EXPECT_EQ(removed->page(), nullptr);
}

TEST(SketchLayerTreeTest, MovesWithinAGroup) {
  const SketchDocumentRef doc = sample();
  const SketchLayerRef page = doc->pages()[0];
  const struct {
    const char* name;
    qsizetype index;
    const char16_t* tree;
  } cases[] = {{"A", 3, u"C()dA(b)"},
               {"d", 1, u"C()dA(b)"},
               {"A", 2, u"C()dA(b)"},
               {"A", 1, u"C()A(b)d"},
               {"C", -5, u"C()A(b)d"}};
  for (const auto& [name, index, expected] : cases) {
    ASSERT_TRUE(page->insert(named(doc, name), index));
    EXPECT_EQ(tree(*page), expected) << name << " " << index;
  }
}

TEST(SketchLayerTreeTest, RefusesWhatIsNoTree) {
  const SketchDocumentRef doc = sample();
  const SketchLayerRef page = doc->pages()[0], a = named(doc, "A");
  const auto message = [](const Result<void>& result) {
    return result ? QString() : messageOf(result.error());
  };
  EXPECT_EQ(message(named(doc, "d")->insert(a, 0)), u"\"d\" cannot contain layers");
  EXPECT_EQ(message(a->insert(page, 0)), u"the page \"Page\" cannot be put into a layer");
  EXPECT_EQ(message(a->insert(a, 0)), u"\"A\" cannot be put into itself");
  ASSERT_TRUE(a->insert(named(doc, "C"), 0));
  EXPECT_EQ(message(named(doc, "C")->insert(a, 0)), u"\"A\" cannot be put into itself");
  SketchLayerRef inner = named(doc, "C");
  Result<void> inserted;
  int depth = 3;  // Page, A and C.
  while (inserted && depth < 1000) {
    const SketchLayerRef next =
        SketchLayer::create(std::make_unique<Layer>(parts::group("group", "G", {0, 0, 1, 1}, {})));
    inserted = inner->insert(next, 0);
    if (!inserted) break;
    inner = next;
    ++depth;
  }
  EXPECT_EQ(depth, 200);
  EXPECT_EQ(message(inserted), u"layers cannot be nested more than 200 deep");
  EXPECT_TRUE(SketchDocument::read(*doc->bytes(), u"deep"_s));
}

TEST(SketchLayerTreeTest, FindsNewSymbolsAndForgetsRemovedOnes) {
  const auto master = [](const char* id) {
    return group("symbolMaster", id, {0, 0, 9, 9}, {}, {{"symbolID", id}});
  };
  const SketchDocumentRef doc = document({master("one")});
  ASSERT_TRUE(doc->symbolMaster(u"one"_s));
  ASSERT_TRUE(
      doc->pages()[0]->insert(SketchLayer::create(std::make_unique<Layer>(master("two"))), 1));
  EXPECT_TRUE(doc->symbolMaster(u"two"_s));
  named(doc, "one")->removeFromParent();
  EXPECT_FALSE(doc->symbolMaster(u"one"_s));
}

TEST(SketchLayerTreeTest, SelectsLayersOfItsDocument) {
  const SketchDocumentRef doc = sample();
  const SketchLayerRef a = named(doc, "A"), d = named(doc, "d");
  doc->select(d);
  doc->select(a);
  doc->select(a);
  EXPECT_EQ(doc->selection(), (QList<SketchLayerRef>{d, a}));
  doc->select(d, false);
  EXPECT_FALSE(d->isSelected());
  doc->select(d);
  a->removeFromParent();
  EXPECT_EQ(doc->selection(), QList<SketchLayerRef>{d});
  doc->deselectAll();
  EXPECT_EQ(doc->selection(), QList<SketchLayerRef>());
  EXPECT_FALSE(d->isSelected());
}

TEST(SketchLayerTreeTest, OpensAnotherPage) {
  const SketchDocumentRef doc = sample();
  EXPECT_TRUE(doc->setCurrentPage(doc->pages()[0]));
  EXPECT_EQ(messageOf(doc->setCurrentPage(named(doc, "A")).error()),
            u"it is not a page of this document");
}

}  // namespace
}  // namespace kelvar
