#include "sketch/render/text/FontMatcher.h"

#include <QFontDatabase>
#include <QHash>
#include <algorithm>
#include <initializer_list>

namespace kelvar::render {
namespace {

using namespace Qt::StringLiterals;

/// Letters and digits only, in lower case: "Open Sans" and "OpenSans" are one family.
QString plain(const QString& name) {
  QString plain;
  for (const QChar c : name.toLower()) {
    if (c.isLetterOrNumber()) plain.append(c);
  }
  return plain;
}

/// What the name of a style says.
struct Style {
  int weight = QFont::Normal;
  bool isItalic = false;
  int stretch = QFont::Unstretched;
};

Style styleFrom(const QString& name) {
  // Longer words come before those that they contain.
  const struct {
    QLatin1StringView word;
    int weight;
  } weights[] = {{"ultralight"_L1, 200}, {"extralight"_L1, 200}, {"thin"_L1, 100},
                 {"hairline"_L1, 100},   {"semilight"_L1, 300},  {"light"_L1, 300},
                 {"medium"_L1, 500},     {"semibold"_L1, 600},   {"demibold"_L1, 600},
                 {"demi"_L1, 600},       {"extrabold"_L1, 800},  {"ultrabold"_L1, 800},
                 {"bold"_L1, 700},       {"black"_L1, 900},      {"heavy"_L1, 900}};
  Style style;
  const QString words = plain(name);
  for (const auto& [word, weight] : weights) {
    if (!words.contains(word)) continue;
    style.weight = weight;
    break;
  }
  style.isItalic =
      words.contains("italic"_L1) || words.contains("oblique"_L1) || words.endsWith("it"_L1);
  if (words.contains("condensed"_L1) || words.contains("narrow"_L1)) style.stretch = 75;
  return style;
}

/// Families by their plain names. Families that the foundry's name tells apart are one.
QHash<QString, QString> installedFamilies() {
  QHash<QString, QString> families;
  for (const QString& family : QFontDatabase::families()) {
    const QString name = family.section(u" ["_s, 0, 0);
    families.insert(plain(name), name);
  }
  return families;
}

/// What replaces a family that Sketch documents name and few systems have: what comes nearest to
/// it, the nearest first, and the family's own vertical metrics (of its `hhea` table), in ems;
/// zeros where they are not known.
struct Fallback {
  QLatin1StringView prefix;  ///< Of the family's plain name.
  std::initializer_list<QLatin1StringView> families;
  FontMetrics metrics = {};
  QLatin1StringView outlines = {};  ///< Drawn instead of the first family's glyphs.
  double strokeOffset = 0;          ///< How much thicker its stems are on each side, in ems.
};

/// For fonts of Sketch's platform, common fonts with metric-compatible replacements, and styles of
/// type. Of two rows, the one with the longer prefix comes first. The platform adds a fifth to the
/// lines of its own Helvetica, Times and Courier.
const Fallback kFallbacks[] = {
    {"applecoloremoji"_L1, {"Noto Color Emoji"_L1, "Inter"_L1}},
    {"segoeuiemoji"_L1, {"Noto Color Emoji"_L1, "Inter"_L1}},
    {"sfmono"_L1, {"DejaVu Sans Mono"_L1}, {0.952, 0.241, 0}},
    {"menlo"_L1, {"DejaVu Sans Mono"_L1}, {0.928, 0.236, 0}},
    {"monaco"_L1, {"DejaVu Sans Mono"_L1}},
    {"consolas"_L1, {"Inconsolata"_L1, "DejaVu Sans Mono"_L1}},
    {"sourcecode"_L1, {"DejaVu Sans Mono"_L1}, {0.984, 0.273, 0}},
    {"robotomono"_L1, {"DejaVu Sans Mono"_L1}, {1.048, 0.271, 0}},
    {"couriernew"_L1, {"Liberation Mono"_L1, "Nimbus Mono PS"_L1}, {0.833, 0.300, 0}},
    {"courier"_L1, {"Nimbus Mono PS"_L1, "Liberation Mono"_L1}, {0.754, 0.246, 0.2}},
    {"sfcompact"_L1, {"Inter"_L1, "Roboto"_L1}, {0.952, 0.241, 0}},
    {"sf"_L1, {"Inter"_L1, "Roboto"_L1}, {0.952, 0.241, 0}},
    {"sanfrancisco"_L1, {"Inter"_L1, "Roboto"_L1}, {0.952, 0.241, 0}},
    {"applesystem"_L1, {"Inter"_L1, "Roboto"_L1}, {0.952, 0.241, 0}},
    {"system"_L1, {"Inter"_L1, "Roboto"_L1}, {0.952, 0.241, 0}},
    {"interui"_L1, {"Inter"_L1}},
    {"helveticaneue"_L1,
     {"Liberation Sans"_L1, "Nimbus Sans"_L1},
     {0.952, 0.213, 0.028},
     "Nimbus Sans"_L1},
    {"helvetica"_L1,
     {"Liberation Sans"_L1, "Nimbus Sans"_L1},
     {0.770, 0.230, 0.2},
     "Nimbus Sans"_L1},
    {"arial"_L1, {"Liberation Sans"_L1, "Nimbus Sans"_L1}, {0.905, 0.212, 0.033}},
    {"timesnewroman"_L1, {"Liberation Serif"_L1, "Nimbus Roman"_L1}, {0.891, 0.216, 0.042}},
    {"times"_L1, {"Liberation Serif"_L1, "Nimbus Roman"_L1}, {0.750, 0.250, 0.2}},
    {"georgia"_L1, {"Gelasio"_L1, "DejaVu Serif"_L1}, {0.917, 0.219, 0}},
    {"cambria"_L1, {"Caladea"_L1, "Liberation Serif"_L1}},
    {"palatino"_L1, {"P052"_L1}},
    {"bookantiqua"_L1, {"P052"_L1}},
    {"bookman"_L1, {"URW Bookman"_L1}},
    {"centurygothic"_L1, {"URW Gothic"_L1}},
    {"century"_L1, {"C059"_L1}},
    {"newyork"_L1, {"Liberation Serif"_L1}, {0.952, 0.241, 0}},
    {"garamond"_L1, {"EB Garamond"_L1, "Liberation Serif"_L1}},
    {"didot"_L1, {"C059"_L1, "Liberation Serif"_L1}},
    {"baskerville"_L1, {"Liberation Serif"_L1}},
    {"playfair"_L1, {"C059"_L1, "Liberation Serif"_L1}, {1.082, 0.251, 0}},
    {"merriweather"_L1, {"DejaVu Serif"_L1}, {0.984, 0.273, 0}},
    {"avantgarde"_L1, {"URW Gothic"_L1}},
    {"futura"_L1, {"Jost"_L1, "URW Gothic"_L1}, {1.039, 0.260, 0.030}},
    {"avenir"_L1, {"Nunito Sans"_L1, "Montserrat"_L1, "Inter"_L1}, {1.000, 0.366, 0}},
    {"gotham"_L1, {"Montserrat"_L1, "Inter"_L1}},
    {"proxima"_L1, {"Montserrat"_L1, "Inter"_L1}},
    {"montserrat"_L1, {"Inter"_L1}, {0.968, 0.251, 0}},
    {"verdana"_L1, {"DejaVu Sans"_L1}, {1.005, 0.210, 0}},
    {"tahoma"_L1, {"DejaVu Sans"_L1}, {1.000, 0.207, 0}},
    {"lucida"_L1, {"DejaVu Sans"_L1}},
    {"calibri"_L1, {"Carlito"_L1, "Lato"_L1, "Open Sans"_L1}},
    {"segoe"_L1, {"Open Sans"_L1, "Noto Sans"_L1}, {1.079, 0.251, 0}},
    {"myriad"_L1, {"Open Sans"_L1, "Noto Sans"_L1}},
    {"frutiger"_L1, {"Open Sans"_L1, "Noto Sans"_L1}},
    {"amazonember"_L1, {"Cantarell"_L1, "Open Sans"_L1}, {}, {}, 0.008},
    {"ibmplexmono"_L1, {"DejaVu Sans Mono"_L1}, {1.025, 0.275, 0}},
    {"ibmplexserif"_L1, {"Liberation Serif"_L1}, {1.025, 0.275, 0}},
    {"ibmplex"_L1, {"Inter"_L1}, {1.025, 0.275, 0}},
    {"pingfang"_L1, {"Inter"_L1}, {1.060, 0.340, 0}},
    {"sourcesans"_L1, {"Open Sans"_L1, "Noto Sans"_L1}, {0.984, 0.273, 0}},
    {"notosans"_L1, {"Open Sans"_L1}, {1.069, 0.293, 0}},
    {"opensans"_L1, {"Noto Sans"_L1}, {1.069, 0.293, 0}},
    {"lato"_L1, {"Carlito"_L1}, {0.987, 0.213, 0}},
    {"roboto"_L1, {"Inter"_L1}, {0.927, 0.244, 0}},
};

/// The stroke offset for a weight between the two that a fallback has: stems of grotesques grow by
/// about a fortieth of an em with each hundred.
double strokeOffsetFor(int weight) {
  const int nearest = weight < QFont::DemiBold ? QFont::Normal : QFont::Bold;
  return std::max(-0.03, 0.012 * (weight - nearest) / 100);
}

/// Sets the family, and the metrics where they are known.
void setFallback(const QString& family, const Style& style,
                 const QHash<QString, QString>& installed, FontMatch* match) {
  const auto take = [&](QLatin1StringView name) {
    const QString found = installed.value(plain(name));
    if (!found.isEmpty()) match->font.setFamily(found);
    return !found.isEmpty();
  };
  for (const Fallback& row : kFallbacks) {
    if (!family.startsWith(row.prefix)) continue;
    match->metrics = row.metrics;
    const bool isGrotesque = row.families.begin()[0] == "Liberation Sans"_L1;
    if (isGrotesque && style.stretch < QFont::Unstretched &&
        (take("Liberation Sans Narrow"_L1) || take("Nimbus Sans Narrow"_L1))) {
      match->strokeOffset = strokeOffsetFor(style.weight);
      return;
    }
    QStringList families;
    for (const QLatin1StringView name : row.families) {
      if (const QString found = installed.value(plain(name)); !found.isEmpty()) families << found;
    }
    if (families.isEmpty()) break;
    match->font.setFamilies(families);
    match->strokeOffset = row.strokeOffset + (isGrotesque ? strokeOffsetFor(style.weight) : 0);
    match->outlines = installed.value(plain(row.outlines));
    return;
  }
  if (!take("Inter"_L1) && !take("Roboto"_L1)) match->font.setFamily(u"sans-serif"_s);
}

/// The family part of a PostScript name: what precedes the hyphen, without the suffixes that some
/// foundries add.
QString familyPart(const QString& name) {
  QString family = plain(name.section(u'-', 0, 0));
  for (const auto mark : {"psmt"_L1, "mt"_L1, "ps"_L1}) {
    if (family.size() > mark.size() + 2 && family.endsWith(mark)) {
      family.chop(mark.size());
      break;
    }
  }
  return family;
}

FontMatch findMatch(const QString& name) {
  const QHash<QString, QString> installed = installedFamilies();
  const QString family = familyPart(name);
  const QString styleName = name.section(u'-', 1);
  FontMatch match;
  QString found = installed.value(plain(name.section(u'-', 0, 0)));
  if (found.isEmpty()) found = installed.value(family);
  if (found.isEmpty()) found = installed.value(plain(name));
  match.isInstalled = !found.isEmpty();
  const Style style = styleFrom(styleName.isEmpty() && !match.isInstalled ? name : styleName);
  if (match.isInstalled) {
    match.font.setFamily(found);
  } else {
    setFallback(family, style, installed, &match);
  }
  match.font.setWeight(QFont::Weight(style.weight));
  match.font.setItalic(style.isItalic);
  match.font.setStretch(style.stretch);
  match.font.setHintingPreference(QFont::PreferNoHinting);
  match.font.setStyleStrategy(QFont::PreferOutline);
  return match;
}

QHash<QString, FontMatch>& knownMatches() {
  static thread_local QHash<QString, FontMatch> matches;
  return matches;
}

}  // namespace

void forgetFontMatches() { knownMatches().clear(); }

FontMatch matchFont(const QString& postScriptName) {
  QHash<QString, FontMatch>& matches = knownMatches();
  const auto found = matches.constFind(postScriptName);
  if (found != matches.constEnd()) return *found;
  return *matches.insert(postScriptName, findMatch(postScriptName));
}

}  // namespace kelvar::render
