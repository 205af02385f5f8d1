#include "Phone.h"

#include <numbers>

#include "Shapes.h"

namespace kelvar::examples {
namespace {

constexpr double kBezel = 0.27;
constexpr double kFrameWidth = 0.11;
constexpr double kHalfX = Phone::kScreenWidth / 2 + kBezel + kFrameWidth;
constexpr double kHalfY = Phone::kScreenHeight / 2 + kBezel + kFrameWidth;
constexpr double kHalfZ = 0.39;
constexpr double kCorner = Phone::kScreenRadius + kBezel + kFrameWidth;
constexpr double kEdge = 0.2;
constexpr double kButtonHeight = 0.045;

double outline(Vec p) { return roundedRectangle(p.x, p.y, kHalfX, kHalfY, kCorner); }

double button(Vec p, double side, double y, double half) {
  const Vec q = p - Vec{side * kHalfX, y, 0};
  return plate(roundedRectangle(q.y, q.z, half, 0.12, 0.12), q.x, kButtonHeight, 0.03);
}

double phoneDistance(Vec p) {
  const double frame = plate(outline(p), p.z, kHalfZ - 0.02, kEdge);
  const double glass = plate(outline(p) + kFrameWidth, p.z - kHalfZ + 0.1, 0.1, 0.05);
  const double buttons = std::min({button(p, 1, 2.6, 0.75), button(p, -1, 3.3, 0.45),
                                   button(p, -1, 2.1, 0.45), button(p, -1, 4.5, 0.2)});
  return std::min({frame, glass, buttons});
}

constexpr Surface kMetal{{0.62, 0.62, 0.64}, 0.34, 0, true};
constexpr Surface kAntenna{{0.3, 0.3, 0.31}, 0.5, 0.04};
constexpr Surface kGlassOverBezel{{0.006, 0.006, 0.007}, 0.03, 0.045};
constexpr Surface kGlassOverScreen{{0.011, 0.012, 0.015}, 0.03, 0.045};
constexpr Surface kEarpiece{{0.03, 0.03, 0.03}, 0.6, 0.01};
constexpr Surface kLens{{0.01, 0.015, 0.05}, 0.05, 0.12};

Surface phoneSurface(Vec p) {
  const bool isGlass = outline(p) < -kFrameWidth + 0.004 && p.z > 0;
  if (!isGlass) {
    const bool isAntenna = std::abs(std::abs(p.y) - kHalfY + 1.75) < 0.045;
    return isAntenna ? kAntenna : kMetal;
  }
  const double top = kHalfY - kFrameWidth - kBezel / 2;
  if (roundedRectangle(p.x, p.y - top, 0.55, 0.035, 0.035) < 0) return kEarpiece;
  if (std::hypot(p.x - 0.95, p.y - top) < 0.06) return kLens;
  const double screen = roundedRectangle(p.x, p.y, Phone::kScreenWidth / 2,
                                         Phone::kScreenHeight / 2, Phone::kScreenRadius);
  return screen < 0 ? kGlassOverScreen : kGlassOverBezel;
}

}  // namespace

Phone Phone::leaning(Vec where, double turnDegrees, double tiltDegrees) {
  const double turn = turnDegrees * std::numbers::pi / 180;
  const double tilt = tiltDegrees * std::numbers::pi / 180;
  const Vec right{std::cos(turn), std::sin(turn), 0};
  const Vec back{-std::sin(turn), std::cos(turn), 0};
  const Vec up = back * std::cos(tilt) + Vec{0, 0, std::sin(tilt)};
  // The rounded lower edge of the back touches the desk.
  const double height =
      kEdge + (kHalfY - kEdge) * std::sin(tilt) + (kHalfZ - 0.02 - kEdge) * std::cos(tilt);
  return {Frame{where + Vec{0, 0, height}, right, up, cross(right, up)}};
}

Body Phone::body() const {
  return {frame, {kHalfX + 2 * kButtonHeight, kHalfY, kHalfZ}, phoneDistance, phoneSurface};
}

std::array<Vec, 4> Phone::screenCorners() const {
  const double x = kScreenWidth / 2;
  const double y = kScreenHeight / 2;
  return {frame.pointToRoom({-x, y, kHalfZ}), frame.pointToRoom({x, y, kHalfZ}),
          frame.pointToRoom({x, -y, kHalfZ}), frame.pointToRoom({-x, -y, kHalfZ})};
}

}  // namespace kelvar::examples
