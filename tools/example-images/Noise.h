#pragma once

#include <cstdint>

#include "Vec.h"

namespace kelvar::examples {

/// Random numbers that depend only on the seed, so that an image is the same for any number of
/// threads. Source: O'Neill, "PCG", 2014 (the RXS-M-XS output, 32 bits).
class Random {
 public:
  Random(uint32_t a, uint32_t b, uint32_t c) : state_(a * 0x9E3779B9u + b) {
    next();
    state_ += c * 0x85EBCA6Bu;
    next();
  }

  /// In [0, 1).
  double uniform() { return next() * 0x1p-32; }

 private:
  uint32_t next() {
    state_ = state_ * 747796405u + 2891336453u;
    const uint32_t word = ((state_ >> ((state_ >> 28) + 4)) ^ state_) * 277803737u;
    return (word >> 22) ^ word;
  }

  uint32_t state_;
};

/// Smooth noise with one cycle per unit, 0 to 1.
double noise(Vec p);

/// `octaves` layers of noise, each half as large and half as strong as the previous one, 0 to 1.
double fractalNoise(Vec p, int octaves);

}  // namespace kelvar::examples
