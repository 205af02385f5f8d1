#pragma once

#include "Camera.h"
#include "Noise.h"
#include "Scene.h"

namespace kelvar::examples {

/// Light that arrives along a ray, estimated without bias from one random path through the scene.
/// Source: Kajiya, "The Rendering Equation", 1986; the coat is GGX, sampled as in Heitz,
/// "Sampling the GGX Distribution of Visible Normals", 2018.
Vec tracePath(const Scene& scene, Ray ray, Random& random);

}  // namespace kelvar::examples
