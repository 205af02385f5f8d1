#pragma once

#include "geometry/PointList.h"

namespace kelvar {

/// Point strings from "x,y x,y ...".
inline PointList points(const char* text) {
  PointList list;
  for (const QString& pair : QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts)) {
    list.append(stringFromPoint(pointFromString(pair)));
  }
  return list;
}

/// Four corners from "x,y x,y x,y x,y".
inline warp::Quad quad(const char* text) {
  const std::vector<warp::Point> corners = pointsFromStrings(points(text));
  return {corners[0], corners[1], corners[2], corners[3]};
}

}  // namespace kelvar
