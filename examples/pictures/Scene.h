#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "Vec.h"

namespace kelvar::examples {

/// How a place of a body answers light: a matt ground under a glossy coat, or bare metal.
struct Surface {
  /// Share of light given back, by colour.
  Vec colour{0.5, 0.5, 0.5};
  /// Of the gloss: 0 is a mirror.
  double roughness = 0.5;
  /// Share of light that the coat reflects head-on: about 0.04 for lacquer and glass, 0 for none.
  double gloss = 0.04;
  bool metal = false;
};

/// A thing in the room, described in coordinates of its own.
struct Body {
  Frame frame;
  /// Half sides of a box around the origin that holds the body.
  Vec half;
  std::function<double(Vec)> distance;
  std::function<Surface(Vec)> surface;
};

/// A bright rectangle, the only light but for the room's own glow: a window.
struct Window {
  /// z looks into the room.
  Frame frame;
  double halfWidth = 0;
  double halfHeight = 0;
  /// Light through the place (x, y) of the pane.
  std::function<Vec(double, double)> light;
};

struct Hit {
  double distance = 0;
  Vec point;
  Vec normal;
  Surface surface;
};

struct Scene {
  std::vector<Body> bodies;
  Window window;
  /// The room's glow from a direction where there is no body.
  std::function<Vec(Vec)> room;

  /// The first body that a ray meets.
  std::optional<Hit> hit(const Ray& ray) const;
  /// True when no body lies within `distance`.
  bool isClear(const Ray& ray, double distance) const;
};

}  // namespace kelvar::examples
