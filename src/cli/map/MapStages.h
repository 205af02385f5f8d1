#pragma once

#include <QElapsedTimer>
#include <array>

#include "cli/Progress.h"
#include "mockup/Mapping.h"

namespace kelvar::cli {

/// The stages of mapping a design onto points: shows which one is running, and times them.
class MapStages {
 public:
  enum Stage { kReading, kWarping, kWriting };

  /// Also ends the previous stage.
  void begin(Stage stage);

  /// Ends the last stage and prints the report of --json: the image's size, the design's corners in
  /// it, and the times.
  void report(const Image& image, const warp::Quad& corners);

 private:
  void end();

  Progress progress_;
  QElapsedTimer timer_;
  Stage stage_ = kReading;
  std::array<double, 3> milliseconds_{};
};

}  // namespace kelvar::cli
