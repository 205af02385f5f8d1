#include "mockup/PhotoMockup.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "mockup/Images.h"
#include "platform/image/ImageFile.h"

namespace kelvar {
namespace {

class PhotoMockupTest : public testing::Test {
 protected:
  void SetUp() override {
    noise(80, 60).save(path("photo.png"));
    noise(30, 20, 1).save(path("a.png"));
    noise(20, 30, 2).save(path("b.png"));
    arrangement_.photo = path("photo.png");
    const QString a = arrangement_.addDesign(path("a.png"));
    const QString b = arrangement_.addDesign(path("b.png"));
    arrangement_.shapes = {
        {.id = QStringLiteral("1"),
         .name = QStringLiteral("One"),
         .corners = {QPointF(5, 5), {40, 8}, {38, 40}, {3, 35}},
         .design = a},
        {.id = QStringLiteral("2"),
         .name = QStringLiteral("Two"),
         .corners = {QPointF(30, 20), {90, 25}, {70, 70}, {35, 50}},
         .design = b,
         .options = {.quality = 2, .rotation = 3, .flipped = true}},
    };
  }

  QString path(const char* name) const { return dir_.filePath(QString::fromLatin1(name)); }

  QString one_ = QStringLiteral("1");
  QTemporaryDir dir_;
  Arrangement arrangement_;
};

ImageRef read(const QString& path) { return ImageFile::read(path, {}).value_or(nullptr); }

TEST_F(PhotoMockupTest, StacksShapes) {
  PhotoMockup mockup(arrangement_);
  const QImage both = mockup.draw(arrangement_, Mockup::Purpose::Window).image.value()->pixels();
  const auto composite = [&](int shape, const char* design, const ImageRef& photo) {
    return arrangement_.shapes[shape].mapping().compositeOnto(read(path(design)), photo).value();
  };
  const ImageRef first = composite(0, "a.png", read(path("photo.png")));
  EXPECT_EQ(both, composite(1, "b.png", first)->pixels());
  arrangement_.shapes[1].options.includedInArtboards = false;
  EXPECT_EQ(mockup.draw(arrangement_, Mockup::Purpose::Window).image.value()->pixels(),
            first->pixels());
  EXPECT_EQ(mockup.exportImage(arrangement_).value()->pixels(), first->pixels());
}

TEST_F(PhotoMockupTest, UsesNaturalSizeOfVectors) {
  QFile file(path("photo.svg"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(
      "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 80 60'><rect width='9' height='9'/>"
      "</svg>");
  file.close();
  arrangement_.photo = path("photo.svg");
  const QString design = arrangement_.addDesign(path("photo.svg"));
  PhotoMockup mockup(arrangement_);
  const Mockup::Drawing drawing = mockup.draw(arrangement_, Mockup::Purpose::Window);
  ASSERT_TRUE(drawing.image) << drawing.image.error().message;
  EXPECT_EQ((*drawing.image)->size(), QSizeF(80, 60));
  const Result<ImageRef> image = mockup.designImage(*arrangement_.design(design), 100);
  ASSERT_TRUE(image) << image.error().message;
  EXPECT_EQ((*image)->size(), QSizeF(80, 60));
}

TEST_F(PhotoMockupTest, LocatesTopLeftOfDesign) {
  withRedCorner(40).save(path("a.png"));
  const std::array<QPointF, 4> drawn[] = {{QPointF(5, 5), {60, 8}, {58, 50}, {3, 45}},
                                          {QPointF(5, 5), {3, 45}, {58, 50}, {60, 8}},
                                          {QPointF(58, 50), {60, 8}, {5, 5}, {3, 45}}};
  arrangement_.shapes.resize(1);
  PhotoMockup mockup(arrangement_);
  for (const auto& corners : drawn) {
    arrangement_.shapes[0].corners = corners;
    expectRedAtTopLeftCorner(mockup, arrangement_, one_);
  }
}

TEST_F(PhotoMockupTest, ReloadsChangedFiles) {
  PhotoMockup mockup(arrangement_);
  const auto draw = [&] {
    return mockup.draw(arrangement_, Mockup::Purpose::Window).image.value()->pixels();
  };
  const QImage before = draw();
  EXPECT_EQ(draw(), before);
  noise(30, 21, 7).save(path("a.png"));
  // The same size and modification time as the file before.
  const QDateTime time = QDateTime::fromSecsSinceEpoch(1700000000);
  QFile file(path("a.png"));
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  ASSERT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
  const QImage changed = draw();
  EXPECT_NE(changed, before);
  const qint64 size = file.size();
  QFile::remove(path("c.png"));
  noise(30, 20, 1).save(path("c.png"));
  QFile other(path("c.png"));
  ASSERT_TRUE(other.open(QIODevice::ReadOnly));
  QByteArray bytes = other.readAll();
  bytes.resize(size, '\0');
  file.write(bytes);
  file.flush();
  file.setFileTime(time, QFileDevice::FileModificationTime);
  EXPECT_EQ(draw(), changed);
  mockup.refresh(arrangement_.designs.first());
  EXPECT_EQ(draw(), before);
}

TEST_F(PhotoMockupTest, KeepsDesignWhoseFileIsGone) {
  PhotoMockup mockup(arrangement_);
  const QImage before = mockup.draw(arrangement_, Mockup::Purpose::Window).image.value()->pixels();
  ASSERT_TRUE(QFile::remove(path("a.png")));
  mockup.refresh(arrangement_.designs.first());
  const Mockup::Drawing drawing = mockup.draw(arrangement_, Mockup::Purpose::Window);
  EXPECT_EQ(drawing.image.value()->pixels(), before);
  EXPECT_EQ(drawing.shapeProblems.keys(), QStringList(one_));
  EXPECT_TRUE(drawing.shapeProblems.first().contains(path("a.png")));
  const Result<ImageRef> refused = mockup.exportImage(arrangement_);
  ASSERT_FALSE(refused);
  EXPECT_TRUE(refused.error().message.starts_with("\"One\" cannot be shown"))
      << refused.error().message;
  arrangement_.shapes[0].options.includedInArtboards = false;
  EXPECT_TRUE(mockup.exportImage(arrangement_)) << "its design is not shown";
}

TEST_F(PhotoMockupTest, ReportsUnmappableShapes) {
  PhotoMockup mockup(arrangement_);
  const struct {
    std::array<QPointF, 4> corners;
    const char* sentence;
  } cases[] = {
      {{QPointF(0, 0), {5, 5}, {9, 9}, {0, 9}}, "on one line"},
      {{QPointF(0, 0), {9, 9}, {9, 0}, {0, 9}}, "cross"},
      {{QPointF(0, 0), {9, 0}, {2, 2}, {0, 9}}, "concave"},
      {{QPointF(0, 0), {0, 0}, {9, 9}, {0, 9}}, "same point"},
  };
  for (const auto& [corners, sentence] : cases) {
    arrangement_.shapes[0].corners = corners;
    const Mockup::Drawing drawing = mockup.draw(arrangement_, Mockup::Purpose::Window);
    EXPECT_TRUE(drawing.image);
    EXPECT_TRUE(drawing.shapeProblems.value(one_).contains(QString::fromLatin1(sentence)))
        << drawing.shapeProblems.value(one_).toStdString();
  }
}

TEST_F(PhotoMockupTest, RequiresPhoto) {
  arrangement_.photo = path("missing.jpg");
  PhotoMockup mockup(arrangement_);
  const Mockup::Drawing drawing = mockup.draw(arrangement_, Mockup::Purpose::Window);
  ASSERT_FALSE(drawing.image);
  EXPECT_NE(drawing.image.error().message.find("missing.jpg"), std::string::npos);
}

}  // namespace
}  // namespace kelvar
