#include "core/NSFontManager.h"

#include <QFontDatabase>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

using Self = NSFontManager;

const ClassInfo::Registration kRegistered(&Self::staticClassInfo);

/// Bits of traits.
constexpr int kItalic = 1, kBold = 2;
/// On a scale where 5 is regular and 9 is bold.
int weightOf(const QString& family, const QString& style) {
  return (QFontDatabase::weight(family, style) + 50) / 100 +
         (QFontDatabase::bold(family, style) ? 2 : 1);
}
int traitsOf(const QString& family, const QString& style) {
  return (QFontDatabase::italic(family, style) ? kItalic : 0) |
         (QFontDatabase::bold(family, style) ? kBold : 0);
}

QStringList families(const Self&) {
  QStringList names;
  for (const QString& family : QFontDatabase::families()) {
    names.append(NSFont::withoutFoundry(family));
  }
  names.removeDuplicates();
  return names;
}

QStringList fonts(const Self&) {
  QStringList names;
  for (const QString& family : QFontDatabase::families()) {
    for (const QString& style : QFontDatabase::styles(family)) {
      names.append(NSFont::postscriptName(family, style));
    }
  }
  names.removeDuplicates();
  return names;
}

/// None for a family that is not installed.
QVariant membersOf(const Self&, const QString& family) {
  QVariantList members;
  for (const QString& style : QFontDatabase::styles(family)) {
    members.append(QVariant(QVariantList{NSFont::postscriptName(family, style), style,
                                         weightOf(family, style), traitsOf(family, style)}));
  }
  return members.isEmpty() ? QVariant() : members;
}

/// The style of the family that has these traits; null if it has none.
NSFontRef withTraits(const QString& family, int traits, double size) {
  for (const QString& style : QFontDatabase::styles(family)) {
    if (traitsOf(family, style) == (traits & (kItalic | kBold))) {
      return std::make_shared<NSFont>(NSFont::postscriptName(family, style), size);
    }
  }
  return nullptr;
}

int traitsOfFont(const NSFont& font) {
  for (const QString& style : QFontDatabase::styles(font.familyName())) {
    if (NSFont::postscriptName(font.familyName(), style) == font.fontName()) {
      return traitsOf(font.familyName(), style);
    }
  }
  return font.fontName().contains(u"-Bold") ? kBold : 0;
}

/// The font itself if its family has no such style.
NSFontRef changed(const NSFontRef& font, int traits) {
  if (!font) return nullptr;
  const NSFontRef other = withTraits(font->familyName(), traits, font->pointSize());
  return other ? other : font;
}

}  // namespace

const ClassInfo& NSFontManager::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("NSFontManager")
          .classOperation(
              "sharedFontManager",
              [] {
                static const auto kShared = std::make_shared<Self>();
                return kShared;
              },
              "Returns the only one.")
          .operation("availableFontFamilies", families, "Returns the families.")
          .operation("availableFonts", fonts, "Returns the PostScript names.")
          .operation("availableMembersOfFontFamily:", membersOf,
                     "Returns lists of PostScript name, style, weight (5 is regular, 9 bold) and "
                     "traits; nil for an unknown family.")
          .operation(
              "fontWithFamily:traits:weight:size:",
              [](const Self&, const QString& family, int traits, int, double size) {
                return withTraits(family, traits, size);
              },
              "Returns the font of a family with exactly these traits, italic (1) and bold (2), "
              "or nil.")
          .operation(
              "traitsOfFont:",
              [](const Self&, const NSFontRef& font) { return font ? traitsOfFont(*font) : 0; },
              "Returns the traits, italic (1) and bold (2).")
          .operation(
              "convertFont:toHaveTrait:",
              [](const Self&, const NSFontRef& font, int trait) {
                return font ? changed(font, traitsOfFont(*font) | trait) : nullptr;
              },
              "Returns the font with a trait, or the font itself if its family has none.")
          .operation(
              "convertFont:toNotHaveTrait:",
              [](const Self&, const NSFontRef& font, int trait) {
                return font ? changed(font, traitsOfFont(*font) & ~trait) : nullptr;
              },
              "Returns the font without a trait, or the font itself if its family has none.")
          .operation(
              "convertFont:toSize:",
              [](const Self&, const NSFontRef& font, double size) {
                return font ? std::make_shared<NSFont>(font->fontName(), size) : nullptr;
              },
              "Returns the font in another size.");
  return kClass;
}

}  // namespace kelvar
