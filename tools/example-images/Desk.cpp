#include "Desk.h"

#include <numbers>

#include "Noise.h"
#include "Shapes.h"

namespace kelvar::examples {
namespace {

constexpr double kDegree = std::numbers::pi / 180;

Frame standing(Vec where, double turnDegrees) {
  const double turn = turnDegrees * kDegree;
  return {
      where, {std::cos(turn), std::sin(turn), 0}, {-std::sin(turn), std::cos(turn), 0}, {0, 0, 1}};
}

/// Oak with its grain along x: growth rings, fine pores, a slight color drift.
Surface oak(Vec p) {
  const double drift = fractalNoise({p.x * 0.02, p.y * 0.12, 0.5}, 4);
  const double across = p.y + 5 * fractalNoise({p.x * 0.03, p.y * 0.15, 3}, 3);
  const double band = 0.5 + 0.5 * std::sin(across * 2.6 + 6 * drift);
  const double fibre = fractalNoise({p.x * 0.5, p.y * 14, 7}, 3);
  const double pore = smoothstep(0.66, 0.8, noise({p.x * 0.9, p.y * 26, 11}));
  const double dark = 0.34 * band * band + 0.42 * fibre + 0.3 * pore + 0.25 * drift;
  const Vec color = mix({0.60, 0.43, 0.27}, {0.30, 0.18, 0.10}, std::clamp(dark - 0.1, 0.0, 1.0));
  return {color, 0.42 + 0.2 * fibre, 0.035};
}

constexpr double kCupRadius = 3.5;
constexpr double kCupHalf = 2.5;
constexpr double kSaucerRadius = 6.0;

/// A hollow cup that widens toward its rounded brim, with a handle along x.
double cupDistance(Vec p) {
  const double radius = std::hypot(p.x, p.y);
  const double side =
      kCupRadius - 0.9 + 0.9 * std::sqrt(std::clamp(p.z / kCupHalf * 0.5 + 0.5, 0.0, 1.0));
  const double shell = std::abs(radius - side + 0.16) - 0.14;
  const double wall = plate(shell, p.z, kCupHalf, 0.12);
  const double floor = cylinder(p + Vec{0, 0, kCupHalf - 0.3}, kCupRadius - 0.9, 0.3, 0.1);
  const double handle =
      std::max(ring(p - Vec{kCupRadius - 0.1, 0, 0.2}, 1.5, 0.3), side - 0.1 - radius);
  return 0.7 * std::min({wall, floor, handle});
}

/// A shallow dish with a raised rim.
double saucerDistance(Vec p) {
  const double rise = 0.9 * smoothstep(0.45 * kSaucerRadius, kSaucerRadius, std::hypot(p.x, p.y));
  return 0.8 * cylinder(p - Vec{0, 0, rise - 0.6}, kSaucerRadius, 0.16, 0.14);
}

}  // namespace

Body desk() {
  const Vec half{150, 90, 1.5};
  return {{{0, 30, -half.z}}, half, [half](Vec p) { return box(p, half, 0.3); }, oak};
}

std::vector<Body> cup(Vec where, double turnDegrees) {
  const auto glaze = [](Vec) { return Surface{{0.78, 0.77, 0.74}, 0.16, 0.045}; };
  const auto coffee = [](Vec) { return Surface{{0.035, 0.015, 0.006}, 0.03, 0.03}; };
  const double pool = kCupRadius - 0.3;
  return {
      {standing(where + Vec{0, 0, 0.78}, turnDegrees),
       {kSaucerRadius, kSaucerRadius, 0.78},
       saucerDistance,
       glaze},
      {standing(where + Vec{0, 0, 0.36 + kCupHalf}, turnDegrees),
       {kCupRadius + 2.2, kCupRadius + 0.1, kCupHalf},
       cupDistance,
       glaze},
      {standing(where + Vec{0, 0, 0.36 + 2 * kCupHalf - 1.1}, 0),
       {pool, pool, 0.05},
       [pool](Vec p) { return cylinder(p, pool, 0.05, 0.01); },
       coffee},
  };
}

Body book(Vec where, Vec half, double turnDegrees, Vec cloth) {
  constexpr double kCover = 0.13;
  const auto pages = [half](Vec p) {
    return box(p, {half.x - 0.3, half.y - 0.3, half.z - kCover}, 0.01);
  };
  const auto covers = [half](Vec p) {
    Vec q = p;
    q.z = std::abs(p.z) - half.z + kCover;
    const double boards = box(q, {half.x, half.y, kCover}, 0.06);
    const double spine = box(p + Vec{half.x - kCover, 0, 0}, {kCover, half.y, half.z}, 0.06);
    return std::min(boards, spine);
  };
  return {standing(where + Vec{0, 0, half.z}, turnDegrees), half,
          [=](Vec p) { return std::min(pages(p), covers(p)); },
          [=](Vec p) -> Surface {
            if (pages(p) < covers(p)) {
              const double leaf = noise({0.3 * p.x, 0.3 * p.y, p.z * 60});
              return {Vec{0.74, 0.70, 0.61} * (0.75 + 0.25 * leaf), 1, 0};
            }
            const double weave = noise(p * 28) * 0.5 + noise({p.x * 60, p.y * 8, p.z * 8}) * 0.5;
            return {cloth * (0.8 + 0.4 * weave), 0.8, 0.015};
          }};
}

Body pencil(Vec where, double turnDegrees, Vec lacquer) {
  constexpr double kLength = 17.5, kRadius = 0.36, kPoint = 2.0;
  const auto distance = [](Vec p) {
    const double turn = std::atan2(p.z, p.y);
    const double sector = std::numbers::pi / 3;
    const double folded = turn - sector * std::round(turn / sector);
    const double r = std::hypot(p.y, p.z);
    const double hexagon = r * std::cos(folded) - kRadius * 0.92;
    const double x = p.x + kLength / 2;
    const double cone = (r - x * kRadius / kPoint) * 0.98;
    return std::max({hexagon, cone, std::abs(p.x) - kLength / 2}) - 0.02;
  };
  const auto surface = [lacquer](Vec p) -> Surface {
    const double x = p.x + kLength / 2;
    const double r = std::hypot(p.y, p.z);
    if (x < 0.45) return {{0.03, 0.03, 0.03}, 0.4, 0.04};
    if (r < kRadius * 0.9 && x < kPoint) return {{0.62, 0.44, 0.27}, 0.9, 0.01};
    return {lacquer, 0.2, 0.045};
  };
  Frame frame = standing(where + Vec{0, 0, kRadius * 0.92 + 0.02}, turnDegrees);
  frame.origin += frame.x * (kLength / 2);
  return {frame, {kLength / 2, kRadius + 0.03, kRadius + 0.03}, distance, surface};
}

}  // namespace kelvar::examples
