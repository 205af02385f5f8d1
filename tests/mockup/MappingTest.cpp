#include "mockup/Mapping.h"

#include <gtest/gtest.h>

#include <cmath>

#include "geometry/Points.h"

namespace kelvar {
namespace {

ImageRef makeImage(int width, int height, uint seed = 0) {
  QImage pixels(width, height, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      pixels.setPixel(x, y, 0xff000000 | ((x * 2654435761u + y * 40503u + seed) >> 3 & 0xffffff));
    }
  }
  return std::make_shared<Image>(pixels);
}

Mapping bilinear(const char* corners, double quality = 1) {
  return {.corners = quad(corners),
          .options = {.quality = quality, .sampling = warp::Sampling::Bilinear}};
}

std::string text(const warp::Quad& quad) {
  std::string out;
  for (const auto& p : quad) out += stringFromPoint({p.x, p.y}).toStdString() + ' ';
  return out;
}

TEST(MappingTest, NormalizesFlipsAndRotates) {
  const struct {
    const char* path;
    int rotation;
    bool flipped;
    double scale;
    const char* output;
    const char* photo;
  } cases[] = {
      {"0,0 8,0 8,4 0,4", 0, false, 1, "{0, 0} {8, 0} {8, 4} {0, 4} ",
       "{0, 0} {8, 0} {8, 4} {0, 4} "},
      {"0,0 0,4 8,4 8,0", 0, false, 1, "{0, 0} {8, 0} {8, 4} {0, 4} ",
       "{0, 0} {8, 0} {8, 4} {0, 4} "},
      {"-3,5 5,5 5,9 -3,9", 0, false, 2, "{0, 0} {16, 0} {16, 8} {0, 8} ",
       "{-3, 5} {5, 5} {5, 9} {-3, 9} "},
      {"8,0 8,4 0,4 0,0", 0, false, 1, "{8, 0} {8, 4} {0, 4} {0, 0} ",
       "{8, 0} {8, 4} {0, 4} {0, 0} "},
      {"-3,-5 5,-5 5,-1 -3,-1", 1, false, 1, "{0, 4} {0, 0} {8, 0} {8, 4} ",
       "{-3, -1} {-3, -5} {5, -5} {5, -1} "},
      {"-3,-5 5,-5 5,-1 -3,-1", 0, true, 1, "{8, 0} {0, 0} {0, 4} {8, 4} ",
       "{5, -5} {-3, -5} {-3, -1} {5, -1} "},
  };
  for (const auto& [path, rotation, flipped, scale, output, photo] : cases) {
    const Mapping mapping{.corners = quad(path),
                          .options = {.quality = scale, .rotation = rotation, .flipped = flipped}};
    EXPECT_EQ(text(mapping.placement().quad), output) << path;
    EXPECT_EQ(text(mapping.quadOnPhoto()), photo) << path;
  }
}

TEST(MappingTest, PlacesDesign) {
  const ImageRef design = makeImage(8, 4), photo = makeImage(30, 20, 99);
  const struct {
    const char* path;
    QPoint at;
  } cases[] = {{"5,6 13,6 13,10 5,10", {5, 6}},
               {"-3,18 5,18 5,22 -3,22", {-3, 18}},
               {"26,-2 34,-2 34,2 26,2", {26, -2}},
               {"40,50 48,50 48,54 40,54", {40, 50}}};
  for (const auto& [path, at] : cases) {
    const ImageRef laid = bilinear(path).compositeOnto(design, photo).value();
    ASSERT_EQ(laid->pixels().size(), QSize(30, 20)) << path;
    for (int y = 0; y < 20; ++y) {
      for (int x = 0; x < 30; ++x) {
        const QPoint inside = QPoint(x, y) - at;
        const QImage& from =
            design->pixels().rect().contains(inside) ? design->pixels() : photo->pixels();
        const QPoint place = &from == &design->pixels() ? inside : QPoint(x, y);
        ASSERT_EQ(laid->pixels().pixel(x, y), from.pixel(place)) << path << ": " << x << " " << y;
      }
    }
  }
  EXPECT_EQ(photo->pixels(), makeImage(30, 20, 99)->pixels()) << "the photo itself is left alone";
}

TEST(MappingTest, BlendsVisiblePartByAlpha) {
  QImage half(10, 10, QImage::Format_ARGB32_Premultiplied);
  half.fill(QColor(255, 0, 0, 128));
  const auto design = std::make_shared<Image>(half);
  const ImageRef photo = makeImage(40, 40);
  const Mapping mapping = bilinear("2,3 35,0 30,39 0,30");
  const QImage over = mapping.createOutput(design).value()->pixels();
  const QImage laid = mapping.compositeOnto(design, photo).value()->pixels();
  for (int y = 0; y < over.height(); ++y) {
    for (int x = 0; x < over.width(); ++x) {
      const QRgb below = photo->pixels().pixel(x, y), top = over.pixel(x, y);
      const double part = qAlpha(top) / 255.0;
      ASSERT_NEAR(qRed(laid.pixel(x, y)), qRed(below) * (1 - part) + 255 * part, 1.01);
      ASSERT_NEAR(qBlue(laid.pixel(x, y)), qBlue(below) * (1 - part), 1.01);
    }
  }
}

TEST(MappingTest, ScaleOnPhotoKeepsPlacement) {
  const ImageRef design = makeImage(8, 4), photo = makeImage(30, 20, 99);
  for (const double scale : {0.0, 0.5, 3.0, 1e9, std::nan("")}) {
    const Mapping mapping = bilinear("5,6 13,6 13,10 5,10", scale);
    const ImageRef laid = mapping.compositeOnto(design, photo).value();
    EXPECT_EQ(laid->pixels().size(), QSize(30, 20)) << scale;
    EXPECT_EQ(laid->pixels().pixel(4, 6), photo->pixels().pixel(4, 6)) << scale;
    EXPECT_NE(laid->pixels().pixel(5, 6), photo->pixels().pixel(5, 6)) << scale;
  }
}

TEST(MappingTest, WarpsOnlyVisiblePart) {
  // The whole shape would be 10^14 pixels.
  const Mapping mapping =
      bilinear("-5000000,-5000000 5000000,-5000000 5000000,5000000 -5000000,5000000");
  const ImageRef laid = mapping.compositeOnto(makeImage(2, 2), makeImage(30, 20, 99)).value();
  EXPECT_EQ(laid->pixels().size(), QSize(30, 20));
  EXPECT_FALSE(mapping.createOutput(makeImage(2, 2)));
}

TEST(MappingTest, RequiresFinestResolutionOfQuad) {
  const struct {
    const char* corners;
    QSizeF size;
  } cases[] = {
      {"0,0 80,0 80,40 0,40", {80, 40}},
      {"80,0 80,40 0,40 0,0", {40, 80}},
      {"0,0 30,40 -10,70 -40,30", {50, 50}},
      // A trapezium: the near edge is twice as long, so that what is near stands twice as dense as
      // the mean along the sides.
      {"25,0 75,0 100,100 0,100", {100, 2 * std::hypot(25, 100)}},
      {"49.5,0 50.5,0 100,100 0,100", {100, 4 * std::hypot(49.5, 100)}},
      {"0,0 5,5 10,10 0,10", {0, 0}},
  };
  for (const auto& [corners, size] : cases) {
    const QSizeF needed = Mapping::requiredSourceSize(quad(corners));
    EXPECT_NEAR(needed.width(), size.width(), 1e-9) << corners;
    EXPECT_NEAR(needed.height(), size.height(), 1e-9) << corners;
  }
}

TEST(MappingTest, BadInputGivesInvalidImage) {
  const ImageRef design = makeImage(4, 4), photo = makeImage(9, 9);
  for (const char* corners :
       {"0,0 5,0 9,0 0,9", "0,0 5,5 5,0 0,5", "0,0 9,0 2,2 0,9", "0,0 inf,0 5,5 0,5"}) {
    EXPECT_FALSE(bilinear(corners).createOutput(design)) << corners;
    EXPECT_FALSE(bilinear(corners).compositeOnto(design, photo)) << corners;
  }
  const Mapping mapping = bilinear("0,0 5,0 5,5 0,5");
  EXPECT_FALSE(mapping.compositeOnto(nullptr, photo));
  EXPECT_FALSE(mapping.compositeOnto(design, nullptr));
  EXPECT_FALSE(mapping.compositeOnto(std::make_shared<Image>(), photo));
}

}  // namespace
}  // namespace kelvar
