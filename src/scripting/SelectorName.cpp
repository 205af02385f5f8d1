#include "scripting/SelectorName.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace kelvar {
namespace {

/// Levenshtein distance where an edit costs two and a change of case one.
int distance(const QString& a, const QString& b) {
  std::vector<int> row(size_t(b.size()) + 1);
  for (size_t j = 0; j < row.size(); ++j) row[j] = int(2 * j);
  for (qsizetype i = 0; i < a.size(); ++i) {
    int diagonal = row[0];
    row[0] += 2;
    for (qsizetype j = 0; j < b.size(); ++j) {
      const bool same = a[i] == b[j];
      const int change = same ? 0 : a[i].toLower() == b[j].toLower() ? 1 : 2;
      const int best = std::min({diagonal + change, row[size_t(j)] + 2, row[size_t(j) + 1] + 2});
      diagonal = std::exchange(row[size_t(j) + 1], best);
    }
  }
  return row.back();
}

}  // namespace

QString scriptName(const QString& selector) {
  QString name = selector;
  return name.replace(u'_', QStringLiteral("__")).replace(u':', u'_');
}

QString shortScriptName(const QString& selector) {
  const QString name = scriptName(selector);
  return selector.endsWith(u':') ? name.chopped(1) : name;
}

QString nearestName(const QString& name, const QStringList& names) {
  QString nearest;
  int least = std::numeric_limits<int>::max();
  for (const QString& each : names) {
    const int away = distance(name, each);
    if (away >= least) continue;
    least = away;
    nearest = each;
  }
  return nearest;
}

}  // namespace kelvar
