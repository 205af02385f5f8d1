#pragma once

#include <QStringList>

namespace kelvar::render {

/// Differences between the drawing and what the document specifies, one sentence each, without
/// duplicates. After a hundred, a final sentence says that there are more.
class RenderWarnings {
 public:
  void add(const QString& warning) {
    if (list_.size() > kMaxWarnings || list_.contains(warning)) return;
    list_.append(list_.size() < kMaxWarnings ? warning
                                             : QStringLiteral("Further warnings were omitted."));
  }
  void add(const QStringList& warnings) {
    for (const QString& warning : warnings) add(warning);
  }
  const QStringList& list() const { return list_; }

 private:
  static constexpr qsizetype kMaxWarnings = 100;
  QStringList list_;
};

}  // namespace kelvar::render
