#include "app/panel/PanelColumn.h"

#include <QDropEvent>
#include <QGridLayout>
#include <QLabel>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "app/panel/droppedFiles.h"
#include "platform/MainQueue.h"
#include "ui/KVMenu.h"
#include "ui/WrappingLabel.h"

namespace kelvar::app {
namespace {

/// What the forms keep free at either side.
constexpr int kMargin = 12;
constexpr int kSpacing = 8;
/// Points that a chooser is wide, at most about.
constexpr int kCellWidth = 340;
/// Points that the column is wide, at least.
constexpr int kLeastWidth = 280;
/// Choosers at once; for more shapes than these nobody picks designs one by one.
constexpr qsizetype kMostCells = 24;
/// As many as are made without a pause that could be felt.
constexpr qsizetype kCellsAtOnce = 3;

/// Scrolls up and down only, and is therefore as wide as its contents need, now or with `later`.
class UprightScrollArea : public QScrollArea {
 public:
  UprightScrollArea(const QWidget* later, QWidget* parent) : QScrollArea(parent), later_(later) {
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  }

  QSize minimumSizeHint() const override {
    const auto least = [](const QWidget* part) {
      return part ? part->minimumSizeHint().width() : 0;
    };
    const int contents = std::max(least(widget()), least(later_));
    return {std::max(kLeastWidth, contents + verticalScrollBar()->sizeHint().width()),
            QScrollArea::minimumSizeHint().height()};
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(watched, event);
  }

 private:
  const QWidget* later_;
};

QLabel* makeLabel(const char* name, QWidget* parent) {
  auto* const label = new WrappingLabel(parent);
  label->setObjectName(QLatin1String(name));
  label->setContentsMargins(kMargin, 0, kMargin, 0);
  return label;
}

QVBoxLayout* makeStack(int spacing) {
  auto* const layout = new QVBoxLayout;
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(spacing);
  return layout;
}

}  // namespace

PanelColumn::PanelColumn(PanelModel* model, QWidget* parent) : QWidget(parent), model_(model) {
  setObjectName(QStringLiteral("panelColumn"));
  makeDelegates();
  narrowRow_ = KVViewController::initWithNibName();
  wideRow_ = KVResizeViewController::initWithNibName();
  makeColumn();
  addCell();
  modelDidChange();
}

void PanelColumn::makeDelegates() {
  rowDelegate_ = std::make_shared<KVViewControllerDelegate>();
  rowDelegate_->controllerDidToggleIncludeInArtboards = [this](auto&, const QVariant& state) {
    // Mixed is no state that a person can want: it stands for all.
    model_->setIncluded(state.toInt() != 0);
    fillRow();
  };
  rowDelegate_->controllerDidPressRefreshLayer = [this](auto&) {
    if (didPressRefresh) didPressRefresh();
  };
  rowDelegate_->controllerDidPressFlipLayer = [this](auto&) { model_->flip(); };
  rowDelegate_->controllerDidPressRotateLayer = [this](auto&) { model_->rotate(); };
  rowDelegate_->controllerDidSelectImageQuality = [this](auto&, const QVariant& index) {
    model_->setQuality(index.toInt());
    fillRow();
  };
  cellDelegate_ = std::make_shared<KVPopupCellDelegate>();
  cellDelegate_->popupCellSelectedDidChange = [this](KVPopupCell& cell) {
    model_->setDesign(cell.layerID(), cell.selectedIdentifier());
  };
}

void PanelColumn::makeColumn() {
  auto* const content = new QWidget;
  auto* const column = makeStack(kSpacing);
  column->setContentsMargins(0, kMargin, 0, kMargin);
  title_ = makeLabel("selectionTitle", content);
  QFont bold = title_->font();
  bold.setWeight(QFont::DemiBold);
  title_->setFont(bold);
  empty_ = makeLabel("emptyHint", content);
  empty_->setForegroundRole(QPalette::PlaceholderText);
  problem_ = makeLabel("problem", content);
  cellLayout_ = new QGridLayout;
  cellLayout_->setContentsMargins(0, 0, 0, 0);
  cellLayout_->setSpacing(kSpacing);
  settings_ = new QWidget(content);
  // Before anything is measured with it.
  settings_->hide();
  auto* const rows = new QVBoxLayout(settings_);
  rows->setContentsMargins(0, 0, 0, 0);
  for (const KVViewControllerRef& row : {narrowRow_, wideRow_}) {
    if (!row || !row->view()) continue;
    row->setDelegate(rowDelegate_);
    rows->addWidget(row->view());
  }
  // There is always the narrow one to go back to.
  wideRow_->view()->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  column->addWidget(title_);
  column->addWidget(empty_);
  column->addLayout(cellLayout_);
  column->addWidget(problem_);
  column->addWidget(settings_);
  column->addStretch();

  // What is above scrolls along: a long message leaves room for the rest.
  above_ = makeStack(0);
  auto* const scrolled = new QVBoxLayout(content);
  scrolled->setContentsMargins(0, 0, 0, 0);
  scrolled->setSpacing(0);
  scrolled->addLayout(above_);
  scrolled->addLayout(column, 1);

  scroll_ = new UprightScrollArea(narrowRow_->view(), this);
  scroll_->setWidget(content);
  scroll_->setWidgetResizable(true);
  scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setFrameShape(QFrame::NoFrame);
  below_ = makeStack(0);
  auto* const whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->setSpacing(0);
  whole->addWidget(scroll_, 1);
  whole->addLayout(below_);
}

void PanelColumn::addAbove(QWidget* widget) { above_->addWidget(widget); }

void PanelColumn::addBelow(QWidget* widget) { below_->addWidget(widget); }

KVViewController& PanelColumn::row() const {
  const int wide = wideRow_->view()->minimumSizeHint().width() +
                   scroll_->verticalScrollBar()->sizeHint().width();
  return width() < wide ? *narrowRow_ : *wideRow_;
}

void PanelColumn::setCanMakeShapes(bool can) {
  canMakeShapes_ = can;
  modelDidChange();
}

void PanelColumn::setThumbnails(const QMap<QString, ImageRef>& thumbnails) {
  thumbnails_ = thumbnails;
  fillCells();
}

void PanelColumn::setPreview(const ImageRef& preview) {
  preview_ = preview;
  fillRow();
}

void PanelColumn::setProblems(const QMap<QString, QString>& problems) {
  problems_ = problems;
  showProblems();
}

void PanelColumn::setBusy(bool isBusy) {
  isBusy_ = isBusy;
  if (isBusy) {
    rememberFocus();
    row().disableLayerButton();
    return;
  }
  fillRow();
  // Behind whatever disabling is still on its way.
  MainQueue::async([column = QPointer<PanelColumn>(this)] {
    if (column && !column->isBusy_) column->enableRow();
  });
}

void PanelColumn::enableRow() {
  for (const KVViewControllerRef& row : {narrowRow_, wideRow_}) row->enableLayerButton();
  // A control that is disabled hands the focus on, which whoever works with the keys wants back.
  if (focusBefore_ && focusBefore_->isVisible()) focusBefore_->setFocus();
  focusBefore_ = nullptr;
}

void PanelColumn::rememberFocus() {
  QWidget* const focus = window()->focusWidget();
  if (!focusBefore_ && focus && settings_->isAncestorOf(focus)) focusBefore_ = focus;
}

void PanelColumn::modelDidChange() {
  const qsizetype count = model_->selection().size();
  title_->setVisible(count > 1);
  title_->setText(QStringLiteral("%1 shapes").arg(count));
  settings_->setVisible(count > 0);
  empty_->setVisible(count == 0);
  empty_->setText(emptyHint());
  fillCells();
  fillRow();
  showProblems();
}

QString PanelColumn::emptyHint() const {
  const Arrangement& arrangement = model_->arrangement();
  if (arrangement.photo.isEmpty()) return QStringLiteral("The shapes' settings come here.");
  const bool isEmpty = arrangement.shapesInSight().isEmpty();
  if (isEmpty && !canMakeShapes_) {
    return QStringLiteral(
        "There is no shape with four corners here, which is what a design is laid onto.");
  }
  if (isEmpty) {
    return QStringLiteral(
        "No shapes yet. Click the four corners of a screen, a wall or a label in the photo, the "
        "top-left one first.");
  }
  return QStringLiteral(
      "Nothing is selected. Click a shape to give it a design, or several with Shift.");
}

KVMenuRef PanelColumn::menu() const {
  QVariantList items;
  for (const Arrangement::Design& design : model_->arrangement().designs) {
    QVariantMap item{{QStringLiteral("title"), design.name},
                     {QStringLiteral("identifier"), design.id}};
    const ImageRef image = thumbnails_.value(design.id);
    if (image) item.insert(QStringLiteral("image"), QVariant::fromValue(image));
    items.append(item);
  }
  if (!items.isEmpty()) {
    items.append(QVariantMap{{QStringLiteral("type"), QStringLiteral("separator")}});
  }
  items.append(QVariantMap{{QStringLiteral("title"), QStringLiteral("None")},
                           {QStringLiteral("identifier"), QStringLiteral("")}});
  return KVMenu::menuWithItems(items);
}

void PanelColumn::addCell() {
  const KVPopupCellRef cell = KVPopupCell::initWithNibName();
  if (!cell || !cell->view()) return;
  cell->setDelegate(cellDelegate_);
  cell->view()->setAcceptDrops(true);
  cell->view()->installEventFilter(this);
  cells_.append(cell);
  arrangeCells();
}

/// Side by side where there is room, and never stretched far.
void PanelColumn::arrangeCells() {
  const int columns = std::max(width() / kCellWidth, 1);
  for (const KVPopupCellRef& cell : cells_) cellLayout_->removeWidget(cell->view());
  for (int i = 0; i < int(cells_.size()); ++i) {
    cellLayout_->addWidget(cells_[i]->view(), i / columns, i % columns);
  }
  for (int i = 0; i < cellLayout_->columnCount(); ++i) {
    cellLayout_->setColumnStretch(i, i < columns ? 1 : 0);
  }
}

void PanelColumn::fillCells() {
  const QStringList selection = model_->selection().mid(0, kMostCells);
  const qsizetype missing = selection.size() - cells_.size();
  for (qsizetype i = 0; i < std::min(missing, kCellsAtOnce); ++i) addCell();
  if (missing > kCellsAtOnce) {
    MainQueue::async([column = QPointer<PanelColumn>(this)] {
      if (column) column->fillCells();
    });
  }
  for (qsizetype i = 0; i < cells_.size(); ++i) {
    KVPopupCell& cell = *cells_[i];
    cell.view()->setVisible(i < selection.size());
    if (i >= selection.size()) continue;
    const Arrangement::Shape& shape = *model_->arrangement().shape(selection[i]);
    cell.setLayerID(shape.id);
    cell.setName(shape.name);
    cell.setImage(thumbnails_.value(shape.design));
    // The empty identifier is that of "None".
    cell.setSelectedIdentifier(shape.design.isEmpty() ? QStringLiteral("") : shape.design);
    cell.setPopupMenu(menu());
    cell.reloadData();
  }
}

void PanelColumn::fillRow() {
  for (const KVViewControllerRef& row : {narrowRow_, wideRow_}) {
    if (!row) continue;
    row->setImageQuality(model_->quality());
    row->setIncludeInArtboards(model_->included());
    row->setPreviewImage(preview_);
    row->reloadData();
    row->view()->setVisible(row.get() == &this->row());
    if (isBusy_) row->disableLayerButton();
  }
}

void PanelColumn::showProblems() {
  QStringList lines;
  for (const QString& id : model_->selection()) {
    if (!problems_.contains(id)) continue;
    lines.append(model_->arrangement().shape(id)->name + QStringLiteral(": ") +
                 problems_.value(id));
  }
  problem_->setText(lines.join(u'\n'));
  problem_->setVisible(!lines.isEmpty());
}

bool PanelColumn::eventFilter(QObject* watched, QEvent* event) {
  const bool isDrag = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove;
  if (!isDrag && event->type() != QEvent::Drop) return QWidget::eventFilter(watched, event);
  auto* const drop = static_cast<QDropEvent*>(event);
  const QStringList files = droppedFiles(drop->mimeData());
  if (files.isEmpty()) return false;
  drop->acceptProposedAction();
  if (isDrag || !didDropFiles) return true;
  for (const KVPopupCellRef& cell : cells_) {
    if (cell->view() == watched) didDropFiles(files, cell->layerID());
  }
  return true;
}

void PanelColumn::resizeEvent(QResizeEvent*) {
  arrangeCells();
  fillRow();
}

}  // namespace kelvar::app
