#include "Scene.h"

#include <limits>

namespace kelvar::examples {
namespace {

constexpr double kFar = 1e6;
/// A ray this close to a body hits it.
constexpr double kTouch = 2e-4;

struct Interval {
  double from;
  double to;
};

/// The part of a ray, from 0 on, that is inside the body's box; in the body's coordinates.
Interval insideBox(const Ray& ray, Vec half) {
  const auto slab = [](double origin, double direction, double side) {
    const double a = (-side - origin) / direction;
    const double b = (side - origin) / direction;
    return Interval{std::min(a, b), std::max(a, b)};
  };
  const Interval x = slab(ray.origin.x, ray.direction.x, half.x);
  const Interval y = slab(ray.origin.y, ray.direction.y, half.y);
  const Interval z = slab(ray.origin.z, ray.direction.z, half.z);
  return {std::max({x.from, y.from, z.from, 0.0}), std::min({x.to, y.to, z.to})};
}

Ray inBody(const Body& body, const Ray& ray) {
  return {body.frame.pointFromRoom(ray.origin), body.frame.directionFromRoom(ray.direction)};
}

/// Sphere tracing: steps along the ray by the distance to the body. `limit` if it misses.
double march(const Body& body, const Ray& ray, double limit) {
  const Ray local = inBody(body, ray);
  const Interval inside = insideBox(local, body.half);
  const double end = std::min(inside.to, limit);
  double t = inside.from;
  for (int step = 0; step < 200 && t < end; ++step) {
    const double distance = body.distance(local.at(t));
    if (distance < kTouch) return t;
    t += distance;
  }
  return limit;
}

/// The gradient of the distance, from four samples at the corners of a tetrahedron.
Vec normalAt(const Body& body, Vec p) {
  constexpr double h = 5e-4;
  Vec sum;
  for (const Vec k : {Vec{1, -1, -1}, Vec{-1, -1, 1}, Vec{-1, 1, -1}, Vec{1, 1, 1}}) {
    sum += k * body.distance(p + k * h);
  }
  return normalized(sum);
}

}  // namespace

std::optional<Hit> Scene::hit(const Ray& ray) const {
  const Body* nearest = nullptr;
  double distance = kFar;
  for (const Body& body : bodies) {
    const double t = march(body, ray, distance);
    if (t < distance) {
      distance = t;
      nearest = &body;
    }
  }
  if (!nearest) return std::nullopt;
  const Vec point = ray.at(distance);
  const Vec local = nearest->frame.pointFromRoom(point);
  return Hit{distance, point, nearest->frame.directionToRoom(normalAt(*nearest, local)),
             nearest->surface(local)};
}

bool Scene::isClear(const Ray& ray, double distance) const {
  return std::all_of(bodies.begin(), bodies.end(),
                     [&](const Body& body) { return march(body, ray, distance) >= distance; });
}

}  // namespace kelvar::examples
