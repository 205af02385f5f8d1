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

}  // namespace kelvar
