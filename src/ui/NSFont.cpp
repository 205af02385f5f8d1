#include "ui/NSFont.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <cmath>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSFont::staticClassInfo);

constexpr double kDefaultSize = 13;
constexpr int kMaxSize = 1000;

/// The default size for 0.
NSFontRef sized(QFont font, double size) {
  const double points = std::isfinite(size) && size > 0 ? size : kDefaultSize;
  font.setPixelSize(std::clamp(int(std::round(points)), 1, kMaxSize));
  return std::make_shared<NSFont>(font);
}

NSFontRef systemFont(double size) { return sized(QApplication::font(), size); }

NSFontRef boldSystemFont(double size) {
  QFont font = QApplication::font();
  font.setBold(true);
  return sized(font, size);
}

NSFontRef fontWithName(const QString& name, double size) {
  return QFontDatabase::hasFamily(name) ? sized(QFont(name), size) : nullptr;
}

}  // namespace

const ClassInfo& NSFont::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<NSFont>("NSFont")
          .classOperation("systemFontOfSize:", systemFont,
                          "Returns the application's font in that size in points, 0 for 13.")
          .classOperation("boldSystemFontOfSize:", boldSystemFont,
                          "Returns the application's bold font in that size in points, 0 for 13.")
          .classOperation("fontWithName:size:", fontWithName,
                          "Returns the font of that family, or nil if it is not installed.")
          .property("fontName", &NSFont::fontName, "The family, with the style if it has one.")
          .property("familyName", &NSFont::familyName, "The family.")
          .property("pointSize", &NSFont::pointSize, "The size in points.");
  return kClass;
}

QString NSFont::fontName() const {
  return font_.bold() ? font_.family() + QStringLiteral("-Bold") : font_.family();
}

double NSFont::pointSize() const { return QFontInfo(font_).pixelSize(); }

}  // namespace kelvar
