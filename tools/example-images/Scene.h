#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "Vec.h"

namespace kelvar::examples {

/// Material at a point of a body: a matte base under a glossy coat, or bare metal.
struct Surface {
  /// Fraction of light reflected, per color.
  Vec color{0.5, 0.5, 0.5};
  /// Of the coat; 0 is a mirror.
  double roughness = 0.5;
  /// Fraction of light that the coat reflects at normal incidence: about 0.04 for lacquer and
  /// glass, 0 without a coat.
  double gloss = 0.04;
  bool metal = false;
};

/// An object in the room, described in its own coordinates.
struct Body {
  Frame frame;
  /// Half the sides of the bounding box, which is centered at the origin.
  Vec half;
  std::function<double(Vec)> distance;
  std::function<Surface(Vec)> surface;
};

/// A window: a bright rectangle, the only light apart from the room's ambient light.
struct Window {
  /// z points into the room.
  Frame frame;
  double halfWidth = 0;
  double halfHeight = 0;
  /// Light through the point (x, y) of the pane.
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
  /// Ambient light from a direction in which there is no body.
  std::function<Vec(Vec)> room;

  /// The first body that a ray hits.
  std::optional<Hit> hit(const Ray& ray) const;
  /// True if no body is within `distance`.
  bool isClear(const Ray& ray, double distance) const;
};

}  // namespace kelvar::examples
