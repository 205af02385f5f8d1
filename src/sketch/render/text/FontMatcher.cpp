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
/// it, the nearest first (if nothing does, one of its class of type), and the family's own vertical
/// metrics (of its `hhea` table), in ems; zeros where they are not known.
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
    {"sourcehansans"_L1, {"Open Sans"_L1, "Noto Sans"_L1}, {1.160, 0.288, 0}},
    {"notosanscjk"_L1, {"Open Sans"_L1, "Noto Sans"_L1}, {1.160, 0.288, 0}},
    {"notosans"_L1, {"Open Sans"_L1}, {1.069, 0.293, 0}},
    {"opensans"_L1, {"Noto Sans"_L1}, {1.069, 0.293, 0}},
    {"lato"_L1, {"Carlito"_L1}, {0.987, 0.213, 0}},
    {"robotoslab"_L1, {}, {1.048, 0.271, 0}},
    {"roboto"_L1, {"Inter"_L1}, {0.927, 0.244, 0}},
    {"poppins"_L1, {}, {1.050, 0.350, 0.100}},
    {"raleway"_L1, {}, {0.940, 0.234, 0}},
    {"nunito"_L1, {}, {1.011, 0.353, 0}},
    {"ubuntu"_L1, {}, {0.932, 0.189, 0.028}},
    {"ptsans"_L1, {}, {1.018, 0.276, 0}},
    {"oswald"_L1, {}, {1.193, 0.289, 0}},
    {"rubik"_L1, {}, {0.935, 0.250, 0}},
    {"quicksand"_L1, {}, {1.000, 0.250, 0}},
    {"worksans"_L1, {}, {0.930, 0.243, 0}},
    {"firasans"_L1, {}, {0.935, 0.265, 0}},
    {"barlow"_L1, {}, {1.000, 0.200, 0}},
    {"dmsans"_L1, {}, {0.992, 0.310, 0}},
    {"jetbrainsmono"_L1, {}, {1.020, 0.300, 0}},
};

/// Classes of type by the words in a family's plain name, and the families that can stand in for
/// one of the class, the best first. The last row has all others.
const struct {
  std::initializer_list<QLatin1StringView> words;
  std::initializer_list<QLatin1StringView> families;
} kClasses[] = {
    {{"mono"_L1, "code"_L1, "console"_L1, "typewriter"_L1, "terminal"_L1, "fixed"_L1},
     {"DejaVu Sans Mono"_L1, "Liberation Mono"_L1, "Nimbus Mono PS"_L1}},
    {{"script"_L1, "handwrit"_L1, "brush"_L1, "callig"_L1, "chancery"_L1, "cursive"_L1,
      "signature"_L1},
     {"Z003"_L1}},
    {{"serif"_L1, "slab"_L1, "roman"_L1, "antiqua"_L1, "oldstyle"_L1, "bodoni"_L1, "caslon"_L1,
      "minion"_L1, "charter"_L1, "crimson"_L1, "lora"_L1, "bitter"_L1, "rockwell"_L1, "songti"_L1,
      "mincho"_L1, "simsun"_L1},
     {"Liberation Serif"_L1, "DejaVu Serif"_L1, "C059"_L1, "P052"_L1, "URW Bookman"_L1}},
    {{},
     {"Inter"_L1, "Roboto"_L1, "Open Sans"_L1, "Liberation Sans"_L1, "Lato"_L1, "Cantarell"_L1,
      "DejaVu Sans"_L1, "URW Gothic"_L1}}};

QStringList installedOf(std::initializer_list<QLatin1StringView> names,
                        const QHash<QString, QString>& installed) {
  QStringList families;
  for (const QLatin1StringView name : names) {
    if (const QString found = installed.value(plain(name)); !found.isEmpty()) families << found;
  }
  return families;
}

/// The installed families of the class of type that the name says.
QStringList familiesOfClass(const QString& family, const QHash<QString, QString>& installed) {
  const QString name = QString(family).remove("sansserif"_L1);
  const auto* const found =
      std::find_if(std::begin(kClasses), std::end(kClasses) - 1, [&](const auto& row) {
        return std::any_of(row.words.begin(), row.words.end(),
                           [&](QLatin1StringView word) { return name.contains(word); });
      });
  return installedOf(found->families, installed);
}

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
    if (row.families.size() == 0) break;
    const bool isGrotesque = row.families.begin()[0] == "Liberation Sans"_L1;
    if (isGrotesque && style.stretch < QFont::Unstretched &&
        (take("Liberation Sans Narrow"_L1) || take("Nimbus Sans Narrow"_L1))) {
      match->strokeOffset = strokeOffsetFor(style.weight);
      return;
    }
    const QStringList families = installedOf(row.families, installed);
    if (families.isEmpty()) break;
    match->font.setFamilies(families);
    match->strokeOffset = row.strokeOffset + (isGrotesque ? strokeOffsetFor(style.weight) : 0);
    match->outlines = installed.value(plain(row.outlines));
    return;
  }
  match->standIns = familiesOfClass(family, installed);
  match->font.setFamily(match->standIns.value(0, u"sans-serif"_s));
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

FontMatch matchFont(const QString& postScriptName, const QString& standIn) {
  FontMatch match = matchFont(postScriptName);
  if (match.standIns.contains(standIn)) match.font.setFamily(standIn);
  return match;
}

}  // namespace kelvar::render
