#include "Noise.h"

namespace kelvar::examples {
namespace {

double lattice(int64_t x, int64_t y, int64_t z) {
  uint64_t h = static_cast<uint64_t>(x) * 0x9E3779B97F4A7C15u ^
               static_cast<uint64_t>(y) * 0xC2B2AE3D27D4EB4Fu ^
               static_cast<uint64_t>(z) * 0x165667B19E3779F9u;
  h = (h ^ (h >> 29)) * 0xBF58476D1CE4E5B9u;
  h ^= h >> 32;
  return static_cast<double>(h & 0xFFFFFF) / 0x1000000;
}

double fade(double t) { return t * t * (3 - 2 * t); }

}  // namespace

double noise(Vec p) {
  const auto x = static_cast<int64_t>(std::floor(p.x));
  const auto y = static_cast<int64_t>(std::floor(p.y));
  const auto z = static_cast<int64_t>(std::floor(p.z));
  const double u = fade(p.x - x), v = fade(p.y - y), w = fade(p.z - z);
  const auto alongX = [&](int64_t dy, int64_t dz) {
    return std::lerp(lattice(x, y + dy, z + dz), lattice(x + 1, y + dy, z + dz), u);
  };
  return std::lerp(std::lerp(alongX(0, 0), alongX(1, 0), v),
                   std::lerp(alongX(0, 1), alongX(1, 1), v), w);
}

double fractalNoise(Vec p, int octaves) {
  double sum = 0, weight = 0.5, total = 0;
  for (int i = 0; i < octaves; ++i) {
    sum += weight * noise(p);
    total += weight;
    weight /= 2;
    p = p * 2.03 + Vec{17.3, 5.1, 9.7};
  }
  return sum / total;
}

}  // namespace kelvar::examples
