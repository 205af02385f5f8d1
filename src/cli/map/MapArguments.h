#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "mockup/Mapping.h"

namespace kelvar::cli {

/// The command line of `kelvar map`. The operations throw a `CommandError` if it is invalid.
struct MapArguments {
  std::string design;
  std::string arrangement;
  std::optional<std::string> points;
  double scale = 1;
  int64_t rotation = 0;
  bool flip = false;
  std::optional<std::string> onto;
  std::string document;
  std::vector<std::string> layers;
  bool isExcludedFromArtboards = false;
  std::string sampling = "best";
  bool json = false;
  std::string output;
  std::string timeout;

  MappingOptions options() const;
  /// The mapping onto the corners in --points.
  Mapping mapping() const;
};

/// `kelvar map DESIGN --points POINTS`: the design in perspective, by itself.
void mapByItself(const MapArguments& arguments);

/// `kelvar map DESIGN --points POINTS --onto PHOTO`.
void mapOntoPhoto(const MapArguments& arguments);

/// `kelvar map DESIGN --document DOC --layer LAYER`.
void mapIntoDocument(const MapArguments& arguments);

/// `kelvar map --arrangement FILE`.
void mapArrangement(const MapArguments& arguments);

}  // namespace kelvar::cli
