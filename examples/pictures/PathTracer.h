#pragma once

#include "Camera.h"
#include "Noise.h"
#include "Scene.h"

namespace kelvar::examples {

/// Light that comes back along a ray: one random path through the scene, right on average.
/// Source: Kajiya, "The Rendering Equation", 1986; the gloss is a GGX coat sampled as in Heitz,
/// "Sampling the GGX Distribution of Visible Normals", 2018.
Vec tracePath(const Scene& scene, Ray ray, Random& random);

}  // namespace kelvar::examples
