#include "core/NSFont.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>
#include <utility>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSFont::staticClassInfo);

constexpr double kDefaultSize = 13;
constexpr int kMaxSize = 1000;
/// Beyond any text in a document.
constexpr double kMaxPointSize = 1e6;

NSFontRef applicationFont(double size, bool isBold) {
  const QString family = QGuiApplication::font().family();
  return std::make_shared<NSFont>(isBold ? family + QStringLiteral("-Bold") : family, size);
}
NSFontRef systemFont(double size) { return applicationFont(size, false); }
NSFontRef boldSystemFont(double size) { return applicationFont(size, true); }

NSFontRef fontWithName(const QString& name, double size) {
  return NSFont::isInstalled(name) ? std::make_shared<NSFont>(name, size) : nullptr;
}

/// Without spaces, and empty for the plain styles.
QString plainStyle(const QString& style) {
  const bool isPlain = style == QStringLiteral("Regular") || style == QStringLiteral("Book") ||
                       style == QStringLiteral("Normal");
  return isPlain ? QString() : QString(style).remove(u' ');
}

/// The family and style that are installed under a PostScript name, or the family under its own
/// name; empty for neither.
std::pair<QString, QString> installed(const QString& name) {
  if (QFontDatabase::hasFamily(name)) return {name, QString()};
  const QString wanted = name.section(u'-', 0, 0).remove(u' ');
  const QString wantedStyle = plainStyle(name.section(u'-', 1));
  for (const QString& family : QFontDatabase::families()) {
    if (NSFont::withoutFoundry(family).remove(u' ') != wanted) continue;
    for (const QString& style : QFontDatabase::styles(family)) {
      if (plainStyle(style) == wantedStyle) return {family, style};
    }
  }
  return {};
}

QFontMetricsF metrics(const NSFont& self) { return QFontMetricsF(self.font()); }

}  // namespace

const ClassInfo& NSFont::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<NSFont>("NSFont")
          .classOperation("systemFontOfSize:", systemFont,
                          "Returns the application's font in that size in points, 0 for 13.")
          .classOperation("boldSystemFontOfSize:", boldSystemFont,
                          "Returns the application's bold font in that size in points, 0 for 13.")
          .classOperation("fontWithName:size:", fontWithName,
                          "Returns the font of that family or PostScript name, or nil if it is "
                          "not installed.")
          .property("fontName", &NSFont::fontName, "The PostScript name, or the family.")
          .property("familyName", &NSFont::familyName, "The family.")
          .property("displayName", &NSFont::displayName, "The family and the style.")
          .property("pointSize", &NSFont::pointSize, "The size in points.")
          .property(
              "ascender", [](const NSFont& self) { return metrics(self).ascent(); },
              "How far letters reach above the baseline.")
          .property(
              "descender", [](const NSFont& self) { return -metrics(self).descent(); },
              "How far letters reach below the baseline, as a negative number.")
          .property(
              "capHeight", [](const NSFont& self) { return metrics(self).capHeight(); },
              "The height of capital letters.")
          .property(
              "xHeight", [](const NSFont& self) { return metrics(self).xHeight(); },
              "The height of the letter x.");
  return kClass;
}

NSFont::NSFont(QString fontName, double pointSize)
    : fontName_(std::move(fontName)),
      pointSize_(pointSize > 0 ? std::min(pointSize, kMaxPointSize) : kDefaultSize) {}

NSFont::NSFont(const QFont& font)
    : fontName_(font.bold() ? font.family() + QStringLiteral("-Bold") : font.family()),
      pointSize_(QFontInfo(font).pixelSize()) {}

QFont NSFont::font() const {
  const auto [family, style] = installed(fontName_);
  QFont font(family.isEmpty() ? familyName() : family);
  font.setPixelSize(std::clamp(int(std::round(pointSize_)), 1, kMaxSize));
  if (!style.isEmpty()) font.setStyleName(style);
  if (fontName_.contains(u"-Bold")) font.setBold(true);
  return font;
}

QString NSFont::familyName() const {
  const QString family = installed(fontName_).first;
  return family.isEmpty() ? fontName_.section(u'-', 0, 0) : withoutFoundry(family);
}

QString NSFont::displayName() const {
  const QString style = fontName_.section(u'-', 1);
  return style.isEmpty() || fontName_ == familyName() ? familyName() : familyName() + u' ' + style;
}

bool NSFont::isInstalled(const QString& name) { return !installed(name).first.isEmpty(); }

QString NSFont::withoutFoundry(const QString& family) {
  return family.section(QStringLiteral(" ["), 0, 0);
}

QString NSFont::postscriptName(const QString& family, const QString& style) {
  const QString name = withoutFoundry(family).remove(u' '), suffix = plainStyle(style);
  return suffix.isEmpty() ? name : name + u'-' + suffix;
}

}  // namespace kelvar
