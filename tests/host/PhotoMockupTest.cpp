#include "host/PhotoMockup.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "host/Pictures.h"
#include "platform/ImageFile.h"

namespace kelvar {
namespace {

class Photo : public testing::Test {
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
         .quality = 1,
         .rotation = 3,
         .flipped = true},
    };
  }

  QString path(const char* name) const { return dir_.filePath(QString::fromLatin1(name)); }

  QString one_ = QStringLiteral("1");
  QTemporaryDir dir_;
  Arrangement arrangement_;
};

ImageRef read(const QString& path) {
  QString error;
  return ImageFile::read(path, {}, &error);
}

TEST_F(Photo, DrawsTheShapesOverEachOther) {
  PhotoMockup mockup(arrangement_);
  const QImage both = mockup.draw(arrangement_, Mockup::Purpose::Window).picture->pixels();
  const ImageRef first =
      arrangement_.shapes[0].mapping().layOnto(read(path("a.png")), read(path("photo.png")));
  EXPECT_EQ(both, arrangement_.shapes[1].mapping().layOnto(read(path("b.png")), first)->pixels());
  arrangement_.shapes[1].included = false;
  EXPECT_EQ(mockup.draw(arrangement_, Mockup::Purpose::Window).picture->pixels(), first->pixels());
  QString error;
  EXPECT_EQ(mockup.exportPicture(arrangement_, &error)->pixels(), first->pixels());
}

TEST_F(Photo, TakesVectorsInTheirNaturalSize) {
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
  ASSERT_TRUE(drawing.picture) << drawing.problem.toStdString();
  EXPECT_EQ(drawing.picture->size(), QSizeF(80, 60));
  QString error;
  const ImageRef picture = mockup.designPicture(*arrangement_.design(design), 100, &error);
  ASSERT_TRUE(picture) << error.toStdString();
  EXPECT_EQ(picture->size(), QSizeF(80, 60));
}

TEST_F(Photo, KnowsWhereADesignsTopLeftGoes) {
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

TEST_F(Photo, ReadsAgainWhatHasChanged) {
  PhotoMockup mockup(arrangement_);
  const auto draw = [&] {
    return mockup.draw(arrangement_, Mockup::Purpose::Window).picture->pixels();
  };
  const QImage before = draw();
  EXPECT_EQ(draw(), before);
  noise(30, 21, 7).save(path("a.png"));
  // As quick hands can do it: as many bytes at the same time.
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

TEST_F(Photo, KeepsADesignThatHasGone) {
  PhotoMockup mockup(arrangement_);
  const QImage before = mockup.draw(arrangement_, Mockup::Purpose::Window).picture->pixels();
  ASSERT_TRUE(QFile::remove(path("a.png")));
  mockup.refresh(arrangement_.designs.first());
  const Mockup::Drawing drawing = mockup.draw(arrangement_, Mockup::Purpose::Window);
  EXPECT_EQ(drawing.picture->pixels(), before);
  EXPECT_EQ(drawing.shapeProblems.keys(), QStringList(one_));
  EXPECT_TRUE(drawing.shapeProblems.first().contains(path("a.png")));
  QString error;
  EXPECT_FALSE(mockup.exportPicture(arrangement_, &error));
  EXPECT_TRUE(error.startsWith(QStringLiteral("\"One\" cannot be shown"))) << error.toStdString();
  arrangement_.shapes[0].included = false;
  EXPECT_TRUE(mockup.exportPicture(arrangement_, &error)) << "it is not asked for";
}

TEST_F(Photo, SaysWhatCannotBeMapped) {
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
    EXPECT_TRUE(drawing.picture);
    EXPECT_TRUE(drawing.shapeProblems.value(one_).contains(QString::fromLatin1(sentence)))
        << drawing.shapeProblems.value(one_).toStdString();
  }
}

TEST_F(Photo, NeedsAPhoto) {
  arrangement_.photo = path("missing.jpg");
  PhotoMockup mockup(arrangement_);
  const Mockup::Drawing drawing = mockup.draw(arrangement_, Mockup::Purpose::Window);
  EXPECT_FALSE(drawing.picture);
  EXPECT_TRUE(drawing.problem.contains(QStringLiteral("missing.jpg")));
}

}  // namespace
}  // namespace kelvar
