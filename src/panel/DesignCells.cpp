#include "panel/DesignCells.h"

#include <QDropEvent>
#include <QGridLayout>
#include <QPointer>
#include <algorithm>

#include "panel/droppedFiles.h"
#include "platform/MainQueue.h"
#include "ui/KVMenu.h"

namespace kelvar::cli {
namespace {

constexpr int kSpacing = 8;
/// The approximate maximum width of a chooser, in points.
constexpr int kCellWidth = 340;
/// Choosing designs one by one is impractical for more shapes than this.
constexpr qsizetype kMaxCells = 24;
/// As many as can be created without a noticeable pause.
constexpr qsizetype kCellsAtOnce = 3;

}  // namespace

DesignCells::DesignCells(PanelModel* model, QWidget* parent) : QWidget(parent), model_(model) {
  delegate_ = std::make_shared<KVPopupCellDelegate>();
  delegate_->popupCellSelectedDidChange = [this](KVPopupCell& cell) {
    model_->setDesign(cell.layerID(), cell.selectedIdentifier());
  };
  layout_ = new QGridLayout(this);
  layout_->setContentsMargins(0, 0, 0, 0);
  layout_->setSpacing(kSpacing);
  addCell();
}

void DesignCells::addCell() {
  const KVPopupCellRef cell = KVPopupCell::initWithNibName();
  if (!cell || !cell->view()) return;
  cell->setDelegate(delegate_);
  cell->view()->setAcceptDrops(true);
  cell->view()->installEventFilter(this);
  cells_.append(cell);
  arrangeCells();
}

void DesignCells::setThumbnails(const QMap<QString, ImageRef>& thumbnails) {
  thumbnails_ = thumbnails;
  updateFromModel();
}

void DesignCells::setAvailableWidth(int width) {
  availableWidth_ = width;
  arrangeCells();
}

void DesignCells::arrangeCells() {
  const int columns = std::max(availableWidth_ / kCellWidth, 1);
  for (const KVPopupCellRef& cell : cells_) layout_->removeWidget(cell->view());
  for (int i = 0; i < int(cells_.size()); ++i) {
    layout_->addWidget(cells_[i]->view(), i / columns, i % columns);
  }
  for (int i = 0; i < layout_->columnCount(); ++i) {
    layout_->setColumnStretch(i, i < columns ? 1 : 0);
  }
}

void DesignCells::updateFromModel() {
  const QStringList selection = model_->selection().mid(0, kMaxCells);
  const qsizetype missing = selection.size() - cells_.size();
  for (qsizetype i = 0; i < std::min(missing, kCellsAtOnce); ++i) addCell();
  if (missing > kCellsAtOnce) {
    MainQueue::async([cells = QPointer<DesignCells>(this)] {
      if (cells) cells->updateFromModel();
    });
  }
  for (qsizetype i = 0; i < cells_.size(); ++i) {
    cells_[i]->view()->setVisible(i < selection.size());
    if (i >= selection.size()) continue;
    fill(*cells_[i], *model_->arrangement().shape(selection[i]), makeMenu());
  }
  setVisible(!selection.isEmpty());
}

void DesignCells::fill(KVPopupCell& cell, const Arrangement::Shape& shape,
                       const KVMenuRef& menu) const {
  cell.setLayerID(shape.id);
  cell.setName(shape.name);
  cell.setImage(thumbnails_.value(shape.design));
  // The empty identifier is that of "None".
  cell.setSelectedIdentifier(shape.design.isEmpty() ? QStringLiteral("") : shape.design);
  cell.setPopupMenu(menu);
  cell.reloadData();
}

KVMenuRef DesignCells::makeMenu() const {
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

bool DesignCells::eventFilter(QObject* watched, QEvent* event) {
  const bool isDrag = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove;
  if (!isDrag && event->type() != QEvent::Drop) return QWidget::eventFilter(watched, event);
  auto* const drop = static_cast<QDropEvent*>(event);
  const QStringList files = droppedFiles(drop->mimeData());
  if (files.isEmpty()) return false;
  drop->acceptProposedAction();
  if (isDrag || !onFilesDropped) return true;
  for (const KVPopupCellRef& cell : cells_) {
    if (cell->view() == watched) onFilesDropped(files, cell->layerID());
  }
  return true;
}

}  // namespace kelvar::cli
