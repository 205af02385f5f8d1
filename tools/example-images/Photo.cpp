#include "Photo.h"

#include <atomic>
#include <numbers>
#include <thread>

#include "Camera.h"
#include "Desk.h"
#include "PathTracer.h"
#include "Phone.h"

namespace kelvar::examples {
namespace {

constexpr int kWidth = 2000;
constexpr int kHeight = 1500;

Phone phone() { return Phone::leaning({0, 0, 0}, 27, 10.5); }

Camera camera() {
  Camera camera = Camera::looking({-4, -24, 21}, {1.0, 1.05, 0.9}, 0);
  camera.width = kWidth;
  camera.height = kHeight;
  camera.focal = 3050;
  camera.aperture = 0.9;
  const Phone subject = phone();
  camera.focusPoint = subject.frame.pointToRoom({0, 0, 0.39});
  camera.focusNormal = normalized(mix(camera.frame.y, -subject.frame.z, 0.75));
  return camera;
}

/// A tall window to the left behind the desk, divided by bars, brighter toward the sky.
Window window() {
  const Vec middle{-95, 60, 70};
  const Vec inward = normalized(Vec{0, 5, 0} - middle);
  const Vec x = normalized(cross({0, 0, 1}, inward));
  Window window;
  window.frame = {middle, x, cross(inward, x), inward};
  window.halfWidth = 38;
  window.halfHeight = 48;
  window.light = [](double x, double y) {
    const bool isBar = std::abs(std::abs(x) - 0) < 2 || std::abs(std::abs(y) - 20) < 1.5;
    if (isBar) return Vec{0.3, 0.3, 0.32};
    return mix(Vec{11.5, 11.3, 10.6}, Vec{14, 15, 16.5}, (y + 48) / 96);
  };
  return window;
}

/// The walls: pale, warm, brighter around the window and under the ceiling.
Vec room(Vec direction) {
  const double near = 0.5 + 0.5 * dot(direction, normalized(Vec{-95, 60, 70}));
  const double up = 0.5 + 0.5 * direction.z;
  return mix(Vec{0.20, 0.17, 0.15}, Vec{0.36, 0.35, 0.34}, up) * (0.35 + 2.2 * near * near * near);
}

Scene scene() {
  Scene scene;
  scene.bodies = {phone().body(), desk()};
  const Frame& frame = phone().frame;
  const Vec along = normalized(Vec{frame.y.x, frame.y.y, 0});
  scene.bodies.push_back(
      book(along * (3.2 + 7) + Vec{-2, -1.1, 0}, {7.5, 7, 1.1}, 27, {0.05, 0.13, 0.14}));
  for (const Body& body : cup({11.2, 8.2, 0}, -35)) scene.bodies.push_back(body);
  scene.bodies.push_back(pencil({9.1, -2.0, 0}, 16, {0.65, 0.22, 0.09}));
  scene.window = window();
  scene.room = room;
  return scene;
}

Vec pixel(const Scene& scene, const Camera& camera, int x, int y, int samples) {
  Vec sum;
  for (int i = 0; i < samples; ++i) {
    Random random(x, y, i);
    const double r = std::sqrt(random.uniform());
    const double phi = 2 * std::numbers::pi * random.uniform();
    // The sum of two uniform numbers gives a tent filter: a lens slightly softer than the sensor.
    const double px = x + 0.5 * (random.uniform() + random.uniform());
    const double py = y + 0.5 * (random.uniform() + random.uniform());
    sum += tracePath(scene, camera.ray(px, py, r * std::cos(phi), r * std::sin(phi)), random);
  }
  return sum * (1.0 / samples);
}

/// Exposure, a shoulder for the highlights, the sRGB curve.
double developed(double light) {
  const double x = light * 1.02;
  // Source of the curve: Narkowicz, "ACES Filmic Tone Mapping Curve", 2015.
  const double y = std::clamp(x * (2.51 * x + 0.03) / (x * (2.43 * x + 0.59) + 0.14), 0.0, 1.0);
  return y <= 0.0031308 ? 12.92 * y : 1.055 * std::pow(y, 1 / 2.4) - 0.055;
}

QRgb film(Vec light, double x, double y, Random grain) {
  const double vignette = 1 - 0.28 * (x * x + y * y);
  const double noise = grain.uniform() + grain.uniform() - grain.uniform() - grain.uniform();
  const auto channel = [&](double c) {
    return static_cast<int>(
        std::clamp(developed(c * vignette) * 255 + 1.2 * noise + 0.5, 0.0, 255.0));
  };
  return qRgb(channel(light.x), channel(light.y), channel(light.z));
}

}  // namespace

QPolygonF photoScreenCorners() {
  QPolygonF corners;
  for (const Vec corner : phone().screenCorners()) corners << camera().project(corner);
  return corners;
}

QImage drawPhoto(double scale, int samples) {
  Camera eye = camera();
  eye.width = static_cast<int>(kWidth * scale);
  eye.height = static_cast<int>(kHeight * scale);
  eye.focal *= scale;
  const Scene things = scene();
  QImage image(eye.width, eye.height, QImage::Format_RGB32);
  uchar* const bits = image.bits();
  const auto stride = image.bytesPerLine();
  std::atomic<int> next = 0;
  const auto work = [&] {
    for (int y = next++; y < eye.height; y = next++) {
      auto* const row = reinterpret_cast<QRgb*>(bits + y * stride);
      for (int x = 0; x < eye.width; ++x) {
        row[x] = film(pixel(things, eye, x, y, samples), 2.0 * x / eye.width - 1,
                      2.0 * y / eye.height - 1, Random(x, y, 0x6E6F6973));
      }
    }
  };
  std::vector<std::jthread> threads;
  for (unsigned i = 1; i < std::thread::hardware_concurrency(); ++i) threads.emplace_back(work);
  work();
  threads.clear();
  return image;
}

}  // namespace kelvar::examples
