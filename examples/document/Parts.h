#pragma once

#include <array>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

/// The parts of Sketch documents, each with every member that the format requires.
namespace parts {

using Json = nlohmann::ordered_json;

struct Point {
  double x = 0, y = 0;
};

struct Frame {
  double x = 0, y = 0, width = 0, height = 0;
};

/// "#rrggbb".
struct Color {
  const char* hex;
  double alpha = 1;
};

/// The `number`th identifier of the document; the same in every run.
std::string identifier(int number);
/// The next unused identifier.
std::string newIdentifier();

/// A fill with one color.
Json plainFill(Color color);
/// A linear gradient; the points are fractions of the frame's size.
Json gradientFill(Color from, Color to, Point start, Point end);
Json shadow(Color color, double y, double blur);
Json style(const std::vector<Json>& fills, const std::vector<Json>& shadows = {});

Json rectangle(const char* name, Frame frame, double radius, const Json& style);
Json oval(const char* name, Frame frame, const Json& style);
/// A closed shape with rounded corners through the points, which are in the coordinates of the
/// parent layer.
Json polygon(const char* name, const std::vector<Point>& points, double radius, const Json& style);

enum class Align { Left = 0, Right = 1, Center = 2 };
/// One line. `font` is a PostScript name.
Json text(const char* name, const char* words, Frame frame, const char* font, double size,
          Color color, Align align = Align::Left);

Json artboard(const char* name, Frame frame, Color background, const std::vector<Json>& layers);
Json page(const char* name, const std::vector<Json>& layers);

/// document.json, meta.json and user.json for a document with one page.
Json documentFile(const Json& page);
Json metaFile(const Json& page);
Json userFile(const Json& page);

}  // namespace parts
