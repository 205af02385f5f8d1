#include "host/render/FontChooser.h"

#include <QFontDatabase>
#include <QHash>

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

/// What a style's name says. Longer words stand before those that they contain.
struct Style {
  int weight = QFont::Normal;
  bool isItalic = false;
  int stretch = QFont::Unstretched;
};

Style styleFrom(const QString& name) {
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

/// What stands in for families that are not installed, by how their plain names begin.
QString standInFor(const QString& family, int weight, const QHash<QString, QString>& installed) {
  const struct {
    QLatin1StringView start;
    QLatin1StringView family;
  } table[] = {
      {"sfmono"_L1, "monospace"_L1},      {"menlo"_L1, "monospace"_L1},
      {"monaco"_L1, "monospace"_L1},      {"consolas"_L1, "monospace"_L1},
      {"courier"_L1, "Courier"_L1},       {"sf"_L1, "Inter"_L1},
      {"applesystem"_L1, "Inter"_L1},     {"system"_L1, "Inter"_L1},
      {"interui"_L1, "Inter"_L1},         {"newyork"_L1, "serif"_L1},
      {"helvetica"_L1, "Helvetica"_L1},   {"arial"_L1, "Arial"_L1},
      {"times"_L1, "Times New Roman"_L1}, {"georgia"_L1, "Georgia"_L1},
      {"palatino"_L1, "Palatino"_L1},     {"garamond"_L1, "serif"_L1},
      {"didot"_L1, "serif"_L1},           {"baskerville"_L1, "serif"_L1},
      {"playfair"_L1, "serif"_L1},        {"merriweather"_L1, "serif"_L1},
      {"sourcecode"_L1, "monospace"_L1},  {"robotomono"_L1, "monospace"_L1},
  };
  // The grotesques that stand in have only these.
  const bool isCommonWeight = weight == QFont::Normal || weight == QFont::Bold;
  for (const auto& [start, standIn] : table) {
    const bool isGrotesque = standIn == "Helvetica"_L1 || standIn == "Arial"_L1;
    if (family.startsWith(start) && (isCommonWeight || !isGrotesque)) return QString(standIn);
  }
  const QString inter = u"inter"_s;
  return installed.contains(inter) ? installed[inter] : u"sans-serif"_s;
}

/// The family part of a PostScript name: what stands before the hyphen, without the marks that
/// some foundries add.
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

ChosenFont choose(const QString& name) {
  const QHash<QString, QString> installed = installedFamilies();
  const QString family = familyPart(name);
  const QString styleName = name.section(u'-', 1);
  ChosenFont chosen;
  QString found = installed.value(plain(name.section(u'-', 0, 0)));
  if (found.isEmpty()) found = installed.value(family);
  if (found.isEmpty()) found = installed.value(plain(name));
  chosen.isInstalled = !found.isEmpty();
  const Style style = styleFrom(styleName.isEmpty() && !chosen.isInstalled ? name : styleName);
  if (found.isEmpty()) found = standInFor(family, style.weight, installed);
  chosen.font.setFamily(found);
  chosen.font.setWeight(QFont::Weight(style.weight));
  chosen.font.setItalic(style.isItalic);
  chosen.font.setStretch(style.stretch);
  chosen.font.setHintingPreference(QFont::PreferNoHinting);
  chosen.font.setStyleStrategy(QFont::PreferOutline);
  return chosen;
}

}  // namespace

ChosenFont chooseFont(const QString& postScriptName) {
  static thread_local QHash<QString, ChosenFont> chosen;
  const auto found = chosen.constFind(postScriptName);
  if (found != chosen.constEnd()) return *found;
  return *chosen.insert(postScriptName, choose(postScriptName));
}

}  // namespace kelvar::render
