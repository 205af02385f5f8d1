#include "PathTracer.h"

#include <numbers>

namespace kelvar::examples {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kBounces = 6;
/// Upper limit for the light of a path after its first bounce: rare, very bright paths would show
/// as single white pixels.
constexpr double kBrightest = 3;
/// Coats smoother than this find the window by following the reflection; rougher ones sample the
/// window directly.
constexpr double kSmooth = 0.25;

Vec limited(Vec light) {
  const double most = std::max({light.x, light.y, light.z});
  return most > kBrightest ? light * (kBrightest / most) : light;
}

double alphaOf(const Surface& surface) {
  return std::max(1e-3, surface.roughness * surface.roughness);
}

/// Fraction of light that the coat reflects at this cosine of the angle of incidence (Schlick).
Vec reflectance(const Surface& surface, double cosine) {
  const double grazing = std::pow(1 - std::clamp(cosine, 0.0, 1.0), 5);
  if (surface.metal) return mix(surface.color, {1, 1, 1}, grazing);
  if (surface.gloss <= 0) return {};
  return Vec{1, 1, 1} * std::lerp(surface.gloss, 1.0, grazing);
}

/// Fraction of facets that others do not hide in a direction with this cosine (Smith).
double unhidden(double cosine, double alpha) {
  const double c2 = cosine * cosine;
  return 2 * cosine / (cosine + std::sqrt(alpha * alpha * (1 - c2) + c2));
}

/// Light reflected toward `view` per unit of light from `from`; both directions relative to z.
Vec answer(const Surface& surface, Vec view, Vec from) {
  Vec light;
  if (!surface.metal) {
    light += surface.color * ((1 - luminance(reflectance(surface, view.z))) * from.z / kPi);
  }
  if (surface.roughness <= kSmooth || view.z <= 0) return light;
  const Vec facet = normalized(view + from);
  const double a2 = alphaOf(surface) * alphaOf(surface);
  const double spread = facet.z * facet.z * (a2 - 1) + 1;
  const double facing = a2 / (kPi * spread * spread);
  const double seen = unhidden(view.z, alphaOf(surface)) * unhidden(from.z, alphaOf(surface));
  return light + reflectance(surface, dot(view, facet)) * (facing * seen / (4 * view.z));
}

/// Light that arrives directly from a random point of the window and leaves toward `view`.
Vec windowLight(const Scene& scene, const Hit& hit, Vec view, Random& random) {
  const Window& window = scene.window;
  const double x = (2 * random.uniform() - 1) * window.halfWidth;
  const double y = (2 * random.uniform() - 1) * window.halfHeight;
  const Vec towards = window.frame.pointToRoom({x, y, 0}) - hit.point;
  const double distance = length(towards);
  const Ray ray{hit.point + hit.normal * 2e-3, towards * (1 / distance)};
  const Frame frame = Frame::around({}, hit.normal);
  const Vec from = frame.directionFromRoom(ray.direction);
  const double cosThere = -dot(ray.direction, window.frame.z);
  if (from.z <= 0 || cosThere <= 0 || !scene.isClear(ray, distance)) return {};
  const double area = 4 * window.halfWidth * window.halfHeight;
  return window.light(x, y) * answer(hit.surface, frame.directionFromRoom(view), from) *
         (cosThere * area / (distance * distance));
}

/// Light from the background. Without the window where it was already sampled.
Vec lightFromBeyond(const Scene& scene, const Ray& ray, bool seesWindow) {
  const Window& window = scene.window;
  const Ray local{window.frame.pointFromRoom(ray.origin),
                  window.frame.directionFromRoom(ray.direction)};
  const Vec pane = local.at(-local.origin.z / local.direction.z);
  const bool through = local.direction.z < 0 && local.origin.z > 0 &&
                       std::abs(pane.x) < window.halfWidth && std::abs(pane.y) < window.halfHeight;
  if (!through) return scene.room(ray.direction);
  return seesWindow ? window.light(pane.x, pane.y) : Vec{};
}

/// A random normal of the coat's microfacets as visible from `view`, both relative to z.
Vec facetNormal(Vec view, double alpha, Random& random) {
  const Vec up = normalized({alpha * view.x, alpha * view.y, view.z});
  const Vec across = std::hypot(up.x, up.y) > 1e-6 ? normalized(Vec{-up.y, up.x, 0}) : Vec{1, 0, 0};
  const Vec along = cross(up, across);
  const double r = std::sqrt(random.uniform());
  const double phi = 2 * kPi * random.uniform();
  const double a = r * std::cos(phi);
  // Warp the half of the disk that faces away onto the visible part.
  const double visible = 0.5 * (1 + up.z);
  const double b =
      (1 - visible) * std::sqrt(std::max(0.0, 1 - a * a)) + visible * r * std::sin(phi);
  const Vec n = across * a + along * b + up * std::sqrt(std::max(0.0, 1 - a * a - b * b));
  return normalized({alpha * n.x, alpha * n.y, std::max(1e-6, n.z)});
}

Vec matt(const Frame& frame, Random& random) {
  const double r2 = random.uniform();
  const double phi = 2 * kPi * random.uniform();
  const double r = std::sqrt(r2);
  return frame.directionToRoom({r * std::cos(phi), r * std::sin(phi), std::sqrt(1 - r2)});
}

struct Bounce {
  Vec direction;
  Vec weight;
  bool seesWindow = false;
};

/// A random direction from which light leaving toward `view` came, and the fraction reflected.
Bounce bounce(const Hit& hit, Vec view, Random& random) {
  const Surface& s = hit.surface;
  const Frame frame = Frame::around({}, hit.normal);
  const Vec local = frame.directionFromRoom(view);
  const Vec facet = facetNormal(local, alphaOf(s), random);
  const Vec reflected = reflectance(s, dot(local, facet));
  const double mirrorShare = luminance(reflected);
  const double mattShare = s.metal ? 0 : (1 - mirrorShare) * luminance(s.color);
  const double odds = mirrorShare / (mirrorShare + mattShare + 1e-9);
  if (random.uniform() < odds) {
    const Vec out = facet * (2 * dot(local, facet)) - local;
    if (out.z <= 0) return {};
    return {frame.directionToRoom(out), reflected * (unhidden(out.z, alphaOf(s)) / odds),
            s.roughness <= kSmooth};
  }
  return {matt(frame, random), s.color * ((1 - mirrorShare) / (1 - odds)), false};
}

}  // namespace

Vec tracePath(const Scene& scene, Ray ray, Random& random) {
  Vec light;
  Vec weight{1, 1, 1};
  bool seesWindow = true;
  for (int i = 0; i < kBounces; ++i) {
    const auto hit = scene.hit(ray);
    if (!hit) {
      const Vec beyond = weight * lightFromBeyond(scene, ray, seesWindow);
      return light + (i > 0 ? limited(beyond) : beyond);
    }
    const Vec straight = weight * windowLight(scene, *hit, -ray.direction, random);
    light += i > 0 ? limited(straight) : straight;
    const Bounce next = bounce(*hit, -ray.direction, random);
    weight = weight * next.weight;
    if (luminance(weight) <= 0) break;
    seesWindow = next.seesWindow;
    // Russian roulette: dim paths end early, and the remaining ones are weighted up.
    const double goOn = i < 1 ? 1 : std::min(1.0, 2 * luminance(weight));
    if (random.uniform() >= goOn) break;
    weight = weight * (1 / goOn);
    ray = {hit->point + hit->normal * 2e-3, next.direction};
  }
  return light;
}

}  // namespace kelvar::examples
