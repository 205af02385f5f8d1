#pragma once

#include <string>
#include <vector>

#include "geometry/warp/Warp.h"
#include "host/LayerSettings.h"

namespace kelvar::app {

/// The command line of `kelvar map DESIGN --document DOC`, as given.
struct DocumentArguments {
  /// A picture's path, or an artboard as "artboard:NAME".
  std::string design;
  std::string document;
  std::vector<std::string> layers;
  LayerSettings settings;
  warp::Sampling sampling = warp::Sampling::Best;
  int threads = 0;
  bool json = false;
  /// A document where it ends in sketch, else a picture of the layers' artboard.
  std::string output;
};

/// Throws a `Failure` where it cannot.
void mapOnDocument(const DocumentArguments& arguments);

}  // namespace kelvar::app
