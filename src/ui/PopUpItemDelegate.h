#pragma once

#include <QStyledItemDelegate>

namespace kelvar {

class PopUpButton;

/// Draws the open menu of a pop-up button: a column for check marks, then image and title, and
/// lines for separators.
class PopUpItemDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit PopUpItemDelegate(PopUpButton* button);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const PopUpButton& button_;
};

}  // namespace kelvar
