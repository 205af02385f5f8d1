#include "mockup/PanelModel.h"

#include <gtest/gtest.h>

namespace kelvar {
namespace {

std::array<QPointF, 4> square(double x) { return {QPointF(x, 0), {x + 9, 0}, {x + 9, 9}, {x, 9}}; }

QString s(const char* text) { return QString::fromLatin1(text); }

/// Opens three shapes: nothing is selected, and nothing can be undone.
void fill(PanelModel* model) {
  for (const double x : {0.0, 20.0, 40.0}) model->addShape(square(x));
  model->open(model->arrangement());
}

TEST(PanelModelTest, UndoesAndRedoes) {
  PanelModel model;
  fill(&model);
  const Arrangement first = model.arrangement();
  model.select({s("2")});
  model.rotate();
  const Arrangement turned = model.arrangement();
  model.setQuality(0);
  model.setIncluded(true);
  EXPECT_EQ(model.arrangement(), turned) << "what changes nothing is no step";
  model.removeSelected();
  EXPECT_EQ(model.arrangement().shapes.size(), 2);
  EXPECT_TRUE(model.selection().isEmpty());
  model.undo();
  EXPECT_EQ(model.arrangement(), turned);
  model.undo();
  EXPECT_EQ(model.arrangement(), first);
  EXPECT_FALSE(model.canUndo());
  EXPECT_FALSE(model.isModified());
  model.undo();
  model.redo();
  EXPECT_EQ(model.arrangement(), turned);
  EXPECT_TRUE(model.isModified());
  model.select({s("1")});
  model.flip();
  EXPECT_FALSE(model.canRedo()) << "another way was taken";
}

TEST(PanelModelTest, UndoReturnsToArtboardOfChange) {
  Arrangement two;
  two.artboard = s("A");
  for (const char* artboard : {"A", "B"}) {
    two.shapes.append({.id = s(artboard), .name = {}, .corners = square(0), .design = {}});
    two.shapes.last().artboard = s(artboard);
  }
  PanelModel model;
  model.open(two);
  model.select({s("A"), s("B")});
  EXPECT_EQ(model.selection(), QStringList(s("A"))) << "the other one is not in sight";
  model.rotate();
  model.showArtboard(s("B"));
  EXPECT_TRUE(model.selection().isEmpty());
  model.selectNext(1);
  EXPECT_EQ(model.selection(), QStringList(s("B")));
  model.flip();
  model.showArtboard(s("A"));

  const auto shown = [&] { return model.arrangement().artboard; };
  model.undo();
  EXPECT_EQ(shown(), s("B"));
  EXPECT_FALSE(model.arrangement().shape(s("B"))->options.flipped);
  model.undo();
  EXPECT_EQ(shown(), s("A"));
  EXPECT_FALSE(model.isModified());
  model.showArtboard(s("B"));
  EXPECT_FALSE(model.isModified()) << "looking is no change";
  model.redo();
  EXPECT_EQ(shown(), s("A"));
  EXPECT_EQ(model.arrangement().shape(s("A"))->options.rotation, 1);
  model.redo();
  EXPECT_EQ(shown(), s("B"));
  EXPECT_TRUE(model.arrangement().shape(s("B"))->options.flipped);
  EXPECT_FALSE(model.canRedo());
}

TEST(PanelModelTest, DragIsOneUndoStep) {
  PanelModel model;
  fill(&model);
  const Arrangement first = model.arrangement();
  model.select({s("1"), s("3")});
  model.beginStep();
  for (int i = 0; i < 5; ++i) model.moveSelected({1, 2});
  model.endStep();
  const Arrangement moved = model.arrangement();
  EXPECT_EQ(moved.shape(s("3"))->corners[0], QPointF(45, 10));
  EXPECT_EQ(moved.shape(s("2"))->corners[0], QPointF(20, 0));
  model.beginStep();
  model.endStep();
  model.setCorner(s("2"), 3, {-7, 1e99});
  EXPECT_EQ(model.arrangement().shape(s("2"))->corners[3],
            QPointF(-7, Arrangement::kMaxCoordinate));
  model.undo();
  EXPECT_EQ(model.arrangement(), moved);
  model.undo();
  EXPECT_EQ(model.arrangement(), first);
}

TEST(PanelModelTest, SelectsInOrderOfShapes) {
  PanelModel model;
  fill(&model);
  model.select({s("3"), s("9"), s("1")});
  EXPECT_EQ(model.selection(), QStringList({s("1"), s("3")}));
  model.toggleSelected(s("2"));
  model.toggleSelected(s("1"));
  EXPECT_EQ(model.selection(), QStringList({s("2"), s("3")}));
  const struct {
    int direction;
    const char* selected;
  } steps[] = {{1, "1"}, {-1, "3"}, {-1, "2"}, {1, "3"}};
  for (const auto& [direction, selected] : steps) {
    model.selectNext(direction);
    EXPECT_EQ(model.selection(), QStringList(s(selected)));
  }
  model.selectAll();
  EXPECT_EQ(model.selection(), QStringList({s("1"), s("2"), s("3")}));
  model.select({});
  model.selectNext(-1);
  EXPECT_EQ(model.selection(), QStringList(s("3")));
}

TEST(PanelModelTest, ReportsCommonSettingsOfSelection) {
  PanelModel model;
  fill(&model);
  EXPECT_EQ(model.quality(), 0);
  model.select({s("1")});
  model.setQuality(2);
  model.setIncluded(false);
  model.setQuality(4);
  EXPECT_EQ(model.quality(), 2);
  EXPECT_EQ(model.included(), 0);
  model.select({s("1"), s("2")});
  EXPECT_EQ(model.quality(), PanelModel::kMixed);
  EXPECT_EQ(model.included(), PanelModel::kMixed);
  model.rotate();
  model.setQuality(3);
  model.setIncluded(true);
  EXPECT_EQ(model.quality(), 3);
  EXPECT_EQ(model.included(), 1);
  EXPECT_EQ(model.arrangement().shape(s("3"))->options.quality, 1);
  EXPECT_EQ(model.arrangement().shape(s("3"))->options.rotation, 0);
}

TEST(PanelModelTest, AddsEachDesignOnceAndNotifiesOfChanges) {
  PanelModel model;
  fill(&model);
  int told = 0;
  model.onChanged = [&] { ++told; };
  const QString design = model.addDesign(s("/a/../b.png"));
  EXPECT_EQ(model.addDesign(s("/b.png")), design);
  EXPECT_NE(model.addDesign(s("/c.png")), design);
  EXPECT_EQ(told, 2);
  model.setDesign(s("1"), design);
  model.setDesign(s("1"), design);
  model.select({s("1")});
  model.select({s("1")});
  EXPECT_EQ(told, 4);
  model.markSaved(model.arrangement());
  EXPECT_FALSE(model.isModified());
  model.undo();
  EXPECT_TRUE(model.isModified());
}

TEST(PanelModelTest, OpeningADesignIsNoChange) {
  PanelModel model;
  fill(&model);
  model.select({s("1")});
  model.rotate();
  const QString mine = model.addDesign(s("/mine.png"));
  model.undo();
  model.markSaved(model.arrangement());

  const QString design = model.addOpenedDesign(s("/a.png"));
  EXPECT_NE(design, mine) << "the one that can be redone";
  EXPECT_EQ(model.addOpenedDesign(s("/a.png")), design);
  EXPECT_FALSE(model.isModified());
  model.undo();
  EXPECT_FALSE(model.canUndo());
  for (int step = 0; step < 3; ++step) {
    EXPECT_EQ(model.arrangement().design(design)->file, s("/a.png")) << step;
    model.redo();
  }
  EXPECT_EQ(model.arrangement().design(mine)->file, s("/mine.png"));
  EXPECT_EQ(model.arrangement().designs.size(), 2);
}

}  // namespace
}  // namespace kelvar
