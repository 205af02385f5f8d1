#pragma once

#include "ui/NSButton.h"

namespace kelvar {

/// The widget of a button that is made for a matrix.
class ButtonCellBox : public ButtonBox {
  Q_OBJECT
};

/// A button of a matrix, or what the matrix makes its buttons after.
class KELVAR_EXPORT NSButtonCell : public NSButton {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  using NSButton::NSButton;
  static std::shared_ptr<NSButtonCell> init();
  static std::shared_ptr<NSButtonCell> initTextCell(const QString& title);
  std::shared_ptr<NSButtonCell> copy() const;

  /// Also remembers the type for copies.
  void setCellType(int type);

 private:
  int type_ = 0;
};

class MatrixBox : public QWidget {
  Q_OBJECT
};

/// The view of rows and columns of buttons. In the mode of radio buttons one of them is on.
class KELVAR_EXPORT NSMatrix : public NSControl {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  enum Mode { kRadio = 0, kHighlight = 1, kList = 2, kTrack = 3 };

  using NSControl::NSControl;
  static std::shared_ptr<NSMatrix> initWithFrame(const QRectF& frame, int mode,
                                                 const std::shared_ptr<NSButtonCell>& prototype,
                                                 int rows, int columns);

  /// The buttons, row by row.
  QList<ViewRef> subviews() const override { return View::subviews(); }
  QList<std::shared_ptr<NSButtonCell>> cells() const;
  int rows() const { return columns_ > 0 ? int(cells().size()) / columns_ : 0; }
  int columns() const { return columns_; }
  /// Null where there is none.
  std::shared_ptr<NSButtonCell> cellAt(int row, int column) const;
  /// Null without one that is on.
  std::shared_ptr<NSButtonCell> selectedCell() const;
  /// The place of the selected cell in `cells`, or -1.
  int selectedIndex() const;
  /// Does not run the action. Throws `std::out_of_range` where there is no cell.
  void selectCell(int row, int column);
  bool selectCellWithTag(int tag);
  QSizeF cellSize() const { return cellSize_; }
  void setCellSize(const QSizeF& size);
  QSizeF spacing() const { return spacing_; }
  void setSpacing(const QSizeF& spacing);

 protected:
  void connectControl() override {}

 private:
  void addCell(const std::shared_ptr<NSButtonCell>& cell);
  void cellWasClicked(const NSButtonCell& cell);
  void select(const NSButtonCell& chosen);
  void layOut();

  int mode_ = kRadio;
  int columns_ = 0;
  QSizeF cellSize_{100, 18};
  QSizeF spacing_{4, 2};
};

}  // namespace kelvar
