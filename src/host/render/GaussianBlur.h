#pragma once

#include <QImage>
#include <stop_token>

namespace kelvar::render {

/// How far a blur is followed, in pixels: beyond three standard deviations nothing is seen of it.
int blurReach(double deviation);

/// Blurs premultiplied ARGB or 8-bit alpha by a Gaussian of this standard deviation in pixels;
/// outside of the picture is empty. Weights are sampled from the bell and summed in floats. Above
/// `kLargestExactDeviation` the picture is halved first, as often as needed, which nobody can tell
/// from the exact result and which keeps large blurs quick. Left half done once it is to stop.
void blur(QImage* pixels, double deviation, const std::stop_token& stop = {});

inline constexpr double kLargestExactDeviation = 20;

}  // namespace kelvar::render
