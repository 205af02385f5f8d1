#include "pixels/composite/BlendMode.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <cstdlib>
#include <random>

#include "platform/image/PixelViews.h"

namespace kelvar {
namespace {

QImage noise(unsigned seed) {
  std::mt19937 random(seed);
  QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) {
      const unsigned alpha = x < 16 ? 255 : x < 24 ? 0 : random() % 256;
      image.setPixel(x, y, qPremultiply(alpha << 24 | (random() & 0xffffff)));
    }
  }
  return image;
}

/// Against the painter, which computes with 8-bit integers.
TEST(BlendModeTest, SeparableModesAgreeWithThePainter) {
  using Mode = QPainter::CompositionMode;
  constexpr struct {
    BlendMode mode;
    Mode painters;
    int tolerance = 3;
  } kTable[] = {{BlendMode::Normal, Mode::CompositionMode_SourceOver},
                {BlendMode::Darken, Mode::CompositionMode_Darken},
                {BlendMode::Multiply, Mode::CompositionMode_Multiply},
                {BlendMode::ColorBurn, Mode::CompositionMode_ColorBurn},
                {BlendMode::Lighten, Mode::CompositionMode_Lighten},
                {BlendMode::Screen, Mode::CompositionMode_Screen},
                // The quotient magnifies what the painter has rounded.
                {BlendMode::ColorDodge, Mode::CompositionMode_ColorDodge, 20},
                {BlendMode::Overlay, Mode::CompositionMode_Overlay},
                {BlendMode::SoftLight, Mode::CompositionMode_SoftLight},
                {BlendMode::HardLight, Mode::CompositionMode_HardLight},
                {BlendMode::Difference, Mode::CompositionMode_Difference},
                {BlendMode::Exclusion, Mode::CompositionMode_Exclusion},
                {BlendMode::PlusLighter, Mode::CompositionMode_Plus}};
  const QImage above = noise(1);
  for (const auto& [mode, painters, tolerance] : kTable) {
    QImage expected = noise(2), actual = expected;
    QPainter painter(&expected);
    painter.setCompositionMode(painters);
    painter.drawImage(0, 0, above);
    painter.end();
    blend(viewOf(above), viewOf(&actual), mode);
    for (int i = 0; i < 64 * 64 * 4; ++i) {
      ASSERT_LE(std::abs(actual.constBits()[i] - expected.constBits()[i]), tolerance)
          << "mode " << int(mode) << " at byte " << i;
    }
  }
}

}  // namespace
}  // namespace kelvar
