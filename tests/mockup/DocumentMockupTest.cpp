#include "mockup/DocumentMockup.h"

#include <gtest/gtest.h>

#include <QLineF>
#include <QTemporaryDir>
#include <stop_token>

#include "mockup/Images.h"
#include "mockup/LayerSettings.h"
#include "mockup/SketchParts.h"
#include "platform/QtError.h"
#include "platform/files/File.h"
#include "platform/files/FileName.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar {
namespace {

using parts::board;
using parts::layer;
using parts::named;

SketchJson square(const std::string& name, const SketchJson& more = SketchJson::object()) {
  return layer("rectangle", name, {5, 5, 10, 10}, more);
}

const std::vector<SketchJson> kLayers{
    board("Design", {square("Flat")}, 1),
    board("Stage",
          {square("Target", parts::filled(parts::color(0, 1, 0))),
           square("Turned", {{"rotation", 30}}), square("Hidden", {{"isVisible", false}})})};

/// Documents in a temporary folder.
class DocumentMockupTest : public testing::Test {
 protected:
  QString path(const char* name) const { return dir_.filePath(QString::fromLatin1(name)); }

  void write(const char* name, const std::vector<SketchJson>& layers) {
    ASSERT_TRUE(File::writeAtomically(path(name), parts::packed(parts::files(layers))));
  }

  std::shared_ptr<DocumentMockup> open(const char* name, const DocumentChoice& choice = {}) {
    error_.clear();
    const auto mockup = DocumentMockup::open(path(name), choice);
    if (mockup) return *mockup;
    error_ = messageOf(mockup.error());
    return nullptr;
  }

  SketchDocumentRef saved(DocumentMockup& mockup, const Arrangement& arrangement,
                          const char* name) {
    const Result<void> saved = mockup.save(arrangement, path(name));
    EXPECT_TRUE(saved) << saved.error().message;
    return SketchDocument::open(path(name)).value_or(nullptr);
  }

  static QRgb middle(const Mockup::Drawing& drawing) {
    EXPECT_TRUE(drawing.image) << drawing.image.error().message;
    const QImage pixels = drawing.image.value()->pixels();
    return pixels.pixel(pixels.width() / 2, pixels.height() / 2);
  }

  QTemporaryDir dir_;
  QString error_;
};

const auto kTarget = QStringLiteral("Target-id");
const auto kDesign = QStringLiteral("Design-id");

TEST_F(DocumentMockupTest, ChoosesArtboardAndLayer) {
  write("doc.sketch", kLayers);
  const auto likely = open("doc.sketch");
  ASSERT_TRUE(likely) << qPrintable(error_);
  const Arrangement arrangement = likely->arrangement();
  EXPECT_EQ(arrangement.artboard, QStringLiteral("Stage-id")) << "it has a rotated shape";
  ASSERT_EQ(arrangement.shapesOnArtboard().size(), 2) << "the hidden one does not count";
  EXPECT_EQ(arrangement.shape(kTarget)->corners[2], QPointF(30, 30)) << "two pixels per point";
  EXPECT_EQ(arrangement.designs.size(), 2);

  const struct {
    DocumentChoice choice;
    const char* artboard;
    const char* sentence;
  } cases[] = {
      {{.artboard = QStringLiteral("Design")}, "Design-id", ""},
      {{.layers = {QStringLiteral("Flat")}}, "Design-id", ""},
      {{.layers = {QStringLiteral("Flat"), kTarget}}, "", "\"Target\" is not visible on"},
      {{.layers = {QStringLiteral("Hidden")}}, "", "\"Hidden\" is not visible on"},
      {{.layers = {QStringLiteral("Nobody")}}, "", "no layer \"Nobody\""},
      {{.artboard = QStringLiteral("Nobody")}, "", "no artboard \"Nobody\""},
  };
  for (const auto& [choice, artboard, sentence] : cases) {
    const auto mockup = open("doc.sketch", choice);
    EXPECT_EQ(mockup ? mockup->arrangement().artboard : QString(), QString::fromLatin1(artboard));
    EXPECT_EQ(mockup == nullptr, *sentence != 0) << sentence;
    EXPECT_TRUE(error_.contains(QString::fromLatin1(sentence))) << qPrintable(error_);
  }
}

TEST_F(DocumentMockupTest, RevertsToOpenedState) {
  write("doc.sketch", kLayers);
  const auto mockup = open("doc.sketch");
  ASSERT_TRUE(mockup) << qPrintable(error_);
  const Arrangement before = mockup->arrangement();
  Arrangement mapped = before;
  mapped.shape(kTarget)->design = kDesign;
  EXPECT_EQ(middle(mockup->draw(mapped, Mockup::Purpose::Window)), 0xffff0000);
  EXPECT_EQ(middle(mockup->draw(before, Mockup::Purpose::Window)), 0xff00ff00);
  const auto plain = saved(*mockup, before, "plain.sketch");
  const QString page = QStringLiteral("pages/one.json");
  EXPECT_EQ(plain->file(page), SketchDocument::open(path("doc.sketch")).value()->file(page));
  EXPECT_TRUE(plain->fileNames().filter(QStringLiteral("images/")).isEmpty());

  mapped.shape(kTarget)->options.quality = 3;
  mapped.shape(kTarget)->options.includedInArtboards = false;
  const auto settings = LayerSettings::of(*named(saved(*mockup, mapped, "a.sketch"), "Target"));
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->artboard, kDesign);
  EXPECT_EQ(settings->options.quality, 3);
  EXPECT_FALSE(settings->options.includedInArtboards);
  EXPECT_EQ(mockup->draw(mapped, Mockup::Purpose::Export).image.value()->pixels().width(), 60);

  // In another session: removing the design brings back the fill below it.
  const auto again = open("a.sketch");
  ASSERT_TRUE(again) << qPrintable(error_);
  EXPECT_EQ(again->arrangement().shapes, mapped.shapes);
  Arrangement none = again->arrangement();
  none.shape(kTarget)->design.clear();
  EXPECT_EQ(middle(again->draw(none, Mockup::Purpose::Window)), 0xff00ff00);
  const auto cleared = saved(*again, none, "b.sketch");
  EXPECT_FALSE(LayerSettings::of(*named(cleared, "Target")));
  EXPECT_TRUE(cleared->fileNames().filter(QStringLiteral("images/")).isEmpty());
}

TEST_F(DocumentMockupTest, DrawsLaterWhatWasCanceled) {
  write("doc.sketch", kLayers);
  const auto mockup = open("doc.sketch");
  ASSERT_TRUE(mockup) << qPrintable(error_);
  Arrangement mapped = mockup->arrangement();
  mapped.shape(kTarget)->design = kDesign;
  std::stop_source stop;
  stop.request_stop();
  const auto drawn = mockup->draw(mapped, Mockup::Purpose::Window, stop.get_token());
  ASSERT_FALSE(drawn.image);
  EXPECT_EQ(drawn.image.error().kind, Error::Kind::Stopped);
  EXPECT_FALSE(mockup->designImage(*mapped.design(kDesign), 20, stop.get_token()));
  EXPECT_FALSE(mockup->exportImage(mapped, stop.get_token()));
  EXPECT_TRUE(LayerSettings::of(*named(saved(*mockup, mapped, "a.sketch"), "Target")));
  EXPECT_EQ(middle(mockup->draw(mapped, Mockup::Purpose::Window)), 0xffff0000);
}

TEST_F(DocumentMockupTest, ShowsOneArtboardAndSavesAll) {
  // Duplicate identifiers, as some programs write them.
  write("doc.sketch", {board("Design", {}, 1), board("Stage", {square("Target")}),
                       board("Stage", {square("Target")}, 0.5), board("Bare", {})});
  const auto mockup = open("doc.sketch");
  ASSERT_TRUE(mockup) << qPrintable(error_);
  QStringList ids;
  for (const Mockup::Artboard& artboard : mockup->artboards()) ids.append(artboard.id);
  ASSERT_EQ(ids.size(), 4);
  EXPECT_EQ(QSet<QString>(ids.begin(), ids.end()).size(), 4);
  Arrangement arrangement = mockup->arrangement();
  ASSERT_EQ(arrangement.shapes.size(), 2);
  EXPECT_EQ(arrangement.artboard, ids[1]);
  EXPECT_EQ(middle(mockup->draw(arrangement, Mockup::Purpose::Window)), 0xff000000);
  arrangement.artboard = ids[2];
  ASSERT_EQ(arrangement.shapesOnArtboard().size(), 1);
  const QString second = arrangement.shapesOnArtboard()[0].id;
  arrangement.shape(second)->design = kDesign;
  arrangement.shape(second)->options.quality = 4;
  EXPECT_EQ(middle(mockup->draw(arrangement, Mockup::Purpose::Window)), 0xffff0000);
  EXPECT_EQ(mockup->draw(arrangement, Mockup::Purpose::Export).image.value()->pixels().width(), 80);
  arrangement.artboard = ids[3];
  EXPECT_EQ(mockup->draw(arrangement, Mockup::Purpose::Export).image.value()->pixels().width(), 20)
      << "the quality of shapes on other artboards does not matter";

  const auto document = saved(*mockup, arrangement, "out.sketch");
  const auto targets = document->layersNamed(QStringLiteral("Target"));
  ASSERT_EQ(targets.size(), 2);
  EXPECT_FALSE(LayerSettings::of(*targets[0]));
  EXPECT_TRUE(LayerSettings::of(*targets[1]));

  arrangement.shape(second)->design = arrangement.addDesign(path("gone.png"));
  EXPECT_TRUE(mockup->exportImage(arrangement)) << "it is on another artboard";
  const Result<void> refused = mockup->save(arrangement, path("out.sketch"));
  ASSERT_FALSE(refused);
  EXPECT_TRUE(messageOf(refused.error()).contains(u"in \"Stage\" cannot be saved"))
      << refused.error().message;

  EXPECT_EQ(open("doc.sketch", {.artboardBefore = ids[3]})->arrangement().artboard, ids[3]);
  EXPECT_EQ(open("doc.sketch", {.artboardBefore = QStringLiteral("gone")})->arrangement().artboard,
            ids[1]);
}

TEST_F(DocumentMockupTest, ShowsPageWithShapes) {
  SketchJson loose = square("Loose", {{"rotation", 90}});
  loose["frame"] = {{"x", 105}, {"y", -5}, {"width", 10}, {"height", 10}};
  write("doc.sketch", {board("Design", {square("Flat")}, 1), loose});
  const auto mockup = open("doc.sketch", {.layers = {QStringLiteral("Loose")}});
  ASSERT_TRUE(mockup) << qPrintable(error_);
  ASSERT_EQ(mockup->artboards().size(), 2);
  Arrangement arrangement = mockup->arrangement();
  EXPECT_EQ(mockup->artboards().last().id, arrangement.artboard);
  EXPECT_EQ(arrangement.shapesOnArtboard().size(), 1);
  Arrangement::Shape* const shape = arrangement.shape(QStringLiteral("Loose-id"));
  ASSERT_TRUE(shape);
  shape->design = kDesign;
  const QImage page = mockup->draw(arrangement, Mockup::Purpose::Window).image.value()->pixels();
  EXPECT_EQ(page.size(), QSize(230, 50));
  const QPointF middle = (shape->corners[0] + shape->corners[2]) / 2;
  EXPECT_NEAR(QLineF(middle, {220, 10}).length(), 0, 1e-9);
  EXPECT_EQ(page.pixel(middle.toPoint()), 0xffff0000);
  EXPECT_EQ(page.pixel(200, 10), 0u);

  write("bare.sketch", {layer("oval", "O", {1, 1, 9, 9})});
  EXPECT_EQ(open("bare.sketch")->artboards().size(), 1);
  write("empty.sketch", {});
  EXPECT_FALSE(open("empty.sketch"));
  EXPECT_TRUE(error_.contains(u"nothing to show")) << qPrintable(error_);
}

TEST_F(DocumentMockupTest, LocatesTopLeftOfDesign) {
  withRedCorner(20).save(path("design.png"));
  const SketchJson backwards{
      {"isClosed", true}, {"points", parts::points({{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}})}};
  const SketchJson mirrored{{"isFlippedHorizontal", true}};
  const QRectF frame(5, 5, 10, 10);
  write("doc.sketch",
        {board("Stage",
               {square("Plain"), square("Turned", {{"rotation", 90}}), square("Mirrored", mirrored),
                layer("shapePath", "Backwards", frame, backwards),
                parts::group("group", "Group", {0, 0, 20, 20},
                             {layer("shapePath", "Within", frame, backwards)}, mirrored)})});
  const auto mockup = open("doc.sketch");
  ASSERT_TRUE(mockup) << qPrintable(error_);
  ASSERT_EQ(mockup->arrangement().shapes.size(), 5);
  for (const Arrangement::Shape& shape : mockup->arrangement().shapes) {
    Arrangement arrangement = mockup->arrangement();
    arrangement.shape(shape.id)->design = arrangement.addDesign(path("design.png"));
    expectRedAtTopLeftCorner(*mockup, arrangement, shape.id);
  }
}

TEST_F(DocumentMockupTest, RemapsRefreshedDesigns) {
  SketchJson target = square("Target", {{"rotation", 1}});
  target["userInfo"]["io.kelvarlabs.kelvar"] = {{"artboard", "Design-id"}, {"quality", 1.5}};
  write("doc.sketch", {board("Design", {}, 1), board("Stage", {target})});
  const auto mockup = open("doc.sketch");
  ASSERT_TRUE(mockup) << qPrintable(error_);
  const Arrangement arrangement = mockup->arrangement();
  EXPECT_EQ(middle(mockup->draw(arrangement, Mockup::Purpose::Window)), 0xff000000)
      << "as the document has it";
  mockup->refresh(*arrangement.design(kDesign));
  EXPECT_EQ(middle(mockup->draw(arrangement, Mockup::Purpose::Window)), 0xffff0000);
  const auto document = saved(*mockup, arrangement, "out.sketch");
  EXPECT_EQ(LayerSettings::of(*named(document, "Target"))->options.quality, 1.5)
      << "between two positions, and not changed";
}

TEST_F(DocumentMockupTest, DoesNotSaveWhatItCannotShow) {
  SketchJson target = square("Target", {{"rotation", 1}});
  target["userInfo"]["io.kelvarlabs.kelvar"] = {{"image", "images/of-elsewhere.png"}};
  write("doc.sketch", {board("Stage", {target})});
  const auto mockup = open("doc.sketch");
  ASSERT_TRUE(mockup) << qPrintable(error_);
  Arrangement same = mockup->arrangement();
  same.shape(kTarget)->options.includedInArtboards = false;
  const auto document = saved(*mockup, same, "out.sketch");
  EXPECT_FALSE(LayerSettings::of(*named(document, "Target"))->options.includedInArtboards);

  Arrangement circle = same, turned = same, gone = same;
  circle.shape(kTarget)->design = QStringLiteral("Stage-id");
  circle.shape(kTarget)->options.includedInArtboards = true;
  turned.shape(kTarget)->options.rotation = 1;
  gone.shape(kTarget)->design = gone.addDesign(path("gone.png"));
  const struct {
    const Arrangement& arrangement;
    const char* sentence;
  } cases[] = {{circle, "in a circle"}, {turned, "only as it was mapped"}, {gone, "gone.png"}};
  for (const auto& [arrangement, sentence] : cases) {
    const auto problems = mockup->draw(arrangement, Mockup::Purpose::Window).shapeProblems;
    EXPECT_TRUE(problems.value(kTarget).contains(QLatin1String(sentence))) << sentence;
    const Result<void> refused = mockup->save(arrangement, path("bad.sketch"));
    ASSERT_FALSE(refused) << sentence;
    EXPECT_TRUE(messageOf(refused.error()).contains(QLatin1String(sentence)))
        << refused.error().message;
    EXPECT_FALSE(mockup->exportImage(arrangement)) << sentence;
  }
  EXPECT_FALSE(QFile::exists(path("bad.sketch")));
  EXPECT_TRUE(mockup->draw(same, Mockup::Purpose::Window).shapeProblems.isEmpty());
}

TEST_F(DocumentMockupTest, DetectsChangesByOthers) {
  write("doc.sketch", kLayers);
  const auto mockup = open("doc.sketch");
  ASSERT_TRUE(mockup) << qPrintable(error_);
  const auto hasChanged = [&] { return mockup->hasChangedOnDisk(path("doc.sketch")); };
  EXPECT_FALSE(hasChanged());
  write("doc.sketch", {board("Other", {})});
  EXPECT_TRUE(hasChanged());
  const FileState theirs = fileState(path("doc.sketch"));
  const Result<void> refused = mockup->save(mockup->arrangement(), path("doc.sketch"));
  ASSERT_FALSE(refused);
  EXPECT_TRUE(messageOf(refused.error()).contains(u"another program has changed"))
      << refused.error().message;
  EXPECT_EQ(fileState(path("doc.sketch")), theirs);
  EXPECT_FALSE(mockup->hasChangedOnDisk(path("other.sketch")));
  mockup->acceptDiskVersion();
  EXPECT_FALSE(hasChanged());
  write("doc.sketch", kLayers);
  EXPECT_TRUE(hasChanged());
  mockup->acceptDiskVersion();
  saved(*mockup, mockup->arrangement(), "doc.sketch");
  EXPECT_FALSE(hasChanged()) << "it is what we saved";
}

}  // namespace
}  // namespace kelvar
