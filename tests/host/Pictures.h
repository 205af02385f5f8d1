#pragma once

#include <QImage>

namespace kelvar {

/// A picture in which no two pixels near each other are alike.
inline QImage noise(int width, int height, uint seed = 0) {
  QImage pixels(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      pixels.setPixel(x, y, 0xff000000 | ((x * 2654435761u + y * 40503u + seed) >> 3 & 0xffffff));
    }
  }
  return pixels;
}

}  // namespace kelvar
