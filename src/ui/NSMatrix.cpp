#include "ui/NSMatrix.h"

#include <stdexcept>

#include "runtime/ClassInfo.h"
#include "runtime/raise.h"
#include "ui/KVButton.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using M = NSMatrix;
using CellRef = std::shared_ptr<NSButtonCell>;

const ClassInfo::Registration kRegistered[] = {
    ClassInfo::Registration(&NSButtonCell::staticClassInfo),
    ClassInfo::Registration(&NSMatrix::staticClassInfo)};

constexpr int kMaxCells = 1000;

QVariantList cellsOf(const M& matrix) {
  QVariantList cells;
  for (const CellRef& each : matrix.cells()) cells.append(toVariant(each));
  return cells;
}

ClassInfoBuilder<M, NSControl> withSelection(ClassInfoBuilder<M, NSControl> builder) {
  return std::move(builder)
      .operation("selectedCell", &M::selectedCell, "Returns the first cell that is on, or nil.")
      .operation(
          "selectedRow",
          [](const M& self) {
            return self.selectedIndex() < 0 ? -1 : self.selectedIndex() / self.columns();
          },
          "Returns the row of the first cell that is on, or -1.")
      .operation(
          "selectedColumn",
          [](const M& self) {
            return self.selectedIndex() < 0 ? -1 : self.selectedIndex() % self.columns();
          },
          "Returns the column of the first cell that is on, or -1.")
      .operation(
          "selectedTag",
          [](const M& self) {
            const CellRef cell = self.selectedCell();
            return cell ? cell->tag() : -1;
          },
          "Returns the tag of the first cell that is on, or -1.")
      .operation("selectCellAtRow:column:", &M::selectCell,
                 "Switches a cell on and, among radio buttons, the others off; the action does not "
                 "run.")
      .operation("selectCellWithTag:", &M::selectCellWithTag,
                 "Selects the first cell with that tag, and returns whether there is one.");
}

}  // namespace

const ClassInfo& NSButtonCell::staticClassInfo() {
  using C = NSButtonCell;
  static const ClassInfo kClass =
      ClassInfoBuilder<C, NSButton>("NSButtonCell")
          .initializer("init", &C::init, "Creates a push button for a matrix.")
          .initializer("initTextCell:", &C::initTextCell, "Creates one with this title.")
          .operation("setButtonType:", &C::setCellType,
                     "Makes it a check box (`NSSwitchButton`), a radio button (`NSRadioButton`) or "
                     "a push button.");
  return kClass;
}

CellRef NSButtonCell::init() {
  auto* const box = new ButtonCellBox;
  box->setControl(new KVButton);
  return std::static_pointer_cast<NSButtonCell>(View::adopt(box, {}));
}

CellRef NSButtonCell::initTextCell(const QString& title) {
  CellRef cell = init();
  cell->setTitle(title);
  return cell;
}

CellRef NSButtonCell::copy() const {
  CellRef cell = initTextCell(title());
  cell->setCellType(type_);
  cell->setImage(image());
  cell->setTag(tag());
  return cell;
}

void NSButtonCell::setCellType(int type) {
  type_ = type;
  setButtonType(type);
}

const ClassInfo& NSMatrix::staticClassInfo() {
  static const ClassInfo kClass = withSelection(
      ClassInfoBuilder<M, NSControl>("NSMatrix")
          .initializer(
              "initWithFrame:mode:prototype:numberOfRows:numberOfColumns:", &M::initWithFrame,
              "Creates rows of buttons that are copies of the prototype; with "
              "`NSRadioModeMatrix` one of them is on.")
          .property("cells", cellsOf, "The cells, row by row.")
          .property("numberOfRows", &M::rows, "How many rows there are.")
          .property("numberOfColumns", &M::columns, "How many columns there are.")
          .property("cellSize", &M::cellSize, &M::setCellSize, "The size of each cell.")
          .property("intercellSpacing", &M::spacing, &M::setSpacing, "The space between cells.")
          .operation("cellAtRow:column:", &M::cellAt, "Returns a cell, or nil."));
  return kClass;
}

std::shared_ptr<M> NSMatrix::initWithFrame(const QRectF& frame, int mode, const CellRef& prototype,
                                           int rows, int columns) {
  if (!prototype) raise(u"a matrix is made with a cell as its prototype"_s);
  if (rows < 0 || columns < 0 || int64_t(rows) * columns > kMaxCells) {
    raise(u"a matrix has up to %1 cells"_s.arg(kMaxCells));
  }
  const auto matrix = std::static_pointer_cast<M>(View::adopt(new MatrixBox, frame));
  matrix->mode_ = mode;
  matrix->columns_ = columns;
  for (int i = 0; i < rows * columns; ++i) matrix->addCell(prototype->copy());
  matrix->layOut();
  if (mode == kRadio && rows * columns > 0) matrix->selectCell(0, 0);
  return matrix;
}

void NSMatrix::addCell(const CellRef& cell) {
  addSubview(cell);
  auto* const box = qobject_cast<ButtonCellBox*>(cell->widget());
  auto* const button = box ? qobject_cast<QAbstractButton*>(box->control()) : nullptr;
  if (!button) return;
  const auto clicked = [self = weak_from_this(), cell = std::weak_ptr(cell)] {
    const ObjectRef matrix = self.lock();
    const CellRef held = cell.lock();
    if (matrix && held) static_cast<NSMatrix&>(*matrix).cellWasClicked(*held);
  };
  QObject::connect(button, &QAbstractButton::clicked, button, clicked);
}

void NSMatrix::cellWasClicked(const NSButtonCell& cell) {
  if (mode_ == kRadio) select(cell);
  act();
}

QList<CellRef> NSMatrix::cells() const {
  QList<CellRef> found;
  for (const ViewRef& each : subviews()) {
    if (auto cell = std::dynamic_pointer_cast<NSButtonCell>(each)) found.append(std::move(cell));
  }
  return found;
}

CellRef NSMatrix::cellAt(int row, int column) const {
  if (row < 0 || column < 0 || column >= columns_ || row >= rows()) return nullptr;
  return cells().value(row * columns_ + column);
}

int NSMatrix::selectedIndex() const {
  const QList<CellRef> all = cells();
  for (qsizetype i = 0; i < all.size(); ++i) {
    if (all[i]->state() != 0) return int(i);
  }
  return -1;
}

CellRef NSMatrix::selectedCell() const { return cells().value(selectedIndex()); }

void NSMatrix::selectCell(int row, int column) {
  const CellRef cell = cellAt(row, column);
  if (!cell) throw std::out_of_range("the matrix has no such cell");
  select(*cell);
}

bool NSMatrix::selectCellWithTag(int tag) {
  for (const CellRef& each : cells()) {
    if (each->tag() != tag) continue;
    select(*each);
    return true;
  }
  return false;
}

/// Qt knows of no others, as each button is in a box of its own.
void NSMatrix::select(const NSButtonCell& chosen) {
  for (const CellRef& each : cells()) {
    if (each.get() == &chosen)
      each->setState(1);
    else if (mode_ == kRadio)
      each->setState(0);
  }
}

void NSMatrix::setCellSize(const QSizeF& size) {
  cellSize_ = size;
  layOut();
}

void NSMatrix::setSpacing(const QSizeF& spacing) {
  spacing_ = spacing;
  layOut();
}

/// The first row is at the top.
void NSMatrix::layOut() {
  const QList<CellRef> all = cells();
  for (qsizetype i = 0; i < all.size(); ++i) {
    const double x = double(i % columns_) * (cellSize_.width() + spacing_.width());
    const double top = double(i / columns_) * (cellSize_.height() + spacing_.height());
    all[i]->setFrame({{x, frame().height() - top - cellSize_.height()}, cellSize_});
  }
}

}  // namespace kelvar
