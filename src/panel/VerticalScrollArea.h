#pragma once

#include <QScrollArea>

namespace kelvar::cli {

/// Scrolls up and down only, and is at least as wide as its contents need.
class VerticalScrollArea : public QScrollArea {
 public:
  /// Also at least as wide as `reserved`, which may be hidden. It outlives the scroll area.
  explicit VerticalScrollArea(const QWidget* reserved, QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  const QWidget* reserved_;
};

}  // namespace kelvar::cli
